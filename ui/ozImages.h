// The image indexes of the views' trees, fixed by the order in which their bitmaps are loaded,
// and those bitmaps' resource numbers (ui/bitmaps holds the pictures).
#pragma once

#include <vector>

enum tPOLICYIMAGE : int {
    PolicyImageCategory = 0,      // a category, collapsed (also when selected)
    PolicyImageCategoryOpen = 1,  // a category, expanded
    PolicyImageMachineRoot = 2,
    PolicyImageUserRoot = 3,
    PolicyImageOtherRoot = 4,
    PolicyImageDisabled = 5,  // a policy whose state is disabled
    PolicyImageEnabled = 6,
    PolicyImageNotConfigured = 7,  // not configured, or any other state
};

// The bitmap resources of the policy tree, in image-index order.
inline const std::vector<int>& ozPolicyTreeBitmaps()
{
    static const std::vector<int> bitmaps = {210, 211, 216, 215, 221, 213, 214, 217};
    return bitmaps;
}
