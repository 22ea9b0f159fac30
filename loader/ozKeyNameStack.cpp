#include "ozKeyNameStack.h"

#include <utility>

#include "core/tree/ozOwnedText.h"

void ozKeyNameStack::OpenScope()
{
    const char* current = Current();
    m_names.Push(ozCopyText(current != nullptr ? current : ""));
}

bool ozKeyNameStack::Replace(std::unique_ptr<char[]> keyName)
{
    if (keyName == nullptr)
        return false;
    m_names.ReplaceTop(std::move(keyName));
    return true;
}
