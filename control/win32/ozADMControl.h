// The ozADM control as a COM object: one CADMCtrl behind the dispatch interface _DADM, with
// class information for containers (IProvideClassInfo2) and a connection point for the event
// interface _DADMEvents. Names are resolved through the type library; Invoke maps the
// dispatch ids to the control's members (ozADMControlInvoke.cpp).
//
// As an embedded control it is activated in place only, inside out: DoVerb with any showing
// verb creates its window as a child of the site's window (ozADMControlOle.cpp,
// ozADMControlWindow.cpp), with the child windows of ozControlWindows; the views CADMCtrl
// shows (ozViews) draw into them through the Windows widgets (ozWin32Platform). OLEIVERB_UIACTIVATE
// and OLEIVERB_SHOW also make it the container's active object (IOleInPlaceActiveObject,
// ozADMControlActive.cpp). Keys are pre-translated (Tab to the keyboard window, End, Home and the
// arrows to the focus) in TranslateAccelerator and by the thread's message hook (ozMessageHook). It
// draws itself for containers that ask (IViewObject2), keeps its properties in a stream
// (IPersistStreamInit) and names its property page (ozADMControlPersist.cpp). Key presses in its
// window fire KeyDown unless the container froze events. Apartment-threaded: all calls come from
// the thread that created the object.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <olectl.h>

#include <vector>

#include "control/CADMCtrl.h"
#include "ozConnectionPoint.h"
#include "ozControlWindows.h"
#include "ozMessageBoxHostUI.h"
#include "ozMessageHook.h"
#include "ui/ozViews.h"
#include "ui/win32/ozWin32Platform.h"

class ozDispatchCall;

// The dispatch ids of _DADM, as the type library declares them; stock members use the
// system's ids (DISPID_FONT, DISPID_REFRESH, DISPID_ABOUTBOX).
enum : DISPID {
    DispidShowUser = 1,
    DispidShowMachine,
    DispidWithADMEdit,
    DispidShouldSave,
    DispidImpExLibrary,
    DispidVariableStart,
    DispidVariableEnd,
    DispidConfiguredPolicies,
    DispidReset,
    DispidSave,
    DispidLoad,
    DispidCleanup,
    DispidSetEBNF,
    DispidSetADM,
    DispidLoadOZReg,
    DispidAddString,
    DispidGetString,
    DispidGetCode,
    DispidSaveSelState,
    DispidWriteReport,
    DispidShowLegend,
    DispidSendKeyDown,
    DispidSendKeyUp,
    DispidWriteADM,
    DispidInsert,
    DispidDelete,
    DispidSRShowSearch,
    DispidSRShowReplace,
    DispidSRHide,
    DispidAddFromRegistry,
    DispidShowImportReg,
    DispidPolicyConfigures,
};

// How containers treat the control: activated as soon as it is visible, in place only, given
// its client site before anything else (IOleObject::GetMiscStatus and the MiscStatus key).
constexpr DWORD OzMiscStatus = OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST |
                               OLEMISC_INSIDEOUT | OLEMISC_CANTLINKINSIDE |
                               OLEMISC_RECOMPOSEONRESIZE;

