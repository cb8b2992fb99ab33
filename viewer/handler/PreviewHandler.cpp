#include "handler/PreviewHandler.h"

#include "handler/PreviewSite.h"
#include "window/Painting.h"
#include "window/Palette.h"

#include <utility>

#include <ocidl.h>
#include <propsys.h>
#include <shlwapi.h>

namespace viewer {

namespace {

// Where file kinds name their preview handlers.
constexpr wchar_t kPreviewHandlers[] = L"{8895b1c6-b41f-4c1c-a560-0d564250836f}";

using HandlerPtr = common::ComPtr<IPreviewHandler>;

// A damaged document should not end the viewer together with its handler.
HandlerPtr CreateHandler(const CLSID& handler) {
    HandlerPtr created;
    for (const DWORD context : {CLSCTX_LOCAL_SERVER, CLSCTX_INPROC_SERVER}) {
        if (SUCCEEDED(CoCreateInstance(handler, nullptr, context, __uuidof(IPreviewHandler),
                                       created.ReceiveVoid()))) {
            return created;
        }
        static_cast<void>(created.Detach());
    }
    return created;
}

void SetSite(const HandlerPtr& handler, IUnknown* site) {
    if (const auto receiver = handler.As<IObjectWithSite>()) {
        receiver->SetSite(site);
    }
}

// The look of what surrounds it; most handlers have one of their own.
void SetLook(const HandlerPtr& handler, HWND window) {
    const auto visuals = handler.As<IPreviewHandlerVisuals>();
    if (!visuals) {
        return;
    }
    const Palette palette = CurrentPalette();
    LOGFONTW font = {};
    GetObjectW(MakeMessageFont(GetDpiForWindow(window)).get(), sizeof font, &font);
    visuals->SetBackgroundColor(palette.card);
    visuals->SetTextColor(palette.cardText);
    visuals->SetFont(&font);
}

RECT ClientAreaOf(HWND window) {
    RECT area = {};
    GetClientRect(window, &area);
    return area;
}

} // namespace

std::optional<CLSID> FindPreviewHandler(const std::wstring& extension) {
    wchar_t text[64] = L"";
    DWORD length = ARRAYSIZE(text);
    CLSID handler = {};
    if (extension.empty() ||
        FAILED(AssocQueryStringW(ASSOCF_NONE, ASSOCSTR_SHELLEXTENSION, extension.c_str(), kPreviewHandlers,
                                 text, &length)) ||
        FAILED(CLSIDFromString(text, &handler))) {
        return std::nullopt;
    }
    return handler;
}

PreviewHandler& PreviewHandler::operator=(PreviewHandler&& other) noexcept {
    PreviewHandler old(std::move(*this));
    m_copy = std::move(other.m_copy);
    m_handler = std::move(other.m_handler);
    return *this;
}

PreviewHandler::~PreviewHandler() {
    if (m_handler) {
        m_handler->Unload();
        SetSite(m_handler, nullptr);
    }
}

PreviewHandler PreviewHandler::Start(const PreviewedDocument& document, HWND window, HWND keys) {
    PreviewHandler started;
    started.m_handler = CreateHandler(document.handler);
    return started && started.Open(document) && started.ShowIn(window, keys) ? std::move(started)
                                                                             : PreviewHandler();
}

bool PreviewHandler::Open(const PreviewedDocument& document) {
    if (const auto reader = m_handler.As<IInitializeWithStream>()) {
        common::ComPtr<IStream> stream;
        *stream.Receive() = SHCreateMemStream(reinterpret_cast<const BYTE*>(document.bytes.data()),
                                              static_cast<UINT>(document.bytes.size()));
        return stream && SUCCEEDED(reader->Initialize(stream.Get(), STGM_READ));
    }
    const auto reader = m_handler.As<IInitializeWithFile>();
    return reader && m_copy.Make(document.path) &&
           SUCCEEDED(reader->Initialize(m_copy.Path().c_str(), STGM_READ));
}

bool PreviewHandler::ShowIn(HWND window, HWND keys) const {
    common::ComPtr<IPreviewHandlerFrame> site;
    *site.Receive() = new PreviewSite(keys);
    SetSite(m_handler, site.Get());
    SetLook(m_handler, window);
    const RECT area = ClientAreaOf(window);
    return SUCCEEDED(m_handler->SetWindow(window, &area)) && SUCCEEDED(m_handler->DoPreview());
}

void PreviewHandler::Resize(HWND window) const {
    if (m_handler) {
        const RECT area = ClientAreaOf(window);
        m_handler->SetRect(&area);
    }
}

void PreviewHandler::TakeFocus() const {
    if (m_handler) {
        m_handler->SetFocus();
    }
}

bool PreviewHandler::TranslateAccelerator(MSG& message) const {
    return m_handler && m_handler->TranslateAccelerator(&message) == S_OK;
}

} // namespace viewer
