// The control's property page class (ozADM.ozADMPropPage.1). For now the page has nothing to
// edit: it shows an empty panel, is never dirty, and applies nothing.
#pragma once

#include <windows.h>

#include <ocidl.h>

class ozADMPropPage final : public IPropertyPage {
public:
    // The class factory's creation function.
    static HRESULT Create(REFIID iid, void** object);

    ozADMPropPage(const ozADMPropPage&) = delete;
    ozADMPropPage& operator=(const ozADMPropPage&) = delete;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP SetPageSite(IPropertyPageSite* site) override;
    STDMETHODIMP Activate(HWND parent, LPCRECT rect, BOOL modal) override;
    STDMETHODIMP Deactivate() override;
    STDMETHODIMP GetPageInfo(PROPPAGEINFO* info) override;
    STDMETHODIMP SetObjects(ULONG count, IUnknown** objects) override;
    STDMETHODIMP Show(UINT command) override;
    STDMETHODIMP Move(LPCRECT rect) override;
    STDMETHODIMP IsPageDirty() override;
    STDMETHODIMP Apply() override;
    STDMETHODIMP Help(LPCOLESTR helpDir) override;
    STDMETHODIMP TranslateAccelerator(MSG* message) override;

private:
    ozADMPropPage();
    ~ozADMPropPage();

    LONG m_references = 1;
    IPropertyPageSite* m_site = nullptr;
    HWND m_window = nullptr;
};
