// Sinks at the control's two connection points.
#include "ControlObject.h"
#include "MockContainer.h"
#include "PackageBuilder.h"

namespace {

class EventTest : public ControlObjectTest {
protected:
    EventTest() : control(CreateControl()) {}

    void TearDown() override {
        control.Reset();
        ControlObjectTest::TearDown();
    }

    ComPtr<IConnectionPoint> Point(REFIID iid) {
        ComPtr<IConnectionPoint> point;
        As<IConnectionPointContainer>(control.Get(), IID_IConnectionPointContainer)
            ->FindConnectionPoint(iid, &point);
        return point;
    }

    ComPtr<IUnknown> control;
};

} // namespace

TEST_F(EventTest, HasAPointForEventsAndOneForChangedProperties) {
    const auto container = As<IConnectionPointContainer>(control.Get(), IID_IConnectionPointContainer);
    ComPtr<IEnumConnectionPoints> points;
    ASSERT_EQ(S_OK, container->EnumConnectionPoints(&points));
    std::vector<IID> found;
    ComPtr<IConnectionPoint> point;
    while (points->Next(1, &point, nullptr) == S_OK) {
        IID iid = {};
        EXPECT_EQ(S_OK, point->GetConnectionInterface(&iid));
        found.push_back(iid);
        ComPtr<IConnectionPointContainer> owner;
        EXPECT_EQ(S_OK, point->GetConnectionPointContainer(&owner));
        EXPECT_EQ(container.Get(), owner.Get());
    }
    EXPECT_EQ((std::vector<IID>{kEventInterface, IID_IPropertyNotifySink}), found);
    EXPECT_EQ(CONNECT_E_NOCONNECTION, container->FindConnectionPoint(IID_IDispatch, &point));
    EXPECT_FALSE(Point(IID_IUnknown));
}

TEST_F(EventTest, ConnectsEnumeratesAndDisconnects) {
    MockSink first(kEventInterface);
    MockSink second(kEventInterface);
    const auto point = Point(kEventInterface);
    ASSERT_TRUE(point);
    DWORD cookies[2] = {};
    ASSERT_EQ(S_OK, point->Advise(static_cast<IDispatch*>(&first), &cookies[0]));
    ASSERT_EQ(S_OK, point->Advise(static_cast<IDispatch*>(&second), &cookies[1]));
    EXPECT_NE(cookies[0], cookies[1]);
    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(S_OK, point->EnumConnections(&connections));
    CONNECTDATA data[3] = {};
    ULONG count = 0;
    EXPECT_EQ(S_FALSE, connections->Next(3, data, &count));
    ASSERT_EQ(2U, count);
    for (ULONG i = 0; i < count; ++i) {
        EXPECT_EQ(cookies[i], data[i].dwCookie);
        data[i].pUnk->Release();
    }
    connections.Reset();
    EXPECT_EQ(S_OK, point->Unadvise(cookies[0]));
    EXPECT_EQ(CONNECT_E_NOCONNECTION, point->Unadvise(cookies[0]));
    EXPECT_EQ(1, first.References());
    EXPECT_EQ(S_OK, point->Unadvise(cookies[1]));
    EXPECT_EQ(1, second.References());
    EXPECT_EQ(E_POINTER, point->Advise(nullptr, &cookies[0]));
}

TEST_F(EventTest, EnumerationOutlivesItsConnectionsAndTheControl) {
    MockSink sink(kEventInterface);
    auto point = Point(kEventInterface);
    DWORD cookie = 0;
    ASSERT_EQ(S_OK, point->Advise(static_cast<IDispatch*>(&sink), &cookie));
    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(S_OK, point->EnumConnections(&connections));
    EXPECT_EQ(S_OK, point->Unadvise(cookie));
    point.Reset();
    control.Reset();
    CONNECTDATA data = {};
    ASSERT_EQ(S_OK, connections->Next(1, &data, nullptr)) << "the connections of the moment it was made";
    EXPECT_EQ(cookie, data.dwCookie);
    data.pUnk->Release();
    ComPtr<IEnumConnections> again;
    EXPECT_EQ(S_OK, connections->Clone(&again));
    EXPECT_EQ(S_FALSE, again->Next(1, &data, nullptr));
    connections.Reset();
    again.Reset();
    EXPECT_EQ(1, sink.References());
}

TEST_F(EventTest, ReleasedControlLetsItsSinksGo) {
    MockSink sink(kEventInterface);
    DWORD cookie = 0;
    ASSERT_EQ(S_OK, Point(kEventInterface)->Advise(static_cast<IDispatch*>(&sink), &cookie));
    control.Reset();
    EXPECT_EQ(1, sink.References());
}

TEST_F(EventTest, SinkThatReleasesTheControlInsideACallIsHarmless) {
    class Releasing final : public MockSink {
    public:
        using MockSink::MockSink;
        STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
            held.Reset(); // the last reference of the test goes while the control asks its sink
            return MockSink::QueryInterface(iid, object);
        }
        ComPtr<IUnknown> held;
    };
    Releasing sink(kEventInterface);
    sink.held.Swap(control);
    IConnectionPointContainer* container = nullptr;
    ASSERT_EQ(S_OK,
              sink.held->QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container)));
    ComPtr<IConnectionPoint> point;
    container->FindConnectionPoint(kEventInterface, &point);
    container->Release();
    DWORD cookie = 0;
    EXPECT_EQ(S_OK, point->Advise(static_cast<IDispatch*>(&sink), &cookie));
    point.Reset();
    EXPECT_EQ(1, sink.References()) << "the connection went with the control";
}

TEST_F(EventTest, ParameterLoadedIsNeverRaised) {
    const PackageBuilder package;
    MockContainer container;
    MockSink sink(kEventInterface);
    const auto point = Point(kEventInterface);
    DWORD cookie = 0;
    ASSERT_EQ(S_OK, point->Advise(static_cast<IDispatch*>(&sink), &cookie));
    const auto automation = Automation(control.Get());
    Value folder(package.Path());
    const auto everyMember = [&] {
        EXPECT_EQ(S_OK, Invoke(automation.Get(), kInputParameter, DISPATCH_PROPERTYPUT, {folder.Get()}));
        EXPECT_EQ(S_OK, Invoke(automation.Get(), kLoadFile, DISPATCH_METHOD, {folder.Get(), folder.Get()}));
        for (const DISPID member : {Member(kClearAllData), kClose, kAboutBox}) {
            EXPECT_EQ(S_OK, Invoke(automation.Get(), member, DISPATCH_METHOD));
        }
        Pump();
    };
    everyMember();
    container.Embed(control.Get());
    EXPECT_EQ(S_OK, container.DoVerb(OLEIVERB_UIACTIVATE));
    everyMember();
    container.Remove();
    everyMember();
    EXPECT_EQ(std::vector<std::string>{}, sink.calls);
    EXPECT_EQ(S_OK, point->Unadvise(cookie));
}
