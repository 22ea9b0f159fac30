// Standard output and standard error in the terms of where they go. Programs hand std::cout
// and std::cerr text in the narrow encoding: the ANSI code page on Windows, UTF-8 elsewhere.
// A Windows console shows bytes in its own code page, which is seldom the ANSI one, so there
// the streams are rearranged: a stream that is a console is written as UTF-16
// (WriteConsoleW), which the console shows whatever its code page; a stream redirected to a
// file or pipe is written as UTF-8, lines ending in CR LF. On POSIX the streams stay as they are.
#pragma once

// Rearranges std::cout and std::cerr as above. Called once at program start, before anything
// is written; the arrangement holds until the program ends, when the streams are flushed and
// given back their own buffers.
void ozUseConsoleStreams();
