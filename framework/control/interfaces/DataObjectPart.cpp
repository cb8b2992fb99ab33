#include "DataObjectPart.h"

#include "common/Himetric.h"
#include "control/ControlParts.h"
#include "ole/OleEnum.h"

namespace framework {

namespace {

constexpr FORMATETC kEnhanced = {CF_ENHMETAFILE, nullptr, DVASPECT_CONTENT, -1, TYMED_ENHMF};
constexpr FORMATETC kMetafile = {CF_METAFILEPICT, nullptr, DVASPECT_CONTENT, -1, TYMED_MFPICT};

struct FormatPolicy {
    static bool Copy(const FORMATETC& from, FORMATETC& to) noexcept {
        to = from;
        return true;
    }
    static void Clean(FORMATETC&) noexcept {}
    static FORMATETC Duplicate(const FORMATETC& item) noexcept { return item; }
};

using EnumFormats = OleEnum<IEnumFORMATETC, IID_IEnumFORMATETC, FORMATETC, FORMATETC, FormatPolicy>;

/// S_OK for a format that the control renders, else the reason as GetData returns it.
HRESULT Check(const FORMATETC& wanted) noexcept {
    const FORMATETC& offered = wanted.cfFormat == CF_ENHMETAFILE ? kEnhanced : kMetafile;
    if (wanted.cfFormat != offered.cfFormat) {
        return DV_E_FORMATETC;
    }
    if (wanted.dwAspect != offered.dwAspect) {
        return DV_E_DVASPECT;
    }
    if (wanted.lindex != offered.lindex) {
        return DV_E_LINDEX;
    }
    return wanted.tymed & offered.tymed ? S_OK : DV_E_TYMED;
}

/// Draws a control into a metafile that is being recorded.
void Record(COleControl& control, HDC metafile, SIZE pixels) {
    CDC dc;
    dc.m_hDC = metafile;
    control.OnDrawMetafile(&dc, CRect(0, 0, pixels.cx, pixels.cy));
    dc.m_hDC = nullptr; // the recorder's, not this object's
}

} // namespace

void DataObjectPart::NotifyChange() {
    const common::ComPtr<IDataAdviseHolder> holder = m_holder.Copy();
    if (holder) {
        holder->SendOnDataChange(this, 0, 0);
    }
}

STDMETHODIMP DataObjectPart::GetData(FORMATETC* format, STGMEDIUM* medium) {
    return Guard(medium, [&]() -> HRESULT {
        if (!format) {
            return E_POINTER;
        }
        const HRESULT given = Check(*format);
        if (FAILED(given)) {
            return given;
        }
        return format->cfFormat == CF_ENHMETAFILE ? RenderEnhanced(*medium) : RenderMetafile(*medium);
    });
}

HRESULT DataObjectPart::RenderEnhanced(STGMEDIUM& medium) {
    const SIZE extent = m_parts.extent;
    const RECT frame = {0, 0, extent.cx, extent.cy};
    const HDC recorder = ::CreateEnhMetaFile(nullptr, nullptr, &frame, nullptr);
    if (!recorder) {
        return E_OUTOFMEMORY;
    }
    const SIZE pixels = common::HimetricToPixels(extent);
    Record(m_control, recorder, pixels);
    medium.tymed = TYMED_ENHMF;
    medium.hEnhMetaFile = ::CloseEnhMetaFile(recorder);
    return medium.hEnhMetaFile ? S_OK : E_OUTOFMEMORY;
}

HRESULT DataObjectPart::RenderMetafile(STGMEDIUM& medium) {
    const SIZE extent = m_parts.extent;
    const SIZE pixels = common::HimetricToPixels(extent);
    const HDC recorder = ::CreateMetaFile(nullptr);
    if (!recorder) {
        return E_OUTOFMEMORY;
    }
    ::SetMapMode(recorder, MM_ANISOTROPIC);
    ::SetWindowOrgEx(recorder, 0, 0, nullptr);
    ::SetWindowExtEx(recorder, pixels.cx, pixels.cy, nullptr);
    Record(m_control, recorder, pixels);
    const HMETAFILE metafile = ::CloseMetaFile(recorder);
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, sizeof(METAFILEPICT));
    auto* picture = static_cast<METAFILEPICT*>(memory ? ::GlobalLock(memory) : nullptr);
    if (!metafile || !picture) {
        ::DeleteMetaFile(metafile);
        ::GlobalFree(memory);
        return E_OUTOFMEMORY;
    }
    *picture = {MM_ANISOTROPIC, extent.cx, extent.cy, metafile};
    ::GlobalUnlock(memory);
    medium.tymed = TYMED_MFPICT;
    medium.hMetaFilePict = memory;
    return S_OK;
}

STDMETHODIMP DataObjectPart::GetDataHere(FORMATETC*, STGMEDIUM*) {
    return DV_E_TYMED; // a metafile is never rendered into the caller's medium
}

STDMETHODIMP DataObjectPart::QueryGetData(FORMATETC* format) {
    return format ? Check(*format) : E_POINTER;
}

STDMETHODIMP DataObjectPart::GetCanonicalFormatEtc(FORMATETC* in, FORMATETC* out) {
    if (!in || !out) {
        return E_POINTER;
    }
    *out = *in;
    out->ptd = nullptr;
    return DATA_S_SAMEFORMATETC;
}

STDMETHODIMP DataObjectPart::SetData(FORMATETC*, STGMEDIUM*, BOOL) {
    return E_NOTIMPL;
}

STDMETHODIMP DataObjectPart::EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) {
    return Guard(formats, [&]() -> HRESULT {
        if (direction != DATADIR_GET) {
            return E_NOTIMPL;
        }
        *formats = new EnumFormats({kEnhanced, kMetafile});
        return S_OK;
    });
}

HRESULT DataObjectPart::NeedHolder() {
    return m_holder ? S_OK : ::CreateDataAdviseHolder(m_holder.Receive());
}

STDMETHODIMP DataObjectPart::DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* connection) {
    return Guard(connection, [&]() -> HRESULT {
        if (!format || !sink) {
            return E_POINTER;
        }
        const HRESULT ready = NeedHolder();
        return SUCCEEDED(ready) ? m_holder->Advise(this, format, flags, sink, connection) : ready;
    });
}

STDMETHODIMP DataObjectPart::DUnadvise(DWORD connection) {
    return Guard([&] { return m_holder ? m_holder->Unadvise(connection) : OLE_E_NOCONNECTION; });
}

STDMETHODIMP DataObjectPart::EnumDAdvise(IEnumSTATDATA** advises) {
    return Guard(advises, [&]() -> HRESULT {
        const HRESULT ready = NeedHolder();
        return SUCCEEDED(ready) ? m_holder->EnumAdvise(advises) : ready;
    });
}

} // namespace framework
