// The two process-wide variable markers. A text holds a variable when the start marker occurs
// in it and the end marker occurs after that first occurrence. The control sets them from its
// `ozVariableStart` and `ozVariableEnd` properties; both are empty at start, which switches
// variable detection off.
#pragma once

#include <string>

class ozVariableMarkers {
public:
    static void Start(const char* marker) { s_start = marker != nullptr ? marker : ""; }
    static const char* Start() { return s_start.c_str(); }
    static void End(const char* marker) { s_end = marker != nullptr ? marker : ""; }
    static const char* End() { return s_end.c_str(); }
    // True when both markers are non-empty, so that texts can hold variables at all.
    static bool AreSet() { return !s_start.empty() && !s_end.empty(); }

private:
    static inline std::string s_start;
    static inline std::string s_end;
};