class ozADMControl final : public IDispatch,
                           public IProvideClassInfo2,
                           public IConnectionPointContainer,
                           public IOleObject,
                           public IOleInPlaceObject,
                           public IOleInPlaceActiveObject,
                           public IOleControl,
                           public IViewObject2,
                           public IPersistStreamInit,
                           public ISpecifyPropertyPages,
                           private ozHookClient {
public:
    // The class factory's creation function.
    static HRESULT Create(REFIID iid, void** object);

    ozADMControl(const ozADMControl&) = delete;
    ozADMControl& operator=(const ozADMControl&) = delete;

    // IUnknown
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    // IDispatch for _DADM
    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                               DISPID* dispids) override;
    STDMETHODIMP Invoke(DISPID dispid, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params,
                        VARIANT* result, EXCEPINFO* exception, UINT* argErr) override;

    // IProvideClassInfo2: the coclass, and _DADMEvents as the default source.
    STDMETHODIMP GetClassInfo(ITypeInfo** info) override;
    STDMETHODIMP GetGUID(DWORD kind, GUID* guid) override;

    // IConnectionPointContainer: the one connection point, for _DADMEvents.
    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
    STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

    // IOleObject
    STDMETHODIMP SetClientSite(IOleClientSite* site) override;
    STDMETHODIMP GetClientSite(IOleClientSite** site) override;
    STDMETHODIMP SetHostNames(LPCOLESTR container, LPCOLESTR object) override;
    STDMETHODIMP Close(DWORD saveOption) override;
    STDMETHODIMP SetMoniker(DWORD which, IMoniker* moniker) override;
    STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
    STDMETHODIMP InitFromData(IDataObject* data, BOOL creation, DWORD reserved) override;
    STDMETHODIMP GetClipboardData(DWORD reserved, IDataObject** data) override;
    STDMETHODIMP DoVerb(LONG verb, LPMSG message, IOleClientSite* site, LONG index, HWND parent,
                        LPCRECT position) override;
    STDMETHODIMP EnumVerbs(IEnumOLEVERB** verbs) override;
    STDMETHODIMP Update() override;
    STDMETHODIMP IsUpToDate() override;
    STDMETHODIMP GetUserClassID(CLSID* clsid) override;
    STDMETHODIMP GetUserType(DWORD form, LPOLESTR* type) override;
    STDMETHODIMP SetExtent(DWORD aspect, SIZEL* size) override;
    STDMETHODIMP GetExtent(DWORD aspect, SIZEL* size) override;
    STDMETHODIMP Advise(IAdviseSink* sink, DWORD* connection) override;
    STDMETHODIMP Unadvise(DWORD connection) override;
    STDMETHODIMP EnumAdvise(IEnumSTATDATA** advises) override;
    STDMETHODIMP GetMiscStatus(DWORD aspect, DWORD* status) override;
    STDMETHODIMP SetColorScheme(LOGPALETTE* palette) override;

    // IOleWindow and IOleInPlaceObject
    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;
    STDMETHODIMP InPlaceDeactivate() override;
    STDMETHODIMP UIDeactivate() override;
    STDMETHODIMP SetObjectRects(LPCRECT position, LPCRECT clip) override;
    STDMETHODIMP ReactivateAndUndo() override;

    // IOleInPlaceActiveObject: TranslateAccelerator pre-translates like the message hook; the
    // control has no tools, so frame and document activation change nothing.
    STDMETHODIMP TranslateAccelerator(LPMSG message) override;
    STDMETHODIMP OnFrameWindowActivate(BOOL activate) override;
    STDMETHODIMP OnDocWindowActivate(BOOL activate) override;
    STDMETHODIMP ResizeBorder(LPCRECT border, IOleInPlaceUIWindow* window, BOOL frame) override;
    STDMETHODIMP EnableModeless(BOOL enable) override;

    // IOleControl: no mnemonics; FreezeEvents counts, events wait for the count to reach 0.
    STDMETHODIMP GetControlInfo(CONTROLINFO* info) override;
    STDMETHODIMP OnMnemonic(MSG* message) override;
    STDMETHODIMP OnAmbientPropertyChange(DISPID dispid) override;
    STDMETHODIMP FreezeEvents(BOOL freeze) override;

    // IViewObject2: the content aspect only.
    STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                      HDC targetDC, HDC drawDC, LPCRECTL bounds, LPCRECTL windowBounds,
                      BOOL(STDMETHODCALLTYPE* cont)(ULONG_PTR), ULONG_PTR contArgument) override;
    STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* device,
                             HDC targetDC, LOGPALETTE** colors) override;
    STDMETHODIMP Freeze(DWORD aspect, LONG index, void* aspectInfo, DWORD* freeze) override;
    STDMETHODIMP Unfreeze(DWORD freeze) override;
    STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* device, LPSIZEL size) override;

    // IPersistStreamInit: ShowUser, ShowMachine, WithADMEdit, ozImpExLibrary and the extent.
    STDMETHODIMP GetClassID(CLSID* clsid) override;
    STDMETHODIMP IsDirty() override;
    STDMETHODIMP Load(LPSTREAM stream) override;
    STDMETHODIMP Save(LPSTREAM stream, BOOL clearDirty) override;
    STDMETHODIMP GetSizeMax(ULARGE_INTEGER* size) override;
    STDMETHODIMP InitNew() override;

    // ISpecifyPropertyPages: the control's one property page.
    STDMETHODIMP GetPages(CAUUID* pages) override;

    // The window class stays registered while the module is loaded; a module about to be
    // unloaded removes it, as the system does not, so that a reloaded module registers its own.
    static void UnregisterWindowClass();
    // What the control's window hands on (ozADMControlWindow.cpp): its creation, which creates
    // the child windows and counts the window with the message hook (false when a child
    // cannot be created), its size, its destruction.
    bool WindowCreated(HWND window);
    void WindowDestroying();
    void WindowDestroyed() { m_window = nullptr; }
    // Places the child windows and shows the view of the display mode (CADMCtrl::Refresh).
    void Layout();
    // Fires KeyDown(KeyCode, Shift) to the event sinks; returns the key code as the sinks
    // leave it (0 when a sink swallowed the key).
    short FireKeyDown(short keyCode, short shift);
    void Paint(HDC dc, const RECT& bounds) const;

