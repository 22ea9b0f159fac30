#include "platform/ozSystemMessage.h"

#include "platform/ozRegistryApi.h"

// The texts Windows gives for the codes the registry functions of this build return, so that
// messages read the same on both builds.
std::string ozSystemMessage(unsigned long code)
{
    switch (code) {
        case ERROR_SUCCESS:
            return "The operation completed successfully.";
        case ERROR_FILE_NOT_FOUND:
            return "The system cannot find the file specified.";
        case ERROR_ACCESS_DENIED:
            return "Access is denied.";
        case ERROR_INVALID_HANDLE:
            return "The handle is invalid.";
        case ERROR_NOT_ENOUGH_MEMORY:
            return "Not enough memory resources are available to process this command.";
        case ERROR_BAD_NETPATH:
            return "The network path was not found.";
        case ERROR_INVALID_PARAMETER:
            return "The parameter is incorrect.";
        case ERROR_INVALID_NAME:
            return "The filename, directory name, or volume label syntax is incorrect.";
        case ERROR_FILENAME_EXCED_RANGE:
            return "The filename or extension is too long.";
        case ERROR_MORE_DATA:
            return "More data is available.";
        case ERROR_NO_MORE_ITEMS:
            return "No more data is available.";
        case ERROR_BADDB:
            return "The configuration registry database is corrupt.";
        case ERROR_CANTOPEN:
            return "The configuration registry key could not be opened.";
        case ERROR_CANTREAD:
            return "The configuration registry key could not be read.";
        case ERROR_REGISTRY_CORRUPT:
            return "The structure of one of the files containing registry data is corrupt, or "
                   "the system's memory image of the file is corrupt, or the file could not be "
                   "recovered because the alternate copy or log was absent or corrupt.";
        default:
            return "Unknown error " + std::to_string(code) + ".";
    }
}
