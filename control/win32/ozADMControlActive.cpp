// The control as the container's active object: UI activation and IOleInPlaceActiveObject.
// The control has no menus or tool bars of its own, so being UI active means being the object
// the container hands its keyboard messages to (TranslateAccelerator) and holding the focus.
#include <windows.h>

#include "ozADMControl.h"

namespace {

const wchar_t ActiveObjectName[] = L"ozADM";

template <typename T>
void Drop(T*& held)
{
    if (held != nullptr)
        held->Release();
    held = nullptr;
}

}  // namespace

HRESULT ozADMControl::ActivateUI()
{
    if (m_inPlaceSite == nullptr || m_window == nullptr)
        return E_UNEXPECTED;
    if (!m_uiActive) {
        HRESULT hr = m_inPlaceSite->OnUIActivate();
        if (FAILED(hr))
            return hr;
        m_uiActive = true;
        RECT position = {}, clip = {};
        OLEINPLACEFRAMEINFO frameInfo = {sizeof(OLEINPLACEFRAMEINFO), FALSE, nullptr, nullptr, 0};
        Drop(m_frame);
        Drop(m_document);
        if (SUCCEEDED(m_inPlaceSite->GetWindowContext(&m_frame, &m_document, &position, &clip,
                                                      &frameInfo))) {
            auto* active = static_cast<IOleInPlaceActiveObject*>(this);
            // No tools: the control asks for no border space.
            if (m_frame != nullptr) {
                m_frame->SetActiveObject(active, ActiveObjectName);
                m_frame->SetBorderSpace(nullptr);
            }
            if (m_document != nullptr) {
                m_document->SetActiveObject(active, ActiveObjectName);
                m_document->SetBorderSpace(nullptr);
            }
        }
    }
    HWND focus = GetFocus();
    if (focus != m_window && !IsChild(m_window, focus)) {
        HWND view = m_windows.View(m_control.DisplayMode());
        SetFocus(view != nullptr && IsWindowVisible(view) ? view : m_window);
    }
    return S_OK;
}

STDMETHODIMP ozADMControl::UIDeactivate()
{
    if (!m_uiActive)
        return S_OK;
    m_uiActive = false;
    if (m_frame != nullptr)
        m_frame->SetActiveObject(nullptr, nullptr);
    if (m_document != nullptr)
        m_document->SetActiveObject(nullptr, nullptr);
    Drop(m_frame);
    Drop(m_document);
    if (m_inPlaceSite != nullptr)
        m_inPlaceSite->OnUIDeactivate(FALSE);
    return S_OK;
}

bool ozADMControl::PreTranslateMessage(const MSG& message)
{
    return m_windows.PreTranslateMessage(message);
}

STDMETHODIMP ozADMControl::TranslateAccelerator(LPMSG message)
{
    if (message == nullptr)
        return E_INVALIDARG;
    return PreTranslateMessage(*message) ? S_OK : S_FALSE;
}

STDMETHODIMP ozADMControl::OnFrameWindowActivate(BOOL)
{
    return S_OK;
}

STDMETHODIMP ozADMControl::OnDocWindowActivate(BOOL)
{
    return S_OK;
}

STDMETHODIMP ozADMControl::ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL)
{
    return S_OK;
}

STDMETHODIMP ozADMControl::EnableModeless(BOOL)
{
    return S_OK;
}