private:
    ozADMControl();
    ~ozADMControl();

    // The parts of Invoke: the properties, the methods, the stock Font property.
    HRESULT InvokeProperty(DISPID dispid, ozDispatchCall& call);
    HRESULT InvokeMethod(DISPID dispid, ozDispatchCall& call);
    HRESULT InvokeFont(ozDispatchCall& call);
    // Activates the control in place in the site's window (DoVerb).
    HRESULT ActivateInPlace(IOleClientSite* site, LPCRECT position);
    // Makes the active control the container's active object and takes the focus.
    HRESULT ActivateUI();

    // ozHookClient
    const CADMCtrl* Control() const override { return &m_control; }
    bool PreTranslateMessage(const MSG& message) override;
    // The control's window as a child of parent (ozADMControlWindow.cpp).
    HRESULT CreateControlWindow(HWND parent, const RECT& position);
    // The properties as IPersistStreamInit stores them (ozADMControlPersist.cpp).
    std::vector<BYTE> PersistentState() const;

    LONG m_references = 1;
    ozMessageBoxHostUI m_ui;
    ozControlWindows m_windows;
    // The views and their widgets, before m_control, which keeps a pointer to the views.
    ozWin32Platform m_platform{m_ui};
    ozViews m_views{m_platform};
    CADMCtrl m_control;
    ozConnectionPoint m_events;
    IFontDisp* m_font = nullptr;

    IOleClientSite* m_clientSite = nullptr;
    IOleInPlaceSite* m_inPlaceSite = nullptr;
    IOleAdviseHolder* m_adviseHolder = nullptr;
    IAdviseSink* m_viewSink = nullptr;
    DWORD m_viewAspects = 0;
    DWORD m_viewFlags = 0;
    HWND m_window = nullptr;
    bool m_hooked = false;
    // While the control is the container's active object (UI active).
    bool m_uiActive = false;
    IOleInPlaceFrame* m_frame = nullptr;
    IOleInPlaceUIWindow* m_document = nullptr;
    // The size in HIMETRIC units (0.01 mm).
    SIZEL m_extent = {7938, 5292};
    LONG m_frozenEvents = 0;
    // The persistent state last loaded or saved: IsDirty compares with it.
    std::vector<BYTE> m_persisted;
};
