#include "OleTestControl.h"

#include <OleTest.h>

namespace {

class ControlTest : public OleTest {
protected:
    void SetUp() override {
        OleTest::SetUp();
        m_control = CreateControl();
        m_object = m_control.As<IOleObject>(IID_IOleObject);
    }
    void TearDown() override {
        m_object.Reset();
        m_control.Reset();
        EXPECT_EQ(1, m_container.References());
        OleTest::TearDown();
    }
    ComPtr<IConnectionPoint> Point(REFIID iid) {
        ComPtr<IConnectionPoint> point;
        m_control.As<IConnectionPointContainer>(IID_IConnectionPointContainer)
            ->FindConnectionPoint(iid, point.Receive());
        return point;
    }
    void SetAmbient(DISPID id, VARTYPE type, long value) {
        VARIANT variant{};
        variant.vt = type;
        variant.lVal = value;
        m_container.ambients[id] = variant;
    }

    MockContainer m_container;
    ComPtr<IUnknown> m_control;
    ComPtr<IOleObject> m_object;
};

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
    EXPECT_EQ(::MulDiv(120, 2540, 96), extent.cx);
    EXPECT_EQ(::MulDiv(80, 2540, 96), extent.cy);
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

TEST_F(ControlTest, EventsReachEverySinkOfTheEventInterface) {
    MockSink typed(DIID__DTestEvents);
    MockSink plain;
    const ComPtr<IConnectionPoint> point = Point(DIID__DTestEvents);
    ASSERT_TRUE(point);
    DWORD first = 0;
    DWORD second = 0;
    ASSERT_EQ(S_OK, point->Advise(static_cast<IAdviseSink*>(&typed), &first));
    ASSERT_EQ(S_OK, point->Advise(static_cast<IAdviseSink*>(&plain), &second)) << "knows IDispatch only";
    CTestControl::last->FireRenamed(L"new", 4);
    const std::vector<std::wstring> expected = {L"new", L"4"};
    EXPECT_EQ(expected, typed.eventTexts);
    EXPECT_EQ(expected, plain.eventTexts);
    CTestControl::last->FireUnknown();
    EXPECT_EQ(1U, typed.calls.size()) << "an event that the map does not have is never fired";

    const ComPtr<IOleControl> control = m_control.As<IOleControl>(IID_IOleControl);
    EXPECT_EQ(S_OK, control->FreezeEvents(TRUE));
    CTestControl::last->FireRenamed(L"frozen", 1);
    EXPECT_EQ(1U, typed.calls.size());
    EXPECT_EQ(S_OK, control->FreezeEvents(FALSE));
    EXPECT_EQ(S_OK, point->Unadvise(first));
    EXPECT_EQ(CONNECT_E_NOCONNECTION, point->Unadvise(first));
    CTestControl::last->FireRenamed(L"thawed", 1);
    EXPECT_EQ(1U, typed.calls.size());
    EXPECT_EQ(2U, plain.calls.size());
    EXPECT_EQ(S_OK, point->Unadvise(second));
    EXPECT_EQ(1, typed.References());
}

TEST_F(ControlTest, SinkMayDisconnectAndReleaseInsideAnEvent) {
    MockSink sink(DIID__DTestEvents);
    struct Context {
        ComPtr<IOleObject>* object;
        ComPtr<IUnknown>* control;
        ComPtr<IConnectionPoint> point;
        DWORD cookie;
    } context{&m_object, &m_control, Point(DIID__DTestEvents), 0};
    ASSERT_EQ(S_OK, context.point->Advise(static_cast<IAdviseSink*>(&sink), &context.cookie));
    sink.context = &context;
    sink.onEvent = [](void* given) {
        auto* inner = static_cast<Context*>(given);
        inner->point->Unadvise(inner->cookie);
        inner->point.Reset();
        inner->object->Reset();
        inner->control->Reset(); // the last reference but the control's own
        EXPECT_NE(nullptr, CTestControl::last);
    };
    CTestControl::last->FireRenamed(L"last", 1);
    EXPECT_EQ(nullptr, CTestControl::last);
    EXPECT_EQ(1, sink.References());
}

TEST_F(ControlTest, ConnectionPointsAreEnumeratedAndKnowTheirContainer) {
    const ComPtr<IConnectionPointContainer> container =
        m_control.As<IConnectionPointContainer>(IID_IConnectionPointContainer);
    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(S_OK, container->EnumConnectionPoints(points.Receive()));
    IConnectionPoint* found[3] = {};
    ULONG count = 0;
    EXPECT_EQ(S_FALSE, points->Next(3, found, &count));
    ASSERT_EQ(2U, count);
    IID first{};
    IID second{};
    EXPECT_EQ(S_OK, found[0]->GetConnectionInterface(&first));
    EXPECT_EQ(S_OK, found[1]->GetConnectionInterface(&second));
    EXPECT_EQ(DIID__DTestEvents, first);
    EXPECT_EQ(IID_IPropertyNotifySink, second);
    ComPtr<IConnectionPointContainer> back;
    EXPECT_EQ(S_OK, found[0]->GetConnectionPointContainer(back.Receive()));
    EXPECT_EQ(container.Get(), back.Get());
    ComPtr<IUnknown> other;
    EXPECT_EQ(E_NOINTERFACE, found[0]->QueryInterface(IID_IOleObject, other.ReceiveVoid()))
        << "an object of its own";
    static_cast<void>(other.Detach());
    EXPECT_FALSE(Point(IID_IOleObject));
    found[0]->Release();
    found[1]->Release();

    MockSink sink;
    DWORD cookie = 0;
    const ComPtr<IConnectionPoint> point = Point(IID_IPropertyNotifySink);
    ASSERT_EQ(S_OK, point->Advise(static_cast<IAdviseSink*>(&sink), &cookie));
    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(S_OK, point->EnumConnections(connections.Receive()));
    EXPECT_EQ(S_OK, point->Unadvise(cookie)) << "inside an enumeration";
    CONNECTDATA data{};
    ASSERT_EQ(S_OK, connections->Next(1, &data, nullptr));
    EXPECT_EQ(cookie, data.dwCookie);
    data.pUnk->Release();
    connections.Reset();
    EXPECT_EQ(1, sink.References());
    EXPECT_EQ(E_POINTER, point->Advise(nullptr, &cookie));
    EXPECT_EQ(CONNECT_E_CANNOTCONNECT, point->Advise(m_control.Get(), &cookie));
}

TEST_F(ControlTest, NamesItsPages) {
    CAUUID pages{};
    ASSERT_EQ(S_OK, m_control.As<ISpecifyPropertyPages>(IID_ISpecifyPropertyPages)->GetPages(&pages));
    ASSERT_EQ(1U, pages.cElems);
    EXPECT_EQ(CTestPage::guid, pages.pElems[0]);
    ::CoTaskMemFree(pages.pElems);
}

TEST_F(ControlTest, QuickActivationDoesItAllAtOnce) {
    MockSink advise;
    MockSink notify;
    MockSink events(DIID__DTestEvents);
    QACONTAINER container{};
    container.cbSize = sizeof(container);
    container.pClientSite = &m_container;
    container.pAdviseSink = reinterpret_cast<IAdviseSinkEx*>(static_cast<IAdviseSink*>(&advise));
    container.pPropertyNotifySink = &notify;
    container.pUnkEventSink = static_cast<IAdviseSink*>(&events);
    QACONTROL control{};
    control.cbSize = sizeof(control);
    const ComPtr<IQuickActivate> quick = m_control.As<IQuickActivate>(IID_IQuickActivate);
    ASSERT_EQ(S_OK, quick->QuickActivate(&container, &control));
    EXPECT_EQ(sizeof(control), control.cbSize);
    EXPECT_EQ(static_cast<DWORD>(OLEMISC_INSIDEOUT | OLEMISC_ACTIVATEWHENVISIBLE), control.dwMiscStatus);
    EXPECT_EQ(static_cast<DWORD>(VIEWSTATUS_OPAQUE), control.dwViewStatus);
    EXPECT_NE(0U, control.dwEventCookie);
    EXPECT_NE(0U, control.dwPropNotifyCookie);
    CTestControl::last->FireRenamed(L"x", 1);
    EXPECT_EQ(1U, events.calls.size());
    CTestControl::last->InvalidateControl();
    EXPECT_EQ(1U, advise.calls.size());
    SIZEL extent = {100, 200};
    EXPECT_EQ(S_OK, quick->SetContentExtent(&extent));
    EXPECT_EQ(S_OK, quick->GetContentExtent(&extent));
    EXPECT_EQ(200, extent.cy);
    m_object->SetClientSite(nullptr);
    m_control.As<IViewObject>(IID_IViewObject)->SetAdvise(DVASPECT_CONTENT, 0, nullptr);
    Point(DIID__DTestEvents)->Unadvise(control.dwEventCookie);
    Point(IID_IPropertyNotifySink)->Unadvise(control.dwPropNotifyCookie);
    EXPECT_EQ(1, advise.References());
    EXPECT_EQ(1, notify.References());
    EXPECT_EQ(1, events.References());
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
