#include "ozADMXTemplate.h"

#include <set>

#include "ozADMXLoad.h"
#include "ozADMXPolicy.h"
#include "ozGrammarActions.h"
#include "platform/ozWholeFile.h"

namespace {

const ozXmlElement* PolicyNamespaces(const ozXmlElement& root)
{
    return root.Child("policyNamespaces");
}

// The class roots a policy's class attribute puts it in, by their ADM names.
std::vector<std::string> ClassNames(const std::string& policyClass)
{
    if (policyClass == "Machine")
        return {"MACHINE"};
    if (policyClass == "User")
        return {"USER"};
    if (policyClass == "Both")
        return {"MACHINE", "USER"};
    return {};
}

std::string Joined(const std::vector<std::string>& path, std::size_t count)
{
    std::string joined;
    for (std::size_t i = 0; i < count; ++i)
        joined += path[i] + '\n';
    return joined;
}

}  // namespace

bool ozADMXTemplate::Read(const std::string& file, const std::string& resourcesFile)
{
    m_file = file;
    std::string bytes;
    if (ozStatus read = ozReadWholeFile(file.c_str(), bytes); !read)
        return m_calls.FailDocument(read, file);
    if (ozStatus parsed = ozReadXmlDocument(bytes, m_root); !parsed)
        return m_calls.FailDocument(parsed, file);
    if (m_root.name != "policyDefinitions")
        return m_calls.Fail(ADMXErrorMissingAttribute,
                            "<" + m_root.name + "> is not <policyDefinitions>", Here(m_root));
    const ozXmlElement* namespaces = PolicyNamespaces(m_root);
    const ozXmlElement* target = namespaces != nullptr ? namespaces->Child("target") : nullptr;
    if (target == nullptr)
        return m_calls.Fail(ADMXErrorMissingAttribute,
                            "<policyNamespaces> with a <target> is missing", Here(m_root));
    const std::string* targetNamespace = Required(*target, "namespace");
    if (targetNamespace == nullptr)
        return false;
    m_target = *targetNamespace;
    if (const std::string* prefix = target->Attribute("prefix"))
        m_targetPrefix = *prefix;
    for (const ozXmlElement& declared : namespaces->children)
        if (declared.name == "using") {
            const std::string* prefix = Required(declared, "prefix");
            const std::string* space = Required(declared, "namespace");
            if (prefix == nullptr || space == nullptr)
                return false;
            m_using[*prefix] = *space;
        }
    return m_resources.Read(resourcesFile, m_calls);
}

std::string ozADMXTemplate::TargetNamespaceOf(const std::string& file)
{
    std::string bytes;
    ozXmlElement root;
    if (!ozReadWholeFile(file.c_str(), bytes) || !ozReadXmlDocument(bytes, root))
        return {};
    const ozXmlElement* namespaces = PolicyNamespaces(root);
    const ozXmlElement* target = namespaces != nullptr ? namespaces->Child("target") : nullptr;
    const std::string* space = target != nullptr ? target->Attribute("namespace") : nullptr;
    return space != nullptr ? *space : std::string();
}

const std::string* ozADMXTemplate::Required(const ozXmlElement& element, const char* attribute)
{
    return m_calls.Required(Here(element), attribute);
}

bool ozADMXTemplate::Resolve(const std::string& reference, const ozADMXPlace& at,
                             std::pair<std::string, std::string>& resolved)
{
    std::string::size_type colon = reference.find(':');
    if (colon == std::string::npos) {
        resolved = {m_target, reference};
        return true;
    }
    std::string prefix = reference.substr(0, colon);
    resolved.second = reference.substr(colon + 1);
    if (prefix == m_targetPrefix) {
        resolved.first = m_target;
        return true;
    }
    auto declared = m_using.find(prefix);
    if (declared == m_using.end())
        return m_calls.Fail(ADMXErrorUnknownPrefix,
                            "the namespace prefix \"" + prefix + "\" of \"" + reference +
                                "\" is not declared in <policyNamespaces>",
                            at);
    resolved.first = declared->second;
    return true;
}

bool ozADMXTemplate::ReferencedNamespaces(std::vector<std::string>& namespaces)
{
    std::set<std::string> found;
    for (const char* section : {"categories", "policies"})
        if (const ozXmlElement* list = m_root.Child(section))
            for (const ozXmlElement& entry : list->children)
                if (const ozXmlElement* parent = entry.Child("parentCategory")) {
                    std::pair<std::string, std::string> resolved;
                    const std::string* ref = Required(*parent, "ref");
                    if (ref == nullptr || !Resolve(*ref, Here(*parent), resolved))
                        return false;
                    if (resolved.first != m_target && found.insert(resolved.first).second)
                        namespaces.push_back(resolved.first);
                }
    return true;
}

