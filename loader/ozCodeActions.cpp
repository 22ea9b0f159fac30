// The actions that create, hand over and destroy the code object and the load context.
#include <new>

#include "ozActionSupport.h"
#include "ozGrammarActions.h"
#include "ozLoadContext.h"
#include "ozStringsSection.h"

// Whatever fails, the code object stays in the context for GetCodeH to hand back: a lent one
// holds templates and a profile its holder must not lose, and one made here is its caller's to
// keep or drop. The [strings] table keeps what earlier templates defined.
intptr_t PrepareCodeGeneration(intptr_t fileName)
{
    ozLoadContext& context = ozLoadContext::Instance();
    try {
        context.CreateCode();
    } catch (const std::bad_alloc&) {
        return ozFail(StringsErrorOutOfMemory);
    }
    try {
        context.CreateStrings();
    } catch (const std::bad_alloc&) {
        return ozFail(LoadErrorStringTable);
    }
    if (ozStatus read =
            ozReadStringsSection(reinterpret_cast<const char*>(fileName), *context.Strings());
        !read)
        return ozFail(read.Code());
    try {
        context.CreateEmptyStacks();
    } catch (const std::bad_alloc&) {
        // Reported, yet the action succeeds: the engine then reads the template with actions
        // that fail at their first push or scope, for want of a stack.
        ozFail(LoadErrorStacks);
    }
    context.CurrentClass(0);
    return 1;
}

intptr_t GetCodeH(intptr_t)
{
    return reinterpret_cast<intptr_t>(ozLoadContext::Instance().TakeCode());
}

intptr_t SetCodeH(intptr_t code)
{
    ozLoadContext::Instance().LendCode(reinterpret_cast<tTreeCodeHandle*>(code));
    return 1;
}

intptr_t DestroyCode(intptr_t)
{
    ozLoadContext::Instance().Destroy();
    return 1;
}
