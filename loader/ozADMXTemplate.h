// One ADMX document with its language resources: its namespaces, its categories and its
// policies, built into the tree of the current code object through the grammar actions.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "ozADMLResources.h"
#include "ozADMXActionCalls.h"
#include "ozADMXNamespaces.h"
#include "platform/ozXmlDocument.h"

class ozADMXTemplate {
public:
    explicit ozADMXTemplate(ozADMXActionCalls& calls) : m_calls(calls) {}
    ozADMXTemplate(const ozADMXTemplate&) = delete;
    ozADMXTemplate& operator=(const ozADMXTemplate&) = delete;

    // Reads the definitions at file and their resources at resourcesFile. False, with the
    // failure recorded, for a document that cannot be read, is not well-formed or is not
    // policy definitions, or declares no target namespace.
    bool Read(const std::string& file, const std::string& resourcesFile);
    // Only the definitions' target namespace, for finding which file declares a namespace;
    // empty for a file that cannot be read or declares none.
    static std::string TargetNamespaceOf(const std::string& file);

    const std::string& TargetNamespace() const { return m_target; }
    // The other namespaces whose categories this document's categories and policies name as
    // their parents. False, with 1144 recorded, for a prefix the document does not declare.
    bool ReferencedNamespaces(std::vector<std::string>& namespaces);

    // Files the document's categories under its target namespace in namespaces, then adds its
    // categories and policies to the tree of the current code object: in each class, the
    // categories that hold policies of that class in the order declared, then every policy in
    // its class or both. False at the first failure, with what was built before it kept.
    bool Build(ozADMXNamespaces& namespaces);

private:
    // The namespace and name a "prefix:name" reference means; false with 1144 recorded.
    bool Resolve(const std::string& reference, const ozADMXPlace& at,
                 std::pair<std::string, std::string>& resolved);
    // The element's attribute, or null with 1146 recorded.
    const std::string* Required(const ozXmlElement& element, const char* attribute);
    bool FileCategories(ozADMXNamespace& own);
    // The category path of a policy or category's <parentCategory>; empty without one.
    bool ParentPath(const ozXmlElement& element, const ozADMXNamespaces& namespaces,
                    std::vector<std::string>& path);
    bool AddCategoryPath(const std::vector<std::string>& path, const std::string& className,
                         const ozADMXPlace& at);
    ozADMXPlace Here(const ozXmlElement& element) const { return {m_file, element}; }

    ozADMXActionCalls& m_calls;
    std::string m_file;
    ozXmlElement m_root;
    ozADMLResources m_resources;
    std::string m_target;
    std::string m_targetPrefix;
    std::map<std::string, std::string> m_using;  // prefix -> namespace
};
