#include "ozRecordedEngineErrors.h"

#include <string>

#include "engine/ozEBNF.h"

namespace {

int s_code = 0;
int s_count = 0;
bool s_hasDescription = false;
std::string s_description;

}  // namespace

void error_set_code(int code)
{
    s_code = code;
    ++s_count;
}

void error_set_desc(const char* description)
{
    s_hasDescription = description != nullptr;
    s_description = description != nullptr ? description : "";
}

int ozRecordedErrorCode()
{
    return s_code;
}

int ozRecordedErrorCount()
{
    return s_count;
}

const char* ozRecordedErrorDescription()
{
    return s_hasDescription ? s_description.c_str() : nullptr;
}

void ozResetRecordedErrors()
{
    s_code = 0;
    s_count = 0;
    s_hasDescription = false;
    s_description.clear();
}
