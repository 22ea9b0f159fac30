#include "ozLoadContext.h"

ozLoadContext& ozLoadContext::Instance()
{
    static ozLoadContext context;
    return context;
}

ozLoadContext::~ozLoadContext()
{
    if (m_codeLent)
        (void)m_code.release();
}

void ozLoadContext::CreateCode()
{
    if (m_code != nullptr)
        return;
    m_code = std::make_unique<tTreeCodeHandle>();
    m_codeLent = false;
}

void ozLoadContext::LendCode(tTreeCodeHandle* code)
{
    if (code == m_code.get())
        return;
    if (m_codeLent)
        (void)m_code.release();
    m_code.reset(code);
    m_codeLent = code != nullptr;
}

tTreeCodeHandle* ozLoadContext::TakeCode()
{
    m_codeLent = false;
    return m_code.release();
}

void ozLoadContext::CreateStrings()
{
    if (m_strings == nullptr)
        m_strings = std::make_unique<ozStringTable>();
}

void ozLoadContext::CreateEmptyStacks()
{
    if (m_arguments != nullptr)
        m_arguments->Clear();
    if (m_keyNames != nullptr)
        m_keyNames->Clear();
    if (m_arguments == nullptr)
        m_arguments = std::make_unique<ozArgumentStack>();
    if (m_keyNames == nullptr)
        m_keyNames = std::make_unique<ozKeyNameStack>();
}

void ozLoadContext::Destroy()
{
    m_admxNamespaces.erase(m_code.get());
    m_code.reset();
    m_codeLent = false;
    m_strings.reset();
    // A stack left with entries by a failed load goes with them, so the next load starts
    // without stale key names or arguments.
    m_keyNames.reset();
    m_arguments.reset();
}
