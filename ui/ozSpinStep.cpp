#include "ozSpinStep.h"

#include <algorithm>
#include <climits>
#include <cstdlib>

long long ozSpinStep(const std::string& text, long long min, long long max, long long step,
                     int delta)
{
    char* end = nullptr;
    long long value = std::strtoll(text.c_str(), &end, 10);
    if (end == text.c_str())
        value = min == LLONG_MIN ? 0 : min;
    long long stepped = value;
    if (delta > 0)
        stepped = value > max - step ? max : value + step;
    else if (delta < 0)
        stepped = value < min + step ? min : value - step;
    return std::clamp(stepped, min, max);
}
