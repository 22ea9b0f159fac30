#include "ozVariantText.h"

#include "platform/ozTextConversion.h"

std::string ozTextOf(BSTR text)
{
    if (text == nullptr)
        return {};
    return ozNarrowText(text, SysStringLen(text));
}

BSTR ozNewBstr(const std::string& text)
{
    std::basic_string<WCHAR> wide = ozWideText(text.c_str());
    return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

HRESULT ozStringArrayVariant(const ozStringArray& strings, VARIANT* result)
{
    VariantInit(result);
    if (strings.IsEmpty())
        return S_OK;
    const auto& elements = strings.Elements();
    SAFEARRAY* array = SafeArrayCreateVector(VT_BSTR, 0, static_cast<ULONG>(elements.size()));
    if (array == nullptr)
        return E_OUTOFMEMORY;
    for (LONG index = 0; index < static_cast<LONG>(elements.size()); ++index) {
        BSTR element = ozNewBstr(elements[static_cast<size_t>(index)]);
        // SafeArrayPutElement stores a copy of a BSTR element.
        HRESULT hr =
            element != nullptr ? SafeArrayPutElement(array, &index, element) : E_OUTOFMEMORY;
        SysFreeString(element);
        if (FAILED(hr)) {
            SafeArrayDestroy(array);
            return hr;
        }
    }
    V_VT(result) = VT_ARRAY | VT_BSTR;
    V_ARRAY(result) = array;
    return S_OK;
}
