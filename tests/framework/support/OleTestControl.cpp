#include "OleTestControl.h"

#include <OleTest.h>

#include <stdexcept>

CTestControl* CTestControl::last = nullptr;
bool CTestControl::needsInitNew = false;
int CTestControl::refuseCreation = 0;

BEGIN_MESSAGE_MAP(TestDialog, CDialog)
    ON_BN_CLICKED(kSaveButton, &TestDialog::OnSave)
END_MESSAGE_MAP()

void TestDialog::OnSave() {
    if (onSave) {
        onSave();
    }
    ++saves; // the object outlives its handler, whatever that did
}

IMPLEMENT_DYNCREATE(CTestControl, COleControl)
IMPLEMENT_OLECREATE_EX(CTestControl, "OLETEST.TestControl.1", 0x5d4f6f5e, 0x8d3a, 0x4c1c, 0x9a, 0x52, 0x0f,
                       0x4b, 0xe0, 0xb9, 0xa0, 0x04)
IMPLEMENT_OLETYPELIB(CTestControl, LIBID_OleTestLib, 1, 0)
IMPLEMENT_OLECTLTYPE(CTestControl, kTypeName, OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE)

BEGIN_MESSAGE_MAP(CTestControl, DialogControl)
    ON_WM_CREATE()
    ON_OLEVERB(kVerbName, OnProperties)
END_MESSAGE_MAP()

BEGIN_DISPATCH_MAP(CTestControl, DialogControl)
    DISP_PROPERTY_NOTIFY_ID(CTestControl, "Caption", 1, caption, OnCaptionChanged, VT_BSTR)
    DISP_FUNCTION_ID(CTestControl, "Reset", 2, Reset, VT_EMPTY, VTS_NONE)
    DISP_FUNCTION_ID(CTestControl, "Resize", 3, Resize, VT_EMPTY, VTS_I4 VTS_I4)
    DISP_FUNCTION_ID(CTestControl, "Rename", 4, Rename, VT_EMPTY, VTS_BSTR VTS_BSTR)
    DISP_FUNCTION_ID(CTestControl, "Mixed", 6, Mixed, VT_EMPTY, VTS_I2 VTS_R8 VTS_BOOL)
    DISP_FUNCTION_ID(CTestControl, "Fail", 7, Fail, VT_EMPTY, VTS_I4)
END_DISPATCH_MAP()

BEGIN_EVENT_MAP(CTestControl, DialogControl)
    EVENT_CUSTOM_ID("Renamed", 3, FireRenamed, VTS_BSTR VTS_I4)
END_EVENT_MAP()

BEGIN_PROPPAGEIDS(CTestControl, 1)
    PROPPAGEID(CTestPage::guid)
END_PROPPAGEIDS(CTestControl)

CTestControl::CTestControl() {
    InitializeIIDs(&DIID__DTestControl, &DIID__DTestEvents);
    SetInitialSize(120, 80);
    last = this;
}

CTestControl::~CTestControl() {
    last = nullptr;
    if (onEnd) {
        onEnd();
    }
}

BOOL CTestControl::CTestControlFactory::UpdateRegistry(BOOL bRegister) {
    if (bRegister) {
        return AfxOleRegisterControlClass(AfxGetInstanceHandle(), m_clsid, m_lpszProgID, kTypeName, 1012,
                                          afxRegApartmentThreading, 131473, LIBID_OleTestLib, 1, 0);
    }
    return AfxOleUnregisterClass(m_clsid, m_lpszProgID);
}

BOOL CTestControl::PreCreateWindow(CREATESTRUCT& cs) {
    cs.lpszClass = L"STATIC";
    return DialogControl::PreCreateWindow(cs);
}

int CTestControl::OnCreate(LPCREATESTRUCT lpCreateStruct) {
    if (refuseCreation > 0) {
        --refuseCreation;
        return -1;
    }
    if (DialogControl::OnCreate(lpCreateStruct) == -1) {
        return -1;
    }
    if (!dialog.Create(kTestDialog, this)) {
        return -1;
    }
    CoverWith(dialog);
    return 0;
}

void CTestControl::OnDraw(CDC* pDC, const CRect& rcBounds, const CRect&) {
    drawn.push_back(rcBounds);
    origins.resize(2);
    ::GetWindowOrgEx(*pDC, &origins[0]);
    ::GetViewportOrgEx(*pDC, &origins[1]);
    DoSuperclassPaint(pDC, rcBounds);
    if (dialog.m_hWnd) {
        dialog.MoveWindow(rcBounds);
    }
    CBrush brush(TranslateColor(AmbientBackColor()));
    pDC->FillRect(rcBounds, &brush);
    RestoreDialog(rcBounds);
}

void CTestControl::DoPropExchange(CPropExchange* pPX) {
    ExchangeVersion(pPX, MAKELONG(0, 1));
    DialogControl::DoPropExchange(pPX);
    PX_Long(pPX, L"Count", count, 5);
}

BOOL CTestControl::IsInvokeAllowed(DISPID dispid) {
    return !needsInitNew || DialogControl::IsInvokeAllowed(dispid);
}

