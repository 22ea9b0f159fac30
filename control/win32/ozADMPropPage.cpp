#include "ozADMPropPage.h"

#include <new>

#include "ozComModule.h"

namespace {

const SIZE PageSize = {250, 62};

// A COM task-memory copy of text, as PROPPAGEINFO wants it.
LPOLESTR TaskText(const wchar_t* text)
{
    size_t bytes = (wcslen(text) + 1) * sizeof(wchar_t);
    auto* copy = static_cast<LPOLESTR>(CoTaskMemAlloc(bytes));
    if (copy != nullptr)
        memcpy(copy, text, bytes);
    return copy;
}

}  // namespace

HRESULT ozADMPropPage::Create(REFIID iid, void** object)
{
    auto* page = new (std::nothrow) ozADMPropPage();
    if (page == nullptr)
        return E_OUTOFMEMORY;
    HRESULT hr = page->QueryInterface(iid, object);
    page->Release();
    return hr;
}

ozADMPropPage::ozADMPropPage()
{
    ozComModule::ObjectCreated();
}

ozADMPropPage::~ozADMPropPage()
{
    Deactivate();
    if (m_site != nullptr)
        m_site->Release();
    ozComModule::ObjectDestroyed();
}

STDMETHODIMP ozADMPropPage::QueryInterface(REFIID iid, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IPropertyPage)) {
        *object = static_cast<IPropertyPage*>(this);
        AddRef();
        return S_OK;
    }
    *object = nullptr;
    return E_NOINTERFACE;
}

STDMETHODIMP_(ULONG) ozADMPropPage::AddRef()
{
    return static_cast<ULONG>(InterlockedIncrement(&m_references));
}

STDMETHODIMP_(ULONG) ozADMPropPage::Release()
{
    LONG references = InterlockedDecrement(&m_references);
    if (references == 0)
        delete this;
    return static_cast<ULONG>(references);
}

STDMETHODIMP ozADMPropPage::SetPageSite(IPropertyPageSite* site)
{
    if (site != nullptr)
        site->AddRef();
    if (m_site != nullptr)
        m_site->Release();
    m_site = site;
    return S_OK;
}

STDMETHODIMP ozADMPropPage::Activate(HWND parent, LPCRECT rect, BOOL)
{
    if (rect == nullptr)
        return E_POINTER;
    if (m_window != nullptr)
        return E_UNEXPECTED;
    m_window = CreateWindowExW(WS_EX_CONTROLPARENT, L"STATIC", L"", WS_CHILD, rect->left, rect->top,
                               rect->right - rect->left, rect->bottom - rect->top, parent, nullptr,
                               ozComModule::Instance(), nullptr);
    return m_window != nullptr ? S_OK : HRESULT_FROM_WIN32(GetLastError());
}

STDMETHODIMP ozADMPropPage::Deactivate()
{
    if (m_window != nullptr) {
        DestroyWindow(m_window);
        m_window = nullptr;
    }
    return S_OK;
}

STDMETHODIMP ozADMPropPage::GetPageInfo(PROPPAGEINFO* info)
{
    if (info == nullptr)
        return E_POINTER;
    info->cb = sizeof(PROPPAGEINFO);
    info->pszTitle = TaskText(L"General");
    info->size = PageSize;
    info->pszDocString = nullptr;
    info->pszHelpFile = nullptr;
    info->dwHelpContext = 0;
    return info->pszTitle != nullptr ? S_OK : E_OUTOFMEMORY;
}

STDMETHODIMP ozADMPropPage::SetObjects(ULONG count, IUnknown** objects)
{
    // Nothing is edited yet, so the objects are not kept.
    return count != 0 && objects == nullptr ? E_POINTER : S_OK;
}

STDMETHODIMP ozADMPropPage::Show(UINT command)
{
    if (m_window == nullptr)
        return E_UNEXPECTED;
    ShowWindow(m_window, static_cast<int>(command));
    return S_OK;
}

STDMETHODIMP ozADMPropPage::Move(LPCRECT rect)
{
    if (rect == nullptr)
        return E_POINTER;
    if (m_window == nullptr)
        return E_UNEXPECTED;
    MoveWindow(m_window, rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top,
               TRUE);
    return S_OK;
}

STDMETHODIMP ozADMPropPage::IsPageDirty()
{
    return S_FALSE;
}

STDMETHODIMP ozADMPropPage::Apply()
{
    return S_OK;
}

STDMETHODIMP ozADMPropPage::Help(LPCOLESTR)
{
    return E_NOTIMPL;
}

STDMETHODIMP ozADMPropPage::TranslateAccelerator(MSG*)
{
    return S_FALSE;
}
