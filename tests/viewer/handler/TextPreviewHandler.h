// A preview handler for tests, which shows a document's bytes as text in a field. Documents that begin with
// "never" are never shown; those that begin with "stuck" are, and the next change of the size does not
// return.
#pragma once

#include "common/ComObject.h"
#include "common/ComPtr.h"

#include <windows.h>

#include <new>
#include <string>

#include <ocidl.h>
#include <propsys.h>
#include <shobjidl.h>

/// What the handler did, for tests in its own process.
struct PreviewRecord {
    std::wstring file; ///< that it was passed; empty when it got a stream
    int unloads = 0;
    HWND field = nullptr;
    bool isStuck = false; ///< in a change of the size that does not return
};

class TextPreviewHandler final
    : public common::ComObject<IPreviewHandler, IInitializeWithStream, IInitializeWithFile, IObjectWithSite> {
public:
    enum class Kind { Stream, File, Failing };

    explicit TextPreviewHandler(Kind kind) : m_kind(kind) {}

    [[nodiscard]] static PreviewRecord& Record() {
        static PreviewRecord record;
        return record;
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override {
        const IID& other =
            m_kind == Kind::File ? __uuidof(IInitializeWithStream) : __uuidof(IInitializeWithFile);
        return IsEqualIID(iid, other) ? E_NOINTERFACE : ComObject::QueryInterface(iid, object);
    }

    HRESULT STDMETHODCALLTYPE Initialize(IStream* stream, DWORD) noexcept override {
        char part[512];
        ULONG read = 0;
        while (SUCCEEDED(stream->Read(part, sizeof part, &read)) && read > 0) {
            m_text.append(part, read);
        }
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Initialize(LPCWSTR path, DWORD) noexcept override {
        Record().file = path;
        m_file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
        char part[512];
        DWORD read = 0;
        while (ReadFile(m_file, part, sizeof part, &read, nullptr) && read > 0) {
            m_text.append(part, read);
        }
        return m_file == INVALID_HANDLE_VALUE ? E_FAIL : S_OK;
    }

    HRESULT STDMETHODCALLTYPE SetWindow(HWND parent, const RECT* area) noexcept override {
        m_parent = parent;
        m_area = *area;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetRect(const RECT* area) noexcept override {
        if (m_text.starts_with("stuck")) {
            Record().isStuck = true;
            Sleep(INFINITE);
        }
        m_area = *area;
        Place();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE DoPreview() noexcept override {
        if (m_text.starts_with("never")) {
            Sleep(INFINITE);
        }
        if (m_kind == Kind::Failing) {
            return E_FAIL;
        }
        const std::wstring text(m_text.begin(), m_text.end());
        m_field = CreateWindowW(L"EDIT", text.c_str(), WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL | ES_READONLY,
                                0, 0, 0, 0, m_parent, nullptr, nullptr, nullptr);
        Record().field = m_field;
        Place();
        ::SetFocus(m_field); // as some handlers do unasked
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Unload() noexcept override {
        ++Record().unloads;
        DestroyWindow(m_field);
        CloseHandle(m_file);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE SetFocus() noexcept override {
        ::SetFocus(m_field);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE QueryFocus(HWND* focus) noexcept override {
        *focus = GetFocus();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message) noexcept override {
        const auto frame = m_site.As<IPreviewHandlerFrame>();
        return frame ? frame->TranslateAccelerator(message) : S_FALSE;
    }

    HRESULT STDMETHODCALLTYPE SetSite(IUnknown* site) noexcept override {
        m_site = common::ComPtr<IUnknown>(site);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetSite(REFIID iid, void** site) noexcept override {
        return m_site ? m_site->QueryInterface(iid, site) : E_FAIL;
    }

private:
    void Place() const {
        MoveWindow(m_field, m_area.left, m_area.top, m_area.right - m_area.left, m_area.bottom - m_area.top,
                   TRUE);
    }

    const Kind m_kind;
    std::string m_text;
    HANDLE m_file = INVALID_HANDLE_VALUE; // stays open until it is unloaded
    HWND m_parent = nullptr;
    HWND m_field = nullptr;
    RECT m_area = {};
    common::ComPtr<IUnknown> m_site;
};

/// Makes handlers of one kind.
class TextPreviewHandlers final : public IClassFactory {
public:
    explicit TextPreviewHandlers(TextPreviewHandler::Kind kind) : m_kind(kind) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override {
        const bool known = IsEqualIID(iid, IID_IUnknown) || IsEqualIID(iid, IID_IClassFactory);
        *object = known ? this : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return 2; } // it is never deleted
    ULONG STDMETHODCALLTYPE Release() noexcept override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID iid, void** object) noexcept override {
        auto* handler = new (std::nothrow) TextPreviewHandler(m_kind);
        if (!handler) {
            *object = nullptr;
            return E_OUTOFMEMORY;
        }
        const HRESULT result = handler->QueryInterface(iid, object);
        handler->Release();
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) noexcept override { return S_OK; }

private:
    const TextPreviewHandler::Kind m_kind;
};
