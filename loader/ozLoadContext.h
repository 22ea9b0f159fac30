// What the grammar actions share while templates are read: the code object being built, the
// [strings] table, the argument stack, the key-name stack and the class being read. There is
// one load context per module, for all controls in it; it is unguarded, so loads run one at a
// time on one thread.
#pragma once

#include <map>
#include <memory>

#include "core/adm/tTreeCodeHandle.h"
#include "ozADMXNamespaces.h"
#include "ozArgumentStack.h"
#include "ozKeyNameStack.h"
#include "ozStringTable.h"

// Each part is absent until created and again after Destroy. The Create functions throw
// std::bad_alloc when memory runs out, leaving the part absent.
class ozLoadContext {
public:
    static ozLoadContext& Instance();

    ozLoadContext(const ozLoadContext&) = delete;
    ozLoadContext& operator=(const ozLoadContext&) = delete;

    // The current code object, or null.
    tTreeCodeHandle* Code() const { return m_code.get(); }
    // The policy tree of the current code object, or null without one.
    ozADMTree* Tree() const { return m_code != nullptr ? m_code->tree.get() : nullptr; }
    // Makes a new code object the current one unless there is one; the context owns it.
    void CreateCode();
    // Makes code (may be null) the current code object, lent by its holder until it takes it
    // back with TakeCode or has it destroyed with Destroy. The code object current before is
    // let go when it was lent too, and destroyed when the context made it and nobody took it.
    void LendCode(tTreeCodeHandle* code);
    // Hands the current code object to the caller, who then owns it, and forgets it; null
    // without one.
    tTreeCodeHandle* TakeCode();

    // The [strings] table of the templates read, or null.
    ozStringTable* Strings() const { return m_strings.get(); }
    // Creates an empty [strings] table unless there is one.
    void CreateStrings();

    // The stacks, or null.
    ozArgumentStack* Arguments() const { return m_arguments.get(); }
    ozKeyNameStack* KeyNames() const { return m_keyNames.get(); }
    // Creates the stacks that are absent and empties those there are: a load that failed
    // leaves its open scopes and arguments behind, which must not change how the next
    // template is read.
    void CreateEmptyStacks();

    // The root type of the class begun last (RootUser for CLASS USER); 0 before any.
    unsigned long CurrentClass() const { return m_currentClass; }
    void CurrentClass(unsigned long rootType) { m_currentClass = rootType; }

    // What the ADMX definitions read into the current code object declare for others to refer
    // to; forgotten when the code object is destroyed here.
    ozADMXNamespaces& ADMXNamespaces() { return m_admxNamespaces[m_code.get()]; }

    // Destroys the current code object (lent or not) with its tree, the [strings] table with
    // every name and text, the key-name stack with any key names left on it, and the argument
    // stack with every payload, and forgets them all. The current class is kept.
    void Destroy();

private:
    ozLoadContext() = default;
    // A lent code object belongs to its holder, so it outlives the context.
    ~ozLoadContext();

    std::unique_ptr<tTreeCodeHandle> m_code;
    // The current code object was lent (LendCode) rather than made here.
    bool m_codeLent = false;
    std::unique_ptr<ozStringTable> m_strings;
    std::unique_ptr<ozArgumentStack> m_arguments;
    std::unique_ptr<ozKeyNameStack> m_keyNames;
    unsigned long m_currentClass = 0;
    std::map<const tTreeCodeHandle*, ozADMXNamespaces> m_admxNamespaces;
};
