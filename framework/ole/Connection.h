// Connection points: where an object's clients hand in the sinks that it calls.
//
// Covered: IConnectionPointContainer and IConnectionPoint with any number of sinks, both enumerators. A
// caller of the sinks works on a copy of the list (Sinks), so that a sink may disconnect or release anything
// while it is called.
#pragma once

#include "OleTarget.h"

#include <initializer_list>
#include <vector>

namespace framework {

/// One connection point. It is an object of its own to its clients, and keeps the object it belongs to alive.
class ConnectionPoint final : public IConnectionPoint {
public:
    /// With `orDispatch`, a sink that does not know the interface may answer IDispatch instead.
    ConnectionPoint(CCmdTarget& owner, IConnectionPointContainer& container, REFIID iid,
                    bool orDispatch) noexcept
        : m_owner(owner), m_container(container), m_iid(iid), m_orDispatch(orDispatch) {}
    ConnectionPoint(const ConnectionPoint&) = delete;
    ConnectionPoint& operator=(const ConnectionPoint&) = delete;

    [[nodiscard]] REFIID Interface() const noexcept { return m_iid; }
    void SetInterface(REFIID iid) noexcept { m_iid = iid; }

    /// References to the sinks connected now; Sink is the point's interface, or IDispatch.
    template <class Sink>
    [[nodiscard]] std::vector<common::ComPtr<Sink>> Sinks() const {
        std::vector<common::ComPtr<Sink>> sinks;
        sinks.reserve(m_connections.size());
        for (const Connection& connection : m_connections) {
            sinks.emplace_back(static_cast<Sink*>(connection.sink.Get()));
        }
        return sinks;
    }
    /// Drops all sinks.
    void Clear() noexcept;

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return m_owner.ExternalAddRef(); }
    STDMETHODIMP_(ULONG) Release() override { return m_owner.ExternalRelease(); }
    STDMETHODIMP GetConnectionInterface(IID* iid) override;
    STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override;
    STDMETHODIMP Advise(IUnknown* sink, DWORD* cookie) override;
    STDMETHODIMP Unadvise(DWORD cookie) override;
    STDMETHODIMP EnumConnections(IEnumConnections** connections) override;

private:
    struct Connection {
        DWORD cookie;
        common::ComPtr<IUnknown> sink; ///< the sink's interface, queried
    };

    CCmdTarget& m_owner;
    IConnectionPointContainer& m_container;
    IID m_iid;
    bool m_orDispatch;
    DWORD m_lastCookie = 0;
    std::vector<Connection> m_connections;
};

/// An object's list of connection points.
class ConnectionPointContainerPart final : public OlePart<IConnectionPointContainer> {
public:
    explicit ConnectionPointContainerPart(CCmdTarget& owner) noexcept : OlePart(owner) {}

    /// The points must live as long as this object.
    void Add(ConnectionPoint& point) { m_points.push_back(&point); }

    STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
    STDMETHODIMP FindConnectionPoint(REFIID iid, IConnectionPoint** point) override;

private:
    std::vector<ConnectionPoint*> m_points;
};

} // namespace framework
