#include "ozHostSession.h"

#include <cstdlib>
#include <map>

#include "loader/ozADMXLoad.h"
#include "ozBundledFiles.h"
#include "ozHostStrings.h"
#include "platform/ozRegistryApi.h"

ozHostSession::ozHostSession(const ozHostOptions& options, std::ostream& messages)
    : m_options(options),
      m_ui(messages, options.answerYes),
      m_platform(m_ui),
      m_views(m_platform),
      m_control(m_ui, &m_views)
{
}

bool ozHostSession::Prepare(std::ostream& err)
{
    if (m_options.loadStrings) {
        std::string file = m_options.strings.empty()
                               ? ozBundledFile("strings-" + m_options.language + ".txt")
                               : m_options.strings;
        std::map<unsigned short, std::string> table;
        std::string error;
        if (!ozReadHostStrings(file, table, error)) {
            err << "ozadm: " << error << '\n';
            return false;
        }
        for (const auto& [number, text] : table)
            if (!m_control.AddString(number, text.c_str())) {
                err << "ozadm: message " << number << " cannot be added\n";
                return false;
            }
    }
    // The views take their first texts (the placeholder item) from the string table.
    m_views.Attach(m_control);
    if (m_options.loadGrammar) {
        std::string file = m_options.grammar.empty() ? ozBundledFile("adm.bnf") : m_options.grammar;
        if (!m_control.SetEBNF(file.c_str())) {
            err << "ozadm: the grammar " << file << " cannot be loaded\n";
            return false;
        }
    }
    ozTemplateLanguage(m_options.templateLanguage.c_str());
    if (!m_options.library.empty())
        m_control.ozImpExLibrary(m_options.library);
    if (!m_options.registry.empty() || !m_options.registryUser.empty()) {
        const char* user =
            m_options.registryUser.empty() ? nullptr : m_options.registryUser.c_str();
        const char* folder =
            m_options.registry.empty() ? std::getenv("OZADM_REGISTRY") : m_options.registry.c_str();
        if (folder == nullptr || !ozRegistryUseLocalMachine(folder, user)) {
#if defined(_WIN32)
            err << "ozadm: --registry and --registry-user are not available on Windows, "
                   "which reads its own registry\n";
#else
            err << "ozadm: --registry-user needs a registry folder (--registry or "
                   "OZADM_REGISTRY)\n";
#endif
            return false;
        }
    }
    return true;
}
