// A container of controls that notes every call it gets, and can be set to leave out or to refuse what
// containers leave out or refuse.
#pragma once

#include "MockSink.h"

#include <windows.h>

#include <ocidl.h>
#include <ole2.h>
#include <olectl.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

/// The client site of one control, with the in-place site, control site, frame and ambient properties behind
/// it. Counts its references: at the end of a test none but its owner's may be left.
class MockContainer : public IOleClientSite,
                      public IOleInPlaceSite,
                      public IOleControlSite,
                      public IOleInPlaceFrame,
                      public UntypedDispatch {
public:
    MockContainer();
    /// Closes the control, if one is set, and destroys the window.
    ~MockContainer();
    MockContainer(const MockContainer&) = delete;
    MockContainer& operator=(const MockContainer&) = delete;

    /// What the container does not have or does not want; to be set before the control asks.
    struct Habits {
        bool hasInPlaceSite = true;
        bool hasControlSite = true;
        bool hasAmbients = true;
        bool hasFrame = true;
        bool allowsActivation = true;
        bool allowsUserInterface = true;
        bool knowsWindow = true;       ///< else GetWindow fails
        bool knowsContext = true;      ///< else GetWindowContext fails
        bool hasPropertyFrame = false; ///< shows the property pages itself
    };
    Habits habits;
    RECT position = {10, 20, 210, 120};
    RECT clip = {10, 20, 210, 120};
    std::map<DISPID, VARIANT> ambients;             ///< the values are not freed
    DWORD modifiers = 0;                            ///< of the last key that it was asked for
    UINT frameInfoSize = 0;                         ///< as the control stated it
    std::function<void(const std::string&)> onCall; ///< run inside each call that is noted

    /// Takes a control: the mock keeps a reference and calls SetClientSite.
    void Embed(IUnknown* control);
    /// Close, SetClientSite(null) and release, in that order; nothing when there is no control.
    void Remove();
    /// DoVerb with the container's window and position.
    HRESULT DoVerb(LONG verb, MSG* message = nullptr);
    /// The control's IOleObject; owned by the mock.
    [[nodiscard]] IOleObject* Object() const { return m_object; }
    /// The window of the container; made with the object, and shown.
    [[nodiscard]] HWND Window() const { return m_window; }
    /// The control's window: the container's only child; null when there is none.
    [[nodiscard]] HWND ControlWindow() const { return ::GetWindow(m_window, GW_CHILD); }

    [[nodiscard]] const std::vector<std::string>& Calls() const { return m_calls; }
    [[nodiscard]] bool WasCalled(const std::string& name) const;
    void ForgetCalls() { m_calls.clear(); }
    [[nodiscard]] LONG References() const { return m_references; }
    [[nodiscard]] bool HasActiveObject() const { return m_hasActiveObject; }
    /// The rectangle of the last OnPosRectChange.
    [[nodiscard]] RECT AskedPosition() const { return m_asked; }

    // What a control sees.
    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override;
    STDMETHODIMP_(ULONG) Release() override;

    STDMETHODIMP SaveObject() override;
    STDMETHODIMP GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
    STDMETHODIMP GetContainer(IOleContainer** container) override;
    STDMETHODIMP ShowObject() override;
    STDMETHODIMP OnShowWindow(BOOL show) override;
    STDMETHODIMP RequestNewObjectLayout() override;

    STDMETHODIMP GetWindow(HWND* window) override;
    STDMETHODIMP ContextSensitiveHelp(BOOL enter) override;
    STDMETHODIMP CanInPlaceActivate() override;
    STDMETHODIMP OnInPlaceActivate() override;
    STDMETHODIMP OnUIActivate() override;
    STDMETHODIMP GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place,
                                  LPRECT clipping, LPOLEINPLACEFRAMEINFO info) override;
    STDMETHODIMP Scroll(SIZE extent) override;
    STDMETHODIMP OnUIDeactivate(BOOL undoable) override;
    STDMETHODIMP OnInPlaceDeactivate() override;
    STDMETHODIMP DiscardUndoState() override;
    STDMETHODIMP DeactivateAndUndo() override;
    STDMETHODIMP OnPosRectChange(LPCRECT place) override;

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
    STDMETHODIMP InsertMenus(HMENU shared, LPOLEMENUGROUPWIDTHS widths) override;
    STDMETHODIMP SetMenu(HMENU shared, HOLEMENU menu, HWND object) override;
    STDMETHODIMP RemoveMenus(HMENU shared) override;
    STDMETHODIMP SetStatusText(LPCOLESTR text) override;
    STDMETHODIMP EnableModeless(BOOL enable) override;
    STDMETHODIMP TranslateAccelerator(LPMSG message, WORD id) override;

    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID lcid, WORD flags, DISPPARAMS* params, VARIANT* result,
                        EXCEPINFO* exception, UINT* wrongArgument) override;

private:
    HRESULT Note(const char* name, HRESULT result = S_OK);

    LONG m_references = 1;
    HWND m_window;
    IOleObject* m_object = nullptr;
    std::vector<std::string> m_calls;
    bool m_hasActiveObject = false;
    RECT m_asked{};
};
