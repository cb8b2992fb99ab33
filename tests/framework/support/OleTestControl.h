// A control and a property page with which the framework's OLE half is tested, and the thread's apartment
// around them.
#pragma once

#include "afxctl.h"
#include "control/DialogControl.h"
#include "MockContainer.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

using common::ComPtr;

/// The dialog inside the control, and its controls in their order.
constexpr UINT kTestDialog = 10;
constexpr int kFirstEdit = 1001;
constexpr int kSaveButton = 1002; ///< "&Save"
constexpr int kDisabledEdit = 1003;
constexpr int kLastList = 1004;
constexpr UINT kTestPage = 11;
constexpr int kPageEdit = 1011;
constexpr UINT kTypeName = 3001;     ///< "Test Control"
constexpr UINT kPageCaption = 3002;  ///< "Details"
constexpr UINT kPageTypeName = 3003; ///< "Test Page"
constexpr UINT kVerbName = 3004;     ///< "&Properties"

constexpr LPCTSTR kTestProgID = L"OLETEST.TestControl.1";

/// TRUE when the rectangles are the same.
inline bool IsRect(const RECT& expected, const RECT& found) {
    return ::EqualRect(&expected, &found);
}

class TestDialog : public CDialog {
public:
    int okays = 0;
    int cancels = 0;
    int saves = 0;
    std::function<void()> onSave; ///< run inside the handler of the button

protected:
    void OnOK() override { ++okays; }
    void OnCancel() override { ++cancels; }
    afx_msg void OnSave();
    DECLARE_MESSAGE_MAP()
};

class CTestControl : public DialogControl {
    DECLARE_DYNCREATE(CTestControl)

public:
    CTestControl();
    ~CTestControl() override;

    static CTestControl* last; ///< the control made last; null once it is gone
    static bool needsInitNew;  ///< automation only after initialisation, which is the framework's default
    static int refuseCreation; ///< answers to WM_CREATE that refuse the window

    std::vector<std::wstring> log; ///< calls of members
    std::vector<CRect> drawn;      ///< bounds of OnDraw
    std::vector<bool> freezes;     ///< what OnFreezeEvents was passed
    std::vector<POINT> origins;    ///< of the window and the viewport in the last OnDraw
    TestDialog dialog;
    CString caption;
    long count = 0;
    std::function<void()> onEnd; ///< called by the destructor

    void OnDraw(CDC* pDC, const CRect& rcBounds, const CRect& rcInvalid) override;
    void DoPropExchange(CPropExchange* pPX) override;
    BOOL IsInvokeAllowed(DISPID dispid) override;
    void OnFreezeEvents(BOOL freeze) override { freezes.push_back(freeze); }

    void FireRenamed(LPCTSTR name, LONG number) { FireEvent(3, EVENT_PARAM(VTS_BSTR VTS_I4), name, number); }
    void FireUnknown() { FireEvent(99, EVENT_PARAM(VTS_NONE)); }
    using DialogControl::InvalidateControl;

protected:
    BOOL PreCreateWindow(CREATESTRUCT& cs) override;
    BOOL IsSubclassedControl() override { return TRUE; }

    afx_msg int OnCreate(LPCREATESTRUCT lpCreateStruct);
    DECLARE_MESSAGE_MAP()

    void OnCaptionChanged();
    void Reset();
    void Resize(LONG width, LONG height);
    void Rename(LPCTSTR from, LPCTSTR to);
    void Mixed(short little, double real, BOOL flag);
    void Fail(LONG kind);
    DECLARE_DISPATCH_MAP()
    DECLARE_EVENT_MAP()
    DECLARE_OLECREATE_EX(CTestControl)
    DECLARE_OLETYPELIB(CTestControl)
    DECLARE_PROPPAGEIDS(CTestControl)
    DECLARE_OLECTLTYPE(CTestControl)
};

class CTestPage : public COlePropertyPage {
    DECLARE_DYNCREATE(CTestPage)

public:
    CTestPage() : COlePropertyPage(kTestPage, kPageCaption) {}
    CString text;

protected:
    void DoDataExchange(CDataExchange* pDX) override;
    DECLARE_MESSAGE_MAP()
    DECLARE_OLECREATE_EX(CTestPage)
};

/// Base of the fixtures: an apartment, and the certainty that nothing is left when a test ends.
class OleTest : public testing::Test {
protected:
    OleTest();
    ~OleTest() override;
    void SetUp() override;
    void TearDown() override;

    /// A new object of a class, through its factory; the caller owns the reference.
    static ComPtr<IUnknown> Create(REFCLSID clsid);
    /// The test control.
    static ComPtr<IUnknown> CreateControl() { return Create(CTestControl::guid); }
    /// Handles messages until none is waiting.
    static void Pump();
};

/// Everything under HKEY_CLASSES_ROOT is this key of the tests' own for the life of the object, and empty at
/// first.
class PrivateClassesRoot {
public:
    PrivateClassesRoot();
    ~PrivateClassesRoot();
    PrivateClassesRoot(const PrivateClassesRoot&) = delete;
    PrivateClassesRoot& operator=(const PrivateClassesRoot&) = delete;

    /// Every key and value below, one line each.
    [[nodiscard]] static std::vector<std::wstring> Content();

private:
    HKEY m_key = nullptr;
};
