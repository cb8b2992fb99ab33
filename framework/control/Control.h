// COleControl: a window that containers embed.
//
// Each interface that containers ask for is answered by a class of its own (folders interfaces and
// persistence), which calls the virtual members of the control for everything a derived class may change. A
// control works without a site and in any order of calls, for scripts as well as for containers.
//
// Covered: the documented members below. Not covered: stock properties and events, fonts and pictures,
// windowless and subclassed-with-reflector activation, licences, data paths, shortcut menus. A control whose
// window class is changed in PreCreateWindow gets its notifications in its container's window. Keyboard
// messages reach PreTranslateMessage while the user interface is active. What activates it, and child windows
// with their focus and keys, are the derived class's.
#pragma once

#include "ControlMaps.h"
#include "ole/OleTarget.h"
#include "windows/Wnd.h"

#include <olectl.h>

#include <memory>

class CPropExchange;

namespace framework {

struct ControlParts;

} // namespace framework

class COleControl : public CWnd {
    DECLARE_DYNAMIC(COleControl)

public:
    COleControl();
    ~COleControl() override;

    /// The primary dispatch interface and that of the events, kept as pointers; in the derived class's
    /// constructor.
    void InitializeIIDs(const IID* piidPrimary, const IID* piidEvents);
    /// The size, in pixels, until the container sets one; in the derived class's constructor.
    void SetInitialSize(int cx, int cy);

    virtual HRESULT GetClassID(LPCLSID pclsid) = 0;
    virtual UINT GetUserTypeNameID() = 0;
    virtual DWORD GetMiscStatus() = 0;
    /// The classes of the control's property pages; null when it has none.
    virtual const CLSID* GetPropPageIDs(ULONG& cPropPages);

    // Persistence
    /// TRUE: there are changes that the container has not saved.
    BOOL IsModified() const noexcept;
    void SetModifiedFlag(BOOL bModified = TRUE);
    /// Loads, saves and resets all persistent properties; the default exchanges the size.
    virtual void DoPropExchange(CPropExchange* pPX);
    /// First call of DoPropExchange; low word minor, high word major. FALSE when newer data is loaded.
    BOOL ExchangeVersion(CPropExchange* pPX, DWORD dwVersionDefault, BOOL bConvert = TRUE);
    BOOL ExchangeExtent(CPropExchange* pPX);
    /// Back to the defaults, on initialisation and when a load failed.
    virtual void OnResetState();

    // Drawing
    /// Draws the control. rcBounds is the whole control, rcInvalid what needs it, in the device context's
    /// units.
    virtual void OnDraw(CDC* pDC, const CRect& rcBounds, const CRect& rcInvalid);
    /// Draws into a metafile; the default calls OnDraw.
    virtual void OnDrawMetafile(CDC* pDC, const CRect& rcBounds);
    /// Lets the window class below a subclassed control paint. Does nothing while there is no window.
    void DoSuperclassPaint(CDC* pDC, const CRect& rcBounds);
    /// TRUE in a class that changes its window class in PreCreateWindow.
    virtual BOOL IsSubclassedControl();
    /// Requests a redraw of a part, or of the whole control, which happens even when children cover it.
    void InvalidateControl(LPCRECT lpRect = nullptr, BOOL bErase = TRUE);

    // Colours and ambient properties; each ambient has its documented default when the container has none
    COLORREF TranslateColor(OLE_COLOR clrColor, HPALETTE hpal = nullptr);
    /// vtProp VT_BOOL (BOOL), VT_I4 (long) or VT_BSTR (CString). FALSE, with *pvProp unchanged, when the
    /// container has no such property.
    BOOL GetAmbientProperty(DISPID dwDispid, VARTYPE vtProp, void* pvProp);
    OLE_COLOR AmbientBackColor();
    CString AmbientDisplayName();
    LCID AmbientLocaleID();
    virtual void OnAmbientPropertyChange(DISPID dispID);

    // The container
    /// Without a reference for the caller; null when there is none.
    LPOLECLIENTSITE GetClientSite() noexcept;
    virtual void OnSetClientSite();
    virtual BOOL OnSetExtent(LPSIZEL lpSizeL);
    virtual BOOL OnSetObjectRects(LPCRECT lpRectPos, LPCRECT lpRectClip);
    virtual void OnClose(DWORD dwSaveOption);
    virtual BOOL OnDoVerb(LONG iVerb, LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect);
    virtual BOOL OnEnumVerbs(LPENUMOLEVERB* ppenumOleVerb);
    /// Activates the control with its user interface.
    virtual BOOL OnEdit(LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect);
    /// Shows the property pages, in the container's frame or the system's.
    virtual BOOL OnProperties(LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect);
    virtual void OnGetControlInfo(LPCONTROLINFO pControlInfo);
    virtual void OnMnemonic(LPMSG pMsg);
    virtual void OnFreezeEvents(BOOL bFreeze);
    /// Brackets a modal dialog: the container disables its windows meanwhile.
    void PreModalDialog(HWND hWndParent = nullptr);
    void PostModalDialog(HWND hWndParent = nullptr);

    // Views
    virtual DWORD OnGetViewStatus();
    virtual BOOL OnGetViewExtent(DWORD dwDrawAspect, LONG lindex, DVTARGETDEVICE* ptd, LPSIZEL lpsizel);
    virtual BOOL OnGetNaturalExtent(DWORD dwAspect, LONG lindex, DVTARGETDEVICE* ptd, HDC hicTargetDev,
                                    DVEXTENTINFO* pExtentInfo, LPSIZEL psizel);
    virtual BOOL OnGetColorSet(DVTARGETDEVICE* ptd, HDC hicTargetDev, LPLOGPALETTE* ppColorSet);

    // Events
    /// Sends an event with the parameters of its VTS_ types (EVENT_PARAM) to every sink. Nothing is sent for
    /// an event that the event map does not have, or while the container has frozen events.
    void __cdecl FireEvent(DISPID dispid, BYTE* pbParams, ...);

    BOOL GetDispatchIID(IID* pIID) override;
    /// TRUE once the control is initialised or loaded; a class for scripts overrides it.
    BOOL IsInvokeAllowed(DISPID dispid) override;
    void OnFinalRelease() override;

protected:
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    static const framework::EventMap* GetThisEventMap();
    virtual const framework::EventMap* GetEventMap() const;

    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    afx_msg void OnPaint();
    DECLARE_MESSAGE_MAP()
    DECLARE_INTERFACE_MAP()

private:
    BOOL OnVerbShow(LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect);
    BOOL OnVerbHide(LPMSG lpMsg, HWND hWndParent, LPCRECT lpRect);
    bool KnowsEvent(DISPID dispid) const;

    std::unique_ptr<framework::ControlParts> m_parts;
};
