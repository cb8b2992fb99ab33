// The container of the probe: every call of the control is logged and answered as a complete container does.
#pragma once

#include <windows.h>

#include <ocidl.h>
#include <ole2.h>

/// What the container lacks.
struct Lacks {
    bool ambients = false;    ///< no IDispatch for ambient properties
    bool controlSite = false; ///< no IOleControlSite
    bool frame = false;       ///< GetWindowContext names no frame
};

/// Client site, in-place site, control site, frame and ambient properties. Outlives the control.
class Site : public IOleClientSite,
             public IOleInPlaceSite,
             public IOleControlSite,
             public IOleInPlaceFrame,
             public IDispatch {
public:
    Site(HWND window, const Lacks& lacks) : m_window(window), m_lacks(lacks) {}
    Site(const Site&) = delete;
    Site& operator=(const Site&) = delete;

    /// The object that gets the keys; null when there is none.
    [[nodiscard]] IOleInPlaceActiveObject* ActiveObject() const { return m_active; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return 2; }
    STDMETHODIMP_(ULONG) Release() override { return 1; }

    STDMETHODIMP SaveObject() override;
    STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
    STDMETHODIMP GetContainer(IOleContainer** container) override;
    STDMETHODIMP ShowObject() override;
    STDMETHODIMP OnShowWindow(BOOL shown) override;
    STDMETHODIMP RequestNewObjectLayout() override;

    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;
    STDMETHODIMP CanInPlaceActivate() override;
    STDMETHODIMP OnInPlaceActivate() override;
    STDMETHODIMP OnUIActivate() override;
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT position,
                                  LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
    STDMETHODIMP Scroll(SIZE extent) override;
    STDMETHODIMP OnUIDeactivate(BOOL undoable) override;
    STDMETHODIMP OnInPlaceDeactivate() override;
    STDMETHODIMP DiscardUndoState() override;
    STDMETHODIMP DeactivateAndUndo() override;
    STDMETHODIMP OnPosRectChange(LPCRECT position) override;

    STDMETHODIMP OnControlInfoChanged() override;
    STDMETHODIMP LockInPlaceActive(BOOL lock) override;
    STDMETHODIMP GetExtendedControl(IDispatch** control) override;
    STDMETHODIMP TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) override;
    STDMETHODIMP TranslateAccelerator(MSG* message, DWORD modifiers) override;
    STDMETHODIMP OnFocus(BOOL got) override;
    STDMETHODIMP ShowPropertyFrame() override;

    STDMETHODIMP GetBorder(LPRECT border) override;
    STDMETHODIMP RequestBorderSpace(LPCBORDERWIDTHS widths) override;
    STDMETHODIMP SetBorderSpace(LPCBORDERWIDTHS widths) override;
    STDMETHODIMP SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR name) override;
    STDMETHODIMP InsertMenus(HMENU menu, LPOLEMENUGROUPWIDTHS widths) override;
    STDMETHODIMP SetMenu(HMENU menu, HOLEMENU shared, HWND window) override;
    STDMETHODIMP RemoveMenus(HMENU menu) override;
    STDMETHODIMP SetStatusText(LPCOLESTR text) override;
    STDMETHODIMP EnableModeless(BOOL enable) override;
    STDMETHODIMP TranslateAccelerator(LPMSG message, WORD id) override;

    STDMETHODIMP GetTypeInfoCount(UINT* count) override;
    STDMETHODIMP GetTypeInfo(UINT index, LCID lcid, ITypeInfo** info) override;
    STDMETHODIMP GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID lcid, DISPID* ids) override;
    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID lcid, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                        EXCEPINFO* exception, UINT* wrong) override;

private:
    HWND m_window;
    Lacks m_lacks;
    IOleInPlaceActiveObject* m_active = nullptr; // counted
};
