// What the parts of the embedding client share (besides ozComTestClient.h): an event sink that
// records KeyDown, a recorder of the key messages a window receives, and the checks of the
// control's child windows and keys (ozADMEmbeddingWindows.cpp).
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <utility>
#include <vector>

#include "ozADM.h"
#include "ozComTestClient.h"

// Records the KeyDown events it receives.
class KeySink final : public IDispatch {
public:
    int calls = 0;
    short keyCode = 0;
    short shift = -1;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override
    {
        if (IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IDispatch) ||
            IsEqualIID(iid, DIID__DADMEvents)) {
            *object = static_cast<IDispatch*>(this);
            return S_OK;
        }
        *object = nullptr;
        return E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }
    STDMETHODIMP GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override
    {
        return E_NOTIMPL;
    }
    STDMETHODIMP Invoke(DISPID dispid, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*,
                        UINT*) override
    {
        if (dispid != DISPID_KEYDOWN || params->cArgs != 2 ||
            V_VT(&params->rgvarg[1]) != (VT_I2 | VT_BYREF) || V_VT(&params->rgvarg[0]) != VT_I2)
            return DISP_E_MEMBERNOTFOUND;
        ++calls;
        keyCode = *V_I2REF(&params->rgvarg[1]);
        shift = V_I2(&params->rgvarg[0]);
        return S_OK;
    }
};

// The key messages (message, key) a window of the control received: it is subclassed, which a
// client may do to the windows of an in-process server, until the recorder goes.
class KeyRecorder {
public:
    explicit KeyRecorder(HWND window);
    ~KeyRecorder();
    KeyRecorder(const KeyRecorder&) = delete;
    KeyRecorder& operator=(const KeyRecorder&) = delete;

    const std::vector<std::pair<UINT, WPARAM>>& Keys() const { return m_keys; }

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_window;
    WNDPROC m_original;
    std::vector<std::pair<UINT, WPARAM>> m_keys;
};

// Posts a key message to window and takes it from the queue as a message loop would, which is
// where the control's message hook sees it; dispatches it unless it became WM_NULL, and
// returns the message as taken.
UINT PostAndTake(HWND window, UINT message, WPARAM key);

// The control's children: classes, layout, the visible view, Refresh, a new size.
void CheckChildWindows(IUnknown* control, HWND window);
// Tab and the arrow keys through the message hook and TranslateAccelerator, and UI activation.
void CheckKeys(IUnknown* control, HWND window);
// With two controls on the thread: the hook serves the current (last created) control only,
// and stays while a control window remains.
void CheckSecondControl(HWND firstWindow, HWND secondWindow);