void CTestControl::OnCaptionChanged() {
    log.push_back(L"caption");
    SetModifiedFlag();
}

void CTestControl::Reset() {
    log.push_back(L"reset");
}

void CTestControl::Resize(LONG width, LONG height) {
    log.push_back(std::to_wstring(width) + L"x" + std::to_wstring(height));
}

void CTestControl::Rename(LPCTSTR from, LPCTSTR to) {
    log.push_back(std::wstring(from) + L">" + to);
}

void CTestControl::Mixed(short little, double real, BOOL flag) {
    log.push_back(std::to_wstring(little) + L"," + std::to_wstring(static_cast<int>(real * 10)) + L"," +
                  (flag ? L"yes" : L"no"));
}

void CTestControl::Fail(LONG kind) {
    if (kind == 1) {
        throw std::bad_alloc();
    }
    if (kind == 2) {
        AfxThrowResourceException();
    }
    throw std::runtime_error("thrown by a test");
}

IMPLEMENT_DYNCREATE(CTestPage, COlePropertyPage)
IMPLEMENT_OLECREATE_EX(CTestPage, "OLETEST.TestPage.1", 0x5d4f6f5e, 0x8d3a, 0x4c1c, 0x9a, 0x52, 0x0f, 0x4b,
                       0xe0, 0xb9, 0xa0, 0x05)

BEGIN_MESSAGE_MAP(CTestPage, COlePropertyPage)
END_MESSAGE_MAP()

BOOL CTestPage::CTestPageFactory::UpdateRegistry(BOOL bRegister) {
    return bRegister ? AfxOleRegisterPropertyPageClass(AfxGetInstanceHandle(), m_clsid, kPageTypeName)
                     : AfxOleUnregisterClass(m_clsid, nullptr);
}

void CTestPage::DoDataExchange(CDataExchange* pDX) {
    DDP_Text(pDX, kPageEdit, text, L"Caption");
    DDP_PostProcessing(pDX);
}

OleTest::OleTest() {
    ::OleInitialize(nullptr);
}

OleTest::~OleTest() {
    ::OleUninitialize();
}

void OleTest::SetUp() {
    CTestControl::needsInitNew = false;
    CTestControl::refuseCreation = 0;
    ASSERT_EQ(S_OK, AfxDllCanUnloadNow());
}

void OleTest::TearDown() {
    EXPECT_EQ(S_OK, AfxDllCanUnloadNow()) << "an object or a lock is left";
    EXPECT_EQ(nullptr, CTestControl::last);
}

ComPtr<IUnknown> OleTest::Create(REFCLSID clsid) {
    ComPtr<IClassFactory> factory;
    ComPtr<IUnknown> made;
    EXPECT_EQ(S_OK, AfxDllGetClassObject(clsid, IID_IClassFactory, factory.ReceiveVoid()));
    EXPECT_EQ(S_OK, factory->CreateInstance(nullptr, IID_IUnknown, made.ReceiveVoid()));
    return made;
}

void OleTest::Pump() {
    MSG message;
    while (::PeekMessage(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&message);
        ::DispatchMessage(&message);
    }
}

namespace {

constexpr LPCTSTR kPrivateRoot = L"Software\\FrameworkOleTests";

void List(HKEY key, const std::wstring& path, std::vector<std::wstring>& lines) {
    constexpr DWORD kLongest = 1024;
    wchar_t name[kLongest];
    for (DWORD index = 0;; ++index) {
        DWORD length = kLongest;
        BYTE data[4096]{};
        DWORD size = sizeof(data) - sizeof(wchar_t);
        DWORD type = 0;
        if (::RegEnumValue(key, index, name, &length, nullptr, &type, data, &size) != ERROR_SUCCESS) {
            break;
        }
        lines.push_back(path + L"|" + name + L"=" + reinterpret_cast<wchar_t*>(data));
    }
    for (DWORD index = 0;; ++index) {
        DWORD length = kLongest;
        if (::RegEnumKeyEx(key, index, name, &length, nullptr, nullptr, nullptr, nullptr) != ERROR_SUCCESS) {
            break;
        }
        const std::wstring below = path + L"\\" + name;
        lines.push_back(below);
        HKEY child = nullptr;
        if (::RegOpenKeyEx(key, name, 0, KEY_READ, &child) == ERROR_SUCCESS) {
            List(child, below, lines);
            ::RegCloseKey(child);
        }
    }
}

} // namespace

PrivateClassesRoot::PrivateClassesRoot() {
    ::RegDeleteTree(HKEY_CURRENT_USER, kPrivateRoot);
    ::RegCreateKeyEx(HKEY_CURRENT_USER, kPrivateRoot, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_key,
                     nullptr);
    ::RegOverridePredefKey(HKEY_CLASSES_ROOT, m_key);
}

PrivateClassesRoot::~PrivateClassesRoot() {
    ::RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
    ::RegCloseKey(m_key);
    ::RegDeleteTree(HKEY_CURRENT_USER, kPrivateRoot);
}

std::vector<std::wstring> PrivateClassesRoot::Content() {
    std::vector<std::wstring> lines;
    List(HKEY_CLASSES_ROOT, L"", lines);
    return lines;
}
