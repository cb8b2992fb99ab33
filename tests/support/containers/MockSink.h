// A sink of the notifications and events of a control, for tests.
#pragma once

#include "UntypedDispatch.h"

#include <windows.h>

#include <string>
#include <vector>

#include <ocidl.h>
#include <ole2.h>

/// A sink that notes the calls of IAdviseSink, IPropertyNotifySink and an event interface.
class MockSink : public IAdviseSink, public IPropertyNotifySink, public UntypedDispatch {
public:
    /// Answers this interface, besides IDispatch, with its IDispatch.
    explicit MockSink(REFIID events = IID_IDispatch) : m_events(events) {}
    MockSink(const MockSink&) = delete;
    MockSink& operator=(const MockSink&) = delete;

    std::vector<std::string> calls;
    std::vector<std::wstring> eventTexts; ///< the arguments of events, as texts, the first parameter first
    HRESULT requestEdit = S_OK;
    void (*onEvent)(void* context) = nullptr; ///< run inside an event
    void* context = nullptr;

    [[nodiscard]] LONG References() const { return m_references; }

    STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
    STDMETHODIMP_(ULONG) AddRef() override { return static_cast<ULONG>(++m_references); }
    STDMETHODIMP_(ULONG) Release() override { return static_cast<ULONG>(--m_references); }

    STDMETHODIMP_(void) OnDataChange(FORMATETC* format, STGMEDIUM* medium) override;
    STDMETHODIMP_(void) OnViewChange(DWORD aspect, LONG index) override;
    STDMETHODIMP_(void) OnRename(IMoniker* moniker) override;
    STDMETHODIMP_(void) OnSave() override;
    STDMETHODIMP_(void) OnClose() override;

    STDMETHODIMP OnChanged(DISPID id) override;
    STDMETHODIMP OnRequestEdit(DISPID id) override;

    STDMETHODIMP Invoke(DISPID id, REFIID iid, LCID lcid, WORD flags, DISPPARAMS* params, VARIANT* result,
                        EXCEPINFO* exception, UINT* wrongArgument) override;

private:
    LONG m_references = 1;
    IID m_events;
};
