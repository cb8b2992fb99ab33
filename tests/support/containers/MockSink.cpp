#include "MockSink.h"

STDMETHODIMP MockSink::QueryInterface(REFIID iid, void** object) {
    *object = nullptr;
    if (iid == IID_IUnknown || iid == IID_IAdviseSink) {
        *object = static_cast<IAdviseSink*>(this);
    } else if (iid == IID_IPropertyNotifySink) {
        *object = static_cast<IPropertyNotifySink*>(this);
    } else if (iid == IID_IDispatch || iid == m_events) {
        *object = static_cast<IDispatch*>(this);
    }
    if (!*object) {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

STDMETHODIMP_(void) MockSink::OnDataChange(FORMATETC*, STGMEDIUM*) {
    calls.emplace_back("OnDataChange");
}

STDMETHODIMP_(void) MockSink::OnViewChange(DWORD, LONG) {
    calls.emplace_back("OnViewChange");
}

STDMETHODIMP_(void) MockSink::OnRename(IMoniker*) {
    calls.emplace_back("OnRename");
}

STDMETHODIMP_(void) MockSink::OnSave() {
    calls.emplace_back("OnSave");
}

STDMETHODIMP_(void) MockSink::OnClose() {
    calls.emplace_back("OnClose");
}

STDMETHODIMP MockSink::OnChanged(DISPID id) {
    calls.emplace_back("OnChanged(" + std::to_string(id) + ")");
    return S_OK;
}

STDMETHODIMP MockSink::OnRequestEdit(DISPID id) {
    calls.emplace_back("OnRequestEdit(" + std::to_string(id) + ")");
    return requestEdit;
}

STDMETHODIMP MockSink::Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* params, VARIANT*, EXCEPINFO*,
                              UINT*) {
    calls.emplace_back("Event(" + std::to_string(id) + ")");
    for (UINT i = params->cArgs; i > 0; --i) {
        VARIANT text{};
        VariantChangeType(&text, &params->rgvarg[i - 1], 0, VT_BSTR);
        eventTexts.emplace_back(text.bstrVal ? text.bstrVal : L"");
        VariantClear(&text);
    }
    if (onEvent) {
        onEvent(context);
    }
    return S_OK;
}
