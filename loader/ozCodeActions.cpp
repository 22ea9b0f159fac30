// The actions that create, hand over and destroy the code object and the load context.
#include <new>

#include "ozActionSupport.h"
#include "ozGrammarActions.h"
#include "ozLoadContext.h"
#include "ozStringsSection.h"

intptr_t PrepareCodeGeneration(intptr_t fileName)
{
    ozLoadContext& context = ozLoadContext::Instance();
    try {
        context.CreateCode();
    } catch (const std::bad_alloc&) {
        context.Destroy();
        return ozFail(StringsErrorOutOfMemory);
    }
    try {
        context.CreateStrings();
    } catch (const std::bad_alloc&) {
        context.Destroy();
        return ozFail(LoadErrorStringTable);
    }
    int readError = 0;
    if (!ozReadStringsSection(reinterpret_cast<const char*>(fileName), *context.Strings(),
                              &readError)) {
        context.Destroy();
        return ozFail(readError);
    }
    try {
        context.CreateEmptyStacks();
    } catch (const std::bad_alloc&) {
        // Reported, and the context is gone, yet the action succeeds: the engine then reads
        // the template with actions that fail at their first push or scope.
        ozFail(LoadErrorStacks);
        context.Destroy();
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
