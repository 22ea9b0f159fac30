// The registry key names in force while a template is read. Each CATEGORY, POLICY, PART and
// ACTIONLIST opens a scope that starts with the key name of the scope around it, KEYNAME
// replaces the name of the innermost scope, and its END closes it; so a construct without its
// own KEYNAME uses the key of the construct around it.
#pragma once

#include <memory>

#include "ozLinkedStack.h"

// Owns its key names. OpenScope throws std::bad_alloc when memory runs out, changing nothing.
class ozKeyNameStack {
public:
    // The key name of the innermost scope; null when no scope is open.
    const char* Current() const { return m_names.Top(); }
    bool Empty() const { return m_names.Empty(); }

    // Opens a scope with a copy of the current key name, or of the empty string when no scope
    // is open.
    void OpenScope();
    // Gives the innermost scope keyName (taken) instead of its own, which is freed; with no
    // scope open, keyName opens one. False, changing nothing, for a null keyName.
    bool Replace(std::unique_ptr<char[]> keyName);
    // Closes the innermost scope, freeing its key name; nothing when no scope is open.
    void CloseScope() { m_names.Pop(); }
    // Closes every scope.
    void Clear() { m_names.Clear(); }

private:
    ozLinkedStack<std::unique_ptr<char[]>> m_names;
};
