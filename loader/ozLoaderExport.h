// How the grammar actions leave the module that links the loader: under their plain, unmangled
// names and visible from outside it, because the grammar engine finds them by name in that
// module (or in the process) when it loads a grammar.
#pragma once

#if defined(_WIN32)
#define OZ_ACTION_API extern "C" __declspec(dllexport)
#else
#define OZ_ACTION_API extern "C" __attribute__((visibility("default")))
#endif
