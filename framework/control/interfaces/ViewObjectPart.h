// IViewObject, IViewObject2 and IViewObjectEx of a control.
#pragma once

#include "ControlPart.h"

namespace framework {

class ViewObjectPart final : public ControlPart<IViewObjectEx> {
public:
    using ControlPart::ControlPart;

    /// Notifies the view's sink that the control looks different.
    void NotifyChange();
    /// Releases the sink.
    void Clear() noexcept { m_sink.Reset(); }

    STDMETHODIMP Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* target, HDC targetDC,
                      HDC dc, LPCRECTL bounds, LPCRECTL metafileBounds,
                      BOOL(STDMETHODCALLTYPE* continueDrawing)(ULONG_PTR),
                      ULONG_PTR continueArgument) override;
    STDMETHODIMP GetColorSet(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* target, HDC targetDC,
                             LOGPALETTE** colours) override;
    STDMETHODIMP Freeze(DWORD aspect, LONG index, void* aspectInfo, DWORD* key) override;
    STDMETHODIMP Unfreeze(DWORD key) override;
    STDMETHODIMP SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) override;
    STDMETHODIMP GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) override;
    STDMETHODIMP GetExtent(DWORD aspect, LONG index, DVTARGETDEVICE* target, LPSIZEL size) override;
    STDMETHODIMP GetRect(DWORD aspect, LPRECTL rect) override;
    STDMETHODIMP GetViewStatus(DWORD* status) override;
    STDMETHODIMP QueryHitPoint(DWORD aspect, LPCRECT bounds, POINT point, LONG closeHint,
                               DWORD* hit) override;
    STDMETHODIMP QueryHitRect(DWORD aspect, LPCRECT bounds, LPCRECT rect, LONG closeHint,
                              DWORD* hit) override;
    STDMETHODIMP GetNaturalExtent(DWORD aspect, LONG index, DVTARGETDEVICE* target, HDC targetDC,
                                  DVEXTENTINFO* extentInfo, LPSIZEL size) override;

private:
    HRESULT DrawInto(HDC dc, const RECT& bounds);

    common::ComPtr<IAdviseSink> m_sink;
    DWORD m_aspects = 0;
    DWORD m_flags = 0;
};

} // namespace framework
