// A stand-in for the grammar engine's error functions in the loader tests: a small shared
// library that defines error_set_code and error_set_desc (as the engine declares them) and
// records what the actions report, so that a test can read it back.
#pragma once

#if defined(_WIN32)
#if defined(OZ_EBNF_BUILDING)
#define OZ_RECORDER_API __declspec(dllexport)
#else
#define OZ_RECORDER_API __declspec(dllimport)
#endif
#else
#define OZ_RECORDER_API __attribute__((visibility("default")))
#endif

extern "C" {

// The number reported last with error_set_code; 0 when none since the last reset.
OZ_RECORDER_API int ozRecordedErrorCode();
// How many numbers were reported since the last reset.
OZ_RECORDER_API int ozRecordedErrorCount();
// The description set last with error_set_desc (a copy, valid until the next call of either);
// null when none since the last reset, or when cleared with null.
OZ_RECORDER_API const char* ozRecordedErrorDescription();
// Forgets everything reported.
OZ_RECORDER_API void ozResetRecordedErrors();
}
