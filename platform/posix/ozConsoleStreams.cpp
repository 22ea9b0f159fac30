#include "platform/ozConsoleStreams.h"

void ozUseConsoleStreams()
{
    // The narrow encoding is UTF-8, which terminals and files take as it is.
}
