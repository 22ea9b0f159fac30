// Until the part pages exist: no page opens.
#include "ozElementEditors.h"

std::unique_ptr<ozDialog> ozCreatePartPage(ozADMCtrl&, const ozEditorContext&)
{
    return nullptr;
}
