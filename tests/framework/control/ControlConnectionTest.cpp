// Sinks of a control: events, connection points, quick activation.
#include "ControlObjectTest.h"

namespace {

using ControlConnectionTest = ControlObjectTest;

TEST_F(ControlConnectionTest, EventsReachEverySinkOfTheEventInterface) {
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
    EXPECT_EQ(S_OK, control->FreezeEvents(TRUE));
    EXPECT_EQ(S_OK, control->FreezeEvents(FALSE));
    EXPECT_EQ(S_OK, control->FreezeEvents(FALSE));
    EXPECT_EQ((std::vector<bool>{true, true, true, false}), CTestControl::last->freezes)
        << "until the last is undone";
    EXPECT_EQ(S_OK, point->Unadvise(first));
    EXPECT_EQ(CONNECT_E_NOCONNECTION, point->Unadvise(first));
    CTestControl::last->FireRenamed(L"thawed", 1);
    EXPECT_EQ(1U, typed.calls.size());
    EXPECT_EQ(2U, plain.calls.size());
    EXPECT_EQ(S_OK, point->Unadvise(second));
    EXPECT_EQ(1, typed.References());
}

TEST_F(ControlConnectionTest, SinkMayDisconnectAndReleaseInsideAnEvent) {
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

TEST_F(ControlConnectionTest, ConnectionPointsAreEnumeratedAndKnowTheirContainer) {
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

TEST_F(ControlConnectionTest, QuickActivationDoesItAllAtOnce) {
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

} // namespace
