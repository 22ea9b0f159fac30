#include "ozADMXNamespaces.h"

#include <algorithm>

const ozADMXNamespace* ozADMXNamespaces::Find(const std::string& targetNamespace) const
{
    auto found = m_namespaces.find(targetNamespace);
    return found != m_namespaces.end() ? &found->second : nullptr;
}

ozADMXNamespace& ozADMXNamespaces::Add(const std::string& targetNamespace)
{
    return m_namespaces[targetNamespace];
}

bool ozADMXNamespaces::CategoryPath(const std::string& targetNamespace, const std::string& name,
                                    std::vector<std::string>& path,
                                    std::pair<std::string, std::string>& missing) const
{
    path.clear();
    std::string space = targetNamespace;
    std::string category = name;
    // No chain of parents is longer than all categories together.
    std::size_t limit = 1;
    for (const auto& [_, declared] : m_namespaces)
        limit += declared.categories.size();
    while (!category.empty()) {
        const ozADMXCategory* found = nullptr;
        if (const ozADMXNamespace* declared = Find(space)) {
            auto at = declared->categories.find(category);
            if (at != declared->categories.end())
                found = &at->second;
        }
        if (found == nullptr || path.size() > limit) {
            missing = {space, category};
            return false;
        }
        path.push_back(found->displayName);
        space = found->parentNamespace;
        category = found->parentName;
    }
    std::reverse(path.begin(), path.end());
    return true;
}
