#include "ozRegRootNames.h"

#include <iterator>

namespace {

struct RootName {
    const char* name;
    const char* shortName;
    unsigned int root;
};

constexpr RootName RootNames[] = {
    {"HKEY_CLASSES_ROOT", "HKCR", 0},   {"HKEY_CURRENT_USER", "HKCU", 1},
    {"HKEY_LOCAL_MACHINE", "HKLM", 2},  {"HKEY_USERS", "HKU", 3},
    {"HKEY_CURRENT_CONFIG", "HKCC", 5},
};

}  // namespace

bool ozRegRootNumber(const ozWideString& name, unsigned int& root)
{
    for (const RootName& candidate : RootNames) {
        if (ozRegEqualsAscii(name, candidate.name) || ozRegEqualsAscii(name, candidate.shortName)) {
            root = candidate.root;
            return true;
        }
    }
    return false;
}

std::string ozRegRootName(unsigned int root)
{
    for (const RootName& candidate : RootNames)
        if (candidate.root == root)
            return candidate.name;
    return {};
}
