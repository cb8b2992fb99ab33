#include "Connection.h"

#include "OleEnum.h"

namespace framework {

namespace {

struct PointPolicy {
    static bool Copy(const common::ComPtr<IConnectionPoint>& from, IConnectionPoint*& to) noexcept {
        to = from.Copy().Detach();
        return true;
    }
    static void Clean(IConnectionPoint* item) noexcept { item->Release(); }
    static common::ComPtr<IConnectionPoint> Duplicate(const common::ComPtr<IConnectionPoint>& item) noexcept {
        return item.Copy();
    }
};

struct KeptConnection {
    DWORD cookie;
    common::ComPtr<IUnknown> sink;
};

struct ConnectionPolicy {
    static bool Copy(const KeptConnection& from, CONNECTDATA& to) noexcept {
        to = {from.sink.Copy().Detach(), from.cookie};
        return true;
    }
    static void Clean(CONNECTDATA& item) noexcept { item.pUnk->Release(); }
    static KeptConnection Duplicate(const KeptConnection& item) noexcept {
        return {item.cookie, item.sink.Copy()};
    }
};

using EnumPoints = OleEnum<IEnumConnectionPoints, IID_IEnumConnectionPoints, IConnectionPoint*,
                           common::ComPtr<IConnectionPoint>, PointPolicy>;
using EnumConnectionsOf =
    OleEnum<IEnumConnections, IID_IEnumConnections, CONNECTDATA, KeptConnection, ConnectionPolicy>;

} // namespace

void ConnectionPoint::Clear() noexcept {
    const std::vector<Connection> dropped = std::move(m_connections);
    m_connections.clear();
}

STDMETHODIMP ConnectionPoint::QueryInterface(REFIID iid, void** object) {
    if (!object) {
        return E_POINTER;
    }
    *object = iid == IID_IUnknown || iid == IID_IConnectionPoint ? this : nullptr;
    if (!*object) {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionInterface(IID* iid) {
    if (!iid) {
        return E_POINTER;
    }
    *iid = m_iid;
    return S_OK;
}

STDMETHODIMP ConnectionPoint::GetConnectionPointContainer(IConnectionPointContainer** container) {
    if (!container) {
        return E_POINTER;
    }
    *container = &m_container;
    m_container.AddRef();
    return S_OK;
}

STDMETHODIMP ConnectionPoint::Advise(IUnknown* sink, DWORD* cookie) {
    return OleGuard(m_owner, cookie, [&]() -> HRESULT {
        if (!sink) {
            return E_POINTER;
        }
        common::ComPtr<IUnknown> connected = common::Query<IUnknown>(sink, m_iid);
        if (!connected && m_orDispatch) {
            connected = common::Query<IUnknown>(sink, IID_IDispatch);
        }
        if (!connected) {
            return CONNECT_E_CANNOTCONNECT;
        }
        m_connections.push_back({++m_lastCookie, std::move(connected)});
        *cookie = m_lastCookie;
        return S_OK;
    });
}

STDMETHODIMP ConnectionPoint::Unadvise(DWORD cookie) {
    return OleGuard(m_owner, [&]() -> HRESULT {
        for (auto place = m_connections.begin(); place != m_connections.end(); ++place) {
            if (place->cookie == cookie) {
                const common::ComPtr<IUnknown> dropped =
                    std::move(place->sink); // released after the list is in order
                m_connections.erase(place);
                return S_OK;
            }
        }
        return CONNECT_E_NOCONNECTION;
    });
}

STDMETHODIMP ConnectionPoint::EnumConnections(IEnumConnections** connections) {
    return OleGuard(m_owner, connections, [&]() -> HRESULT {
        std::vector<KeptConnection> kept;
        for (const Connection& connection : m_connections) {
            kept.push_back({connection.cookie, connection.sink.Copy()});
        }
        *connections = new EnumConnectionsOf(std::move(kept));
        return S_OK;
    });
}

STDMETHODIMP ConnectionPointContainerPart::EnumConnectionPoints(IEnumConnectionPoints** points) {
    return Guard(points, [&]() -> HRESULT {
        std::vector<common::ComPtr<IConnectionPoint>> kept;
        for (ConnectionPoint* point : m_points) {
            kept.emplace_back(point);
        }
        *points = new EnumPoints(std::move(kept));
        return S_OK;
    });
}

STDMETHODIMP ConnectionPointContainerPart::FindConnectionPoint(REFIID iid, IConnectionPoint** point) {
    return Guard(point, [&]() -> HRESULT {
        for (ConnectionPoint* candidate : m_points) {
            if (candidate->Interface() == iid) {
                candidate->AddRef();
                *point = candidate;
                return S_OK;
            }
        }
        return CONNECT_E_NOCONNECTION;
    });
}

} // namespace framework
