#include "platform/ozRegistryApi.h"

bool ozRegistryUseLocalMachine(const char*, const char*)
{
    return false;
}
