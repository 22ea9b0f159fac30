// What ADMX definitions loaded into one code object declare for later definitions to refer to:
// per target namespace, the file it came from and its categories (display name and parent),
// so that "prefix:category" references of other files resolve to a path of category names.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

struct ozADMXCategory {
    std::string displayName;
    // The parent category's namespace and name; both empty for a top-level category.
    std::string parentNamespace;
    std::string parentName;
};

struct ozADMXNamespace {
    std::string file;
    std::map<std::string, ozADMXCategory> categories;
};

class ozADMXNamespaces {
public:
    // The namespace's record, or null when no definitions of it were loaded.
    const ozADMXNamespace* Find(const std::string& targetNamespace) const;
    // The namespace's record, created empty when absent.
    ozADMXNamespace& Add(const std::string& targetNamespace);

    // The display names of the category's ancestors and of the category itself, outermost
    // first. False when a category on the way is unknown (missing then holds its namespace
    // and name) or the parents run in a circle.
    bool CategoryPath(const std::string& targetNamespace, const std::string& name,
                      std::vector<std::string>& path,
                      std::pair<std::string, std::string>& missing) const;

private:
    std::map<std::string, ozADMXNamespace> m_namespaces;
};
