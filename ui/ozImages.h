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

// The registry view's images: the roots, and every sub key by its Save flag, its operation and
// whether it comes from the template, each as a pair (normal, selected); then the pictures of
// the key menu's "New" and "Delete".
enum tREGKEYIMAGE : int {
    RegKeyImageMachineRoot = 0,
    RegKeyImageUserRoot = 1,
    RegKeyImageSaved = 2,  // to be saved, an operation other than delete or erase
    RegKeyImageDelete = 4,
    RegKeyImageNotSaved = 6,
    RegKeyImageErase = 8,  // to be saved, its values erased
    RegKeyImageTemplateNotSaved = 10,
    RegKeyImageTemplateSaved = 12,
    RegKeyImageTemplateDelete = 14,
    RegKeyImageTemplateErase = 16,
    RegKeyImageNew = 18,
    RegKeyImageDeleteKey = 19,
    RegKeyImageUsersRoot = 20,
    RegKeyImageOtherRoot = 21,
    RegKeyImagePerformanceRoot = 22,
};

// The bitmap resources of the registry view, in image-index order.
inline const std::vector<int>& ozRegistryViewBitmaps()
{
    static const std::vector<int> bitmaps = {216, 215, 227, 229, 228, 233, 230, 231,
                                             232, 234, 247, 246, 249, 248, 251, 250,
                                             253, 254, 255, 256, 262, 221, 263};
    return bitmaps;
}
