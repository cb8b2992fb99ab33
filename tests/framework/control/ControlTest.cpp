#include "common/Himetric.h"
#include "ControlObjectTest.h"

namespace {

using ControlTest = ControlObjectTest;

TEST_F(ControlTest, TellsWhatItIs) {
    CLSID clsid{};
    EXPECT_EQ(S_OK, m_object->GetUserClassID(&clsid));
    EXPECT_EQ(CTestControl::guid, clsid);
    LPOLESTR type = nullptr;
    ASSERT_EQ(S_OK, m_object->GetUserType(USERCLASSTYPE_FULL, &type));
    EXPECT_STREQ(L"Test Control", type);
    ::CoTaskMemFree(type);
    DWORD status = 0;
    EXPECT_EQ(S_OK, m_object->GetMiscStatus(DVASPECT_CONTENT, &status));
    EXPECT_EQ(static_cast<DWORD>(OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE), status);
    EXPECT_EQ(S_OK, m_object->GetMiscStatus(DVASPECT_ICON, &status));
    EXPECT_EQ(0U, status);
}

TEST_F(ControlTest, ExtentIsHimetricAndStartsWithTheInitialSize) {
    SIZEL extent{};
    ASSERT_EQ(S_OK, m_object->GetExtent(DVASPECT_CONTENT, &extent));
    EXPECT_EQ(::MulDiv(120, 2540, ::GetDpiForSystem()), extent.cx);
    EXPECT_EQ(::MulDiv(80, 2540, ::GetDpiForSystem()), extent.cy);
    extent = {5000, 4000};
    EXPECT_EQ(S_OK, m_object->SetExtent(DVASPECT_CONTENT, &extent));
    extent = {};
    EXPECT_EQ(S_OK, m_object->GetExtent(DVASPECT_CONTENT, &extent));
    EXPECT_EQ(5000, extent.cx);
    EXPECT_EQ(DV_E_DVASPECT, m_object->SetExtent(DVASPECT_ICON, &extent));
    EXPECT_EQ(DV_E_DVASPECT, m_object->GetExtent(DVASPECT_ICON, &extent));
    extent = {-1, 5};
    EXPECT_EQ(E_INVALIDARG, m_object->SetExtent(DVASPECT_CONTENT, &extent));
    EXPECT_EQ(E_POINTER, m_object->SetExtent(DVASPECT_CONTENT, nullptr));
}

TEST_F(ControlTest, OffersItsOwnVerbs) {
    ComPtr<IEnumOLEVERB> verbs;
    ASSERT_EQ(S_OK, m_object->EnumVerbs(verbs.Receive()));
    OLEVERB verb{};
    ULONG count = 0;
    ASSERT_EQ(S_OK, verbs->Next(1, &verb, &count));
    EXPECT_EQ(1, verb.lVerb);
    EXPECT_STREQ(L"&Properties", verb.lpszVerbName);
    EXPECT_EQ(static_cast<DWORD>(OLEVERBATTRIB_ONCONTAINERMENU), verb.grfAttribs);
    ::CoTaskMemFree(verb.lpszVerbName);
    EXPECT_EQ(S_FALSE, verbs->Next(1, &verb, &count));
    EXPECT_EQ(0U, count);
    EXPECT_EQ(S_OK, verbs->Reset());
    ComPtr<IEnumOLEVERB> clone;
    EXPECT_EQ(S_OK, verbs->Clone(clone.Receive()));
    EXPECT_EQ(S_OK, clone->Skip(1));
    EXPECT_EQ(S_FALSE, clone->Skip(1));
}

TEST_F(ControlTest, PropertiesVerbUsesTheContainersFrameFirst) {
    m_container.habits.hasPropertyFrame = true;
    m_container.Embed(m_control.Get());
    EXPECT_EQ(S_OK, m_container.DoVerb(OLEIVERB_PROPERTIES));
    EXPECT_TRUE(m_container.WasCalled("ShowPropertyFrame"));
    m_container.ForgetCalls();
    EXPECT_EQ(S_OK, m_container.DoVerb(1)) << "the same verb under its own number";
    EXPECT_TRUE(m_container.WasCalled("ShowPropertyFrame"));
    m_container.Remove();
}

TEST_F(ControlTest, UnknownVerbsAreAnsweredAsDocumented) {
    m_container.Embed(m_control.Get());
    EXPECT_EQ(E_NOTIMPL, m_container.DoVerb(-77));
    EXPECT_FALSE(m_container.ControlWindow());
    EXPECT_EQ(OLEOBJ_S_INVALIDVERB, m_container.DoVerb(55)) << "stands for the primary verb";
    EXPECT_TRUE(m_container.ControlWindow());
    m_container.Remove();
}

TEST_F(ControlTest, SiteIsGivenBackAndReleased) {
    EXPECT_EQ(S_OK, m_object->SetClientSite(&m_container));
    ComPtr<IOleClientSite> site;
    EXPECT_EQ(S_OK, m_object->GetClientSite(site.Receive()));
    EXPECT_EQ(static_cast<IOleClientSite*>(&m_container), site.Get());
    site.Reset();
    EXPECT_EQ(S_OK, m_object->SetClientSite(nullptr));
    EXPECT_EQ(1, m_container.References());
    EXPECT_EQ(S_OK, m_object->GetClientSite(site.Receive()));
    EXPECT_FALSE(site);
}

TEST_F(ControlTest, CloseSavesWhatChangedAndTellsTheSinks) {
    MockSink sink;
    DWORD connection = 0;
    ASSERT_EQ(S_OK, m_object->Advise(&sink, &connection));
    m_object->SetClientSite(&m_container);
    EXPECT_EQ(S_OK, m_object->Close(OLECLOSE_SAVEIFDIRTY));
    EXPECT_FALSE(m_container.WasCalled("SaveObject")) << "nothing changed";
    CTestControl::last->SetModifiedFlag();
    EXPECT_EQ(S_OK, m_object->Close(OLECLOSE_NOSAVE));
    EXPECT_FALSE(m_container.WasCalled("SaveObject"));
    EXPECT_EQ(S_OK, m_object->Close(OLECLOSE_SAVEIFDIRTY));
    EXPECT_TRUE(m_container.WasCalled("SaveObject"));
    EXPECT_EQ(std::vector<std::string>(3, "OnClose"), sink.calls);
    EXPECT_EQ(S_OK, m_object->Unadvise(connection));
    EXPECT_EQ(OLE_E_NOCONNECTION, m_object->Unadvise(connection));
    EXPECT_EQ(1, sink.References());
    m_object->SetClientSite(nullptr);
}

TEST_F(ControlTest, IsAHundredByFiftyPixelsUnlessItSaysOtherwise) {
    class PlainControl : public COleControl {
        HRESULT GetClassID(LPCLSID) override { return E_FAIL; }
        UINT GetUserTypeNameID() override { return 0; }
        DWORD GetMiscStatus() override { return 0; }
    };
    auto* plain = new PlainControl;
    SIZEL extent{};
    EXPECT_EQ(S_OK, common::Query<IOleObject>(plain->GetIDispatch(FALSE), IID_IOleObject)
                        ->GetExtent(DVASPECT_CONTENT, &extent));
    const SIZE pixels = common::HimetricToPixels(extent);
    EXPECT_EQ(100, pixels.cx);
    EXPECT_EQ(50, pixels.cy);
    plain->InternalRelease();
}

TEST_F(ControlTest, AWindowThatItMadeItselfGoesBeforeIt) {
    ComPtr<IUnknown> control = CreateControl();
    CTestControl& made = *CTestControl::last;
    ASSERT_TRUE(made.CreateEx(0, L"STATIC", nullptr, WS_POPUP, 0, 0, 9, 9, nullptr, nullptr));
    bool hadWindow = true;
    made.onEnd = [&hadWindow, window = made.m_hWnd] { hadWindow = ::IsWindow(window); };
    control.Reset();
    EXPECT_FALSE(hadWindow);
}

TEST_F(ControlTest, AmbientPropertiesAreOfTheTypeThatIsAsked) {
    m_object->SetClientSite(&m_container);
    CTestControl& control = *CTestControl::last;
    BOOL flag = FALSE;
    EXPECT_FALSE(control.GetAmbientProperty(DISPID_AMBIENT_USERMODE, VT_BOOL, &flag)) << "there is none";
    SetAmbient(DISPID_AMBIENT_USERMODE, VT_BOOL, VARIANT_TRUE);
    EXPECT_TRUE(control.GetAmbientProperty(DISPID_AMBIENT_USERMODE, VT_BOOL, &flag));
    EXPECT_EQ(TRUE, flag);
    SetAmbient(DISPID_AMBIENT_USERMODE, VT_BOOL, VARIANT_FALSE);
    EXPECT_TRUE(control.GetAmbientProperty(DISPID_AMBIENT_USERMODE, VT_BOOL, &flag));
    EXPECT_EQ(FALSE, flag);
    SetAmbient(DISPID_AMBIENT_LOCALEID, VT_I4, 1031);
    long locale = 0;
    EXPECT_TRUE(control.GetAmbientProperty(DISPID_AMBIENT_LOCALEID, VT_I4, &locale));
    EXPECT_EQ(1031, locale);
    EXPECT_EQ(1031U, control.AmbientLocaleID());
    CString text;
    EXPECT_TRUE(control.GetAmbientProperty(DISPID_AMBIENT_LOCALEID, VT_BSTR, &text));
    EXPECT_EQ(CString(L"1031"), text);
    double real = 0;
    EXPECT_FALSE(control.GetAmbientProperty(DISPID_AMBIENT_LOCALEID, VT_R8, &real));
    EXPECT_EQ(0, real);
    m_object->SetClientSite(nullptr);
}

TEST_F(ControlTest, AmbientColourIsTheContainersOrTheWindowsColour) {
    constexpr OLE_COLOR kWindow = 0x80000000U | COLOR_WINDOW;
    EXPECT_EQ(kWindow, CTestControl::last->AmbientBackColor()) << "no site";
    m_object->SetClientSite(&m_container);
    EXPECT_EQ(kWindow, CTestControl::last->AmbientBackColor()) << "no such ambient property";
    SetAmbient(DISPID_AMBIENT_BACKCOLOR, VT_I4, 0x00123456);
    EXPECT_EQ(0x123456U, CTestControl::last->AmbientBackColor());
    SetAmbient(DISPID_AMBIENT_BACKCOLOR, VT_UI4, static_cast<long>(0x80000000U | COLOR_HIGHLIGHT));
    EXPECT_EQ(0x80000000U | COLOR_HIGHLIGHT, CTestControl::last->AmbientBackColor());
    SetAmbient(DISPID_AMBIENT_BACKCOLOR, VT_I4, static_cast<long>(0x80000000U | COLOR_BTNFACE));
    EXPECT_EQ(0x80000000U | COLOR_BTNFACE, CTestControl::last->AmbientBackColor());
    EXPECT_EQ(::GetSysColor(COLOR_BTNFACE),
              CTestControl::last->TranslateColor(CTestControl::last->AmbientBackColor()));
    SetAmbient(DISPID_AMBIENT_BACKCOLOR, VT_I4, static_cast<long>(0x800000FFU));
    EXPECT_EQ(kWindow, CTestControl::last->AmbientBackColor()) << "no colour at all";
    EXPECT_EQ(RGB(0, 0, 0), CTestControl::last->TranslateColor(0x800000FFU)) << "nor is its translation";
    const common::Bstr text(L"blue");
    m_container.ambients[DISPID_AMBIENT_BACKCOLOR].vt = VT_BSTR;
    m_container.ambients[DISPID_AMBIENT_BACKCOLOR].bstrVal = text.Get();
    EXPECT_EQ(kWindow, CTestControl::last->AmbientBackColor()) << "a font or a word";
    m_container.ambients[DISPID_AMBIENT_DISPLAYNAME] = m_container.ambients[DISPID_AMBIENT_BACKCOLOR];
    EXPECT_EQ(CString(L"blue"), CTestControl::last->AmbientDisplayName());
    EXPECT_EQ(0U, CTestControl::last->AmbientLocaleID());
    m_object->SetClientSite(nullptr);
    EXPECT_TRUE(CTestControl::last->AmbientDisplayName().IsEmpty());
}

TEST_F(ControlTest, NamesItsPages) {
    CAUUID pages{};
    ASSERT_EQ(S_OK, m_control.As<ISpecifyPropertyPages>(IID_ISpecifyPropertyPages)->GetPages(&pages));
    ASSERT_EQ(1U, pages.cElems);
    EXPECT_EQ(CTestPage::guid, pages.pElems[0]);
    ::CoTaskMemFree(pages.pElems);
}

TEST_F(ControlTest, WhatAControlDoesNotHaveIsAnsweredAsDocumented) {
    ComPtr<IMoniker> moniker;
    EXPECT_EQ(E_NOTIMPL,
              m_object->GetMoniker(OLEGETMONIKER_ONLYIFTHERE, OLEWHICHMK_OBJFULL, moniker.Receive()));
    EXPECT_EQ(E_NOTIMPL, m_object->SetMoniker(OLEWHICHMK_OBJFULL, nullptr));
    EXPECT_EQ(E_NOTIMPL, m_object->InitFromData(nullptr, FALSE, 0));
    EXPECT_EQ(E_NOTIMPL, m_object->SetColorScheme(nullptr));
    EXPECT_EQ(S_OK, m_object->SetHostNames(L"host", nullptr));
    EXPECT_EQ(S_OK, m_object->Update());
    EXPECT_EQ(S_OK, m_object->IsUpToDate());
    CONTROLINFO info{};
    info.cb = sizeof(info);
    EXPECT_EQ(S_OK, m_control.As<IOleControl>(IID_IOleControl)->GetControlInfo(&info));
    EXPECT_EQ(0, info.cAccel);
}

} // namespace