bool ozADMXTemplate::FileCategories(ozADMXNamespace& own)
{
    own.file = m_file;
    const ozXmlElement* categories = m_root.Child("categories");
    if (categories == nullptr)
        return true;
    for (const ozXmlElement& category : categories->children) {
        if (category.name != "category")
            continue;
        const std::string* name = Required(category, "name");
        const std::string* displayName = Required(category, "displayName");
        if (name == nullptr || displayName == nullptr)
            return false;
        ozADMXCategory filed;
        if (!m_resources.Text(*displayName, Here(category), m_calls, filed.displayName))
            return false;
        if (const ozXmlElement* parent = category.Child("parentCategory")) {
            const std::string* ref = Required(*parent, "ref");
            std::pair<std::string, std::string> resolved;
            if (ref == nullptr || !Resolve(*ref, Here(*parent), resolved))
                return false;
            filed.parentNamespace = resolved.first;
            filed.parentName = resolved.second;
        }
        own.categories[*name] = std::move(filed);
    }
    return true;
}

bool ozADMXTemplate::ParentPath(const ozXmlElement& element, const ozADMXNamespaces& namespaces,
                                std::vector<std::string>& path)
{
    path.clear();
    const ozXmlElement* parent = element.Child("parentCategory");
    if (parent == nullptr)
        return true;
    const std::string* ref = Required(*parent, "ref");
    std::pair<std::string, std::string> resolved;
    if (ref == nullptr || !Resolve(*ref, Here(*parent), resolved))
        return false;
    std::pair<std::string, std::string> missing;
    if (!namespaces.CategoryPath(resolved.first, resolved.second, path, missing)) {
        std::string where = namespaces.Find(missing.first) != nullptr
                                ? ""
                                : " (no definitions of the namespace \"" + missing.first +
                                      "\" are loaded or beside " + m_file + ")";
        return m_calls.Fail(
            ADMXErrorMissingReference,
            "the category \"" + missing.first + ":" + missing.second + "\" is not defined" + where,
            Here(*parent));
    }
    return true;
}

bool ozADMXTemplate::AddCategoryPath(const std::vector<std::string>& path,
                                     const std::string& className, const ozADMXPlace& at)
{
    if (!m_calls.CallWithText(BeginClass, className, at))
        return false;
    for (const std::string& name : path)
        if (!m_calls.PushAndCall(name, BeginCategory, at))
            return false;
    for (std::size_t i = 0; i < path.size(); ++i)
        if (!m_calls.Call(EndCategory, at))
            return false;
    return true;
}

bool ozADMXTemplate::Build(ozADMXNamespaces& namespaces)
{
    ozADMXNamespace& own = namespaces.Add(m_target);
    if (!FileCategories(own))
        return false;
    // The paths of the document's categories, in the order declared.
    std::vector<std::pair<const ozXmlElement*, std::vector<std::string>>> categoryPaths;
    if (const ozXmlElement* categories = m_root.Child("categories"))
        for (const ozXmlElement& category : categories->children) {
            const std::string* name = category.Attribute("name");
            if (category.name != "category" || name == nullptr)
                continue;
            std::vector<std::string> path;
            if (!ParentPath(category, namespaces, path))
                return false;
            path.push_back(own.categories[*name].displayName);
            categoryPaths.emplace_back(&category, std::move(path));
        }
    struct Placed {
        const ozXmlElement* policy;
        std::vector<std::string> path;
        std::vector<std::string> classes;
    };
    std::vector<Placed> placed;
    // Every category path (and its beginnings) that holds a policy, per class.
    std::map<std::string, std::set<std::string>> heldPaths;
    if (const ozXmlElement* policies = m_root.Child("policies"))
        for (const ozXmlElement& policy : policies->children) {
            if (policy.name != "policy")
                continue;
            Placed entry{&policy, {}, {}};
            const std::string* policyClass = Required(policy, "class");
            if (policyClass == nullptr || !ParentPath(policy, namespaces, entry.path))
                return false;
            entry.classes = ClassNames(*policyClass);
            if (entry.classes.empty())
                return m_calls.Fail(
                    ADMXErrorBadValue,
                    "the class \"" + *policyClass + "\" is none of Machine, User and Both",
                    Here(policy));
            for (const std::string& className : entry.classes)
                for (std::size_t count = 1; count <= entry.path.size(); ++count)
                    heldPaths[className].insert(Joined(entry.path, count));
            placed.push_back(std::move(entry));
        }
    for (const std::string& className : {std::string("MACHINE"), std::string("USER")})
        for (const auto& [category, path] : categoryPaths)
            if (heldPaths[className].count(Joined(path, path.size())) != 0 &&
                !AddCategoryPath(path, className, Here(*category)))
                return false;
    ozADMXPolicyBuilder builder(m_file, m_resources, m_calls, m_root.Child("supportedOn"));
    for (const Placed& entry : placed)
        for (const std::string& className : entry.classes)
            if (!AddCategoryPath({}, className, Here(*entry.policy)) ||
                !builder.Build(*entry.policy, entry.path))
                return false;
    return true;
}
