// One spin step of a number control, the same for every widget set: the number typed moved by
// the control's step and held within its range.
#pragma once

#include <string>

// The number after one step up (delta > 0) or down (delta < 0) from text; delta 0 only holds
// it within the range. Text that does not start with a number counts as the range's lower end
// (0 for a range without one). Saturates at min and max instead of overflowing.
long long ozSpinStep(const std::string& text, long long min, long long max, long long step,
                     int delta);
