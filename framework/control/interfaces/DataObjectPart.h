// IDataObject of a control: its picture for containers that want to keep one.
#pragma once

#include "ControlPart.h"

namespace framework {

/// Renders the picture as a metafile of either kind.
class DataObjectPart final : public ControlPart<IDataObject> {
public:
    using ControlPart::ControlPart;

    /// Notifies the advise sinks that the picture changed.
    void NotifyChange();
    /// Releases the sinks.
    void Clear() noexcept { m_holder.Reset(); }

    STDMETHODIMP GetData(FORMATETC* format, STGMEDIUM* medium) override;
    STDMETHODIMP GetDataHere(FORMATETC* format, STGMEDIUM* medium) override;
    STDMETHODIMP QueryGetData(FORMATETC* format) override;
    STDMETHODIMP GetCanonicalFormatEtc(FORMATETC* in, FORMATETC* out) override;
    STDMETHODIMP SetData(FORMATETC* format, STGMEDIUM* medium, BOOL release) override;
    STDMETHODIMP EnumFormatEtc(DWORD direction, IEnumFORMATETC** formats) override;
    STDMETHODIMP DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* connection) override;
    STDMETHODIMP DUnadvise(DWORD connection) override;
    STDMETHODIMP EnumDAdvise(IEnumSTATDATA** advises) override;

private:
    HRESULT RenderMetafile(STGMEDIUM& medium);
    HRESULT RenderEnhanced(STGMEDIUM& medium);
    HRESULT NeedHolder();

    common::ComPtr<IDataAdviseHolder> m_holder;
};

} // namespace framework
