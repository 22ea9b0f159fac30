// The control drawn for containers (IViewObject2) and in its own window: the content aspect,
// the window background; the views' windows draw themselves over it.
#include <windows.h>

#include "ozADMControl.h"

void ozADMControl::Paint(HDC dc, const RECT& bounds) const
{
    FillRect(dc, &bounds, GetSysColorBrush(COLOR_WINDOW));
}

STDMETHODIMP ozADMControl::Draw(DWORD aspect, LONG, void*, DVTARGETDEVICE*, HDC, HDC drawDC,
                                LPCRECTL bounds, LPCRECTL, BOOL(STDMETHODCALLTYPE*)(ULONG_PTR),
                                ULONG_PTR)
{
    if (aspect != DVASPECT_CONTENT)
        return DV_E_DVASPECT;
    if (drawDC == nullptr)
        return E_INVALIDARG;
    // Drawn into the window itself while active; a container draws a control that is not.
    if (bounds == nullptr)
        return m_window != nullptr ? S_OK : E_INVALIDARG;
    RECT area = {bounds->left, bounds->top, bounds->right, bounds->bottom};
    Paint(drawDC, area);
    return S_OK;
}

STDMETHODIMP ozADMControl::GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC,
                                       LOGPALETTE** colors)
{
    if (colors == nullptr)
        return E_POINTER;
    *colors = nullptr;
    return S_FALSE;  // no particular palette
}

STDMETHODIMP ozADMControl::Freeze(DWORD, LONG, void*, DWORD* freeze)
{
    if (freeze != nullptr)
        *freeze = 0;
    return E_NOTIMPL;
}

STDMETHODIMP ozADMControl::Unfreeze(DWORD)
{
    return E_NOTIMPL;
}

STDMETHODIMP ozADMControl::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink)
{
    if (sink != nullptr)
        sink->AddRef();
    if (m_viewSink != nullptr)
        m_viewSink->Release();
    m_viewSink = sink;
    m_viewAspects = aspects;
    m_viewFlags = flags;
    return S_OK;
}

STDMETHODIMP ozADMControl::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink)
{
    if (aspects != nullptr)
        *aspects = m_viewAspects;
    if (flags != nullptr)
        *flags = m_viewFlags;
    if (sink != nullptr) {
        *sink = m_viewSink;
        if (m_viewSink != nullptr)
            m_viewSink->AddRef();
    }
    return S_OK;
}

STDMETHODIMP ozADMControl::GetExtent(DWORD aspect, LONG, DVTARGETDEVICE*, LPSIZEL size)
{
    return GetExtent(aspect, size);
}
