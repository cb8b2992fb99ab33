#include "ViewObjectPart.h"

#include "control/ControlParts.h"

#include "common/Himetric.h"
#include <algorithm>

namespace framework {

namespace {

/// Wraps a device context for one drawing and restores its state afterwards.
class BorrowedDC {
public:
    explicit BorrowedDC(HDC dc) noexcept : m_saved(::SaveDC(dc)) { m_dc.m_hDC = dc; }
    ~BorrowedDC() {
        const HDC dc = std::exchange(m_dc.m_hDC, nullptr);
        ::RestoreDC(dc, m_saved);
    }
    BorrowedDC(const BorrowedDC&) = delete;
    BorrowedDC& operator=(const BorrowedDC&) = delete;

    CDC* Get() noexcept { return &m_dc; }

private:
    CDC m_dc;
    int m_saved;
};

bool IsMetafile(HDC dc) noexcept {
    const DWORD type = ::GetObjectType(dc);
    return type == OBJ_METADC || type == OBJ_ENHMETADC;
}

/// S_OK for an aspect that the control draws. Documented for the content is index -1 alone, but common
/// containers pass 0 and never paint again after a failure.
HRESULT CheckAspect(DWORD aspect, LONG index) noexcept {
    if (aspect == DVASPECT_CONTENT) {
        return S_OK;
    }
    if (aspect != DVASPECT_OPAQUE) {
        return DV_E_DVASPECT;
    }
    return index == -1 ? S_OK : DV_E_LINDEX;
}

} // namespace

void ViewObjectPart::NotifyChange() {
    const common::ComPtr<IAdviseSink> sink = m_sink.Copy();
    if (!sink || !(m_aspects & DVASPECT_CONTENT)) {
        return;
    }
    if (m_flags & ADVF_ONLYONCE) {
        m_sink.Reset();
    }
    sink->OnViewChange(DVASPECT_CONTENT, -1);
}

STDMETHODIMP ViewObjectPart::Draw(DWORD aspect, LONG index, void*, DVTARGETDEVICE*, HDC, HDC dc,
                                  LPCRECTL bounds, LPCRECTL, BOOL(STDMETHODCALLTYPE*)(ULONG_PTR), ULONG_PTR) {
    return Guard([&]() -> HRESULT {
        const HRESULT wanted = CheckAspect(aspect, index);
        if (FAILED(wanted)) {
            return wanted;
        }
        if (!dc || !bounds) {
            return E_INVALIDARG;
        }
        return DrawInto(dc, {bounds->left, bounds->top, bounds->right, bounds->bottom});
    });
}

HRESULT ViewObjectPart::DrawInto(HDC dc, const RECT& bounds) {
    BorrowedDC borrowed(dc);
    CRect area(bounds);
    if (IsMetafile(dc)) {
        m_control.OnDrawMetafile(borrowed.Get(), area);
        return S_OK;
    }
    if (::GetMapMode(dc) != MM_TEXT) { // controls draw in pixels
        ::LPtoDP(dc, reinterpret_cast<POINT*>(&area), 2);
        ::SetMapMode(dc, MM_TEXT);
        ::SetWindowOrgEx(dc, 0, 0, nullptr);
        ::SetViewportOrgEx(dc, 0, 0, nullptr);
        area = CRect(std::min(area.left, area.right), std::min(area.top, area.bottom),
                     std::max(area.left, area.right), std::max(area.top, area.bottom));
    }
    m_control.OnDraw(borrowed.Get(), area, area);
    return S_OK;
}

STDMETHODIMP ViewObjectPart::GetColorSet(DWORD aspect, LONG index, void*, DVTARGETDEVICE* target,
                                         HDC targetDC, LOGPALETTE** colours) {
    return Guard(colours, [&]() -> HRESULT {
        const HRESULT wanted = CheckAspect(aspect, index);
        if (FAILED(wanted)) {
            return wanted;
        }
        return m_control.OnGetColorSet(target, targetDC, colours) ? S_OK : S_FALSE;
    });
}

STDMETHODIMP ViewObjectPart::Freeze(DWORD, LONG, void*, DWORD* key) {
    if (key) {
        *key = 0;
    }
    return E_NOTIMPL;
}

STDMETHODIMP ViewObjectPart::Unfreeze(DWORD) {
    return OLE_E_NOCONNECTION; // Freeze never returned a key
}

STDMETHODIMP ViewObjectPart::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
    return Guard([&]() -> HRESULT {
        m_aspects = aspects;
        m_flags = flags;
        m_sink = common::ComPtr<IAdviseSink>(sink);
        if (flags & ADVF_PRIMEFIRST) {
            NotifyChange();
        }
        return S_OK;
    });
}

STDMETHODIMP ViewObjectPart::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) {
    DWORD unwanted = 0; // each result may be left out
    IAdviseSink* unwantedSink = nullptr;
    DWORD& wantedAspects = aspects ? *aspects : unwanted;
    DWORD& wantedFlags = flags ? *flags : unwanted;
    wantedAspects = wantedFlags = 0;
    return Guard(sink ? sink : &unwantedSink, [&]() -> HRESULT {
        if (m_sink) {
            wantedAspects = m_aspects;
            wantedFlags = m_flags;
        }
        if (sink) {
            *sink = m_sink.Copy().Detach();
        }
        return S_OK;
    });
}

STDMETHODIMP ViewObjectPart::GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* target, LPSIZEL size) {
    return Guard(size, [&]() -> HRESULT {
        return m_control.OnGetViewExtent(aspect, index, target, size) ? S_OK : DV_E_DVASPECT;
    });
}

STDMETHODIMP ViewObjectPart::GetRect(DWORD aspect, LPRECTL rect) {
    return Guard(rect, [&]() -> HRESULT {
        SIZEL size{};
        if (!m_control.OnGetViewExtent(aspect, -1, nullptr, &size)) {
            return DV_E_DVASPECT;
        }
        rect->right = size.cx;
        rect->bottom = size.cy;
        return S_OK;
    });
}

STDMETHODIMP ViewObjectPart::GetViewStatus(DWORD* status) {
    return Guard(status, [&]() -> HRESULT {
        *status = m_control.OnGetViewStatus();
        return S_OK;
    });
}

STDMETHODIMP ViewObjectPart::QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG, DWORD* hit) {
    if (!bounds || !hit) {
        return E_POINTER;
    }
    *hit = ::PtInRect(bounds, point) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return CheckAspect(aspect, -1);
}

STDMETHODIMP ViewObjectPart::QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rect, LONG, DWORD* hit) {
    if (!bounds || !rect || !hit) {
        return E_POINTER;
    }
    RECT overlap{};
    *hit = ::IntersectRect(&overlap, bounds, rect) ? HITRESULT_HIT : HITRESULT_OUTSIDE;
    return CheckAspect(aspect, -1);
}

STDMETHODIMP ViewObjectPart::GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* target, HDC targetDC,
                                              DVEXTENTINFO* extentInfo, LPSIZEL size) {
    return Guard(size, [&]() -> HRESULT {
        return m_control.OnGetNaturalExtent(aspect, index, target, targetDC, extentInfo, size) ? S_OK
                                                                                               : E_NOTIMPL;
    });
}

} // namespace framework
