#include "ozFailedTemplate.h"

#include "ozLoadContext.h"

std::size_t ozTemplateStringCount()
{
    const ozStringTable* strings = ozLoadContext::Instance().Strings();
    return strings != nullptr ? strings->Count() : 0;
}

void ozForgetTemplateStringsAfter(std::size_t count)
{
    if (ozStringTable* strings = ozLoadContext::Instance().Strings())
        strings->Truncate(count);
}
