// A document as the preview handler shows it that the system has for its kind.
#pragma once

#include "common/ComPtr.h"
#include "handler/PreviewedDocument.h"
#include "handler/TemporaryCopy.h"

#include <windows.h>

#include <optional>
#include <string>

#include <shobjidl.h>

namespace viewer {

/// The preview handler that is registered for files with an extension, such as ".pdf"; nothing for none.
[[nodiscard]] std::optional<CLSID> FindPreviewHandler(const std::wstring& extension);

/// Owns a running handler, which never has the document's own file open: it reads a stream in memory, or a
/// copy if it takes files only.
class PreviewHandler {
public:
    /// No handler.
    PreviewHandler() = default;
    PreviewHandler(PreviewHandler&&) noexcept = default;
    PreviewHandler& operator=(PreviewHandler&& other) noexcept;
    ~PreviewHandler();

    /// Lets the handler show the document in the whole of a window, in a process of its own if it can. The
    /// keys of the viewer are posted to `keys`. Returns an empty owner when it fails. May dispatch messages.
    [[nodiscard]] static PreviewHandler Start(const PreviewedDocument& document, HWND window, HWND keys);

    explicit operator bool() const noexcept { return static_cast<bool>(m_handler); }

    /// Fits what is shown into the window again.
    void Resize(HWND window) const;

    /// Moves the focus into what is shown.
    void TakeFocus() const;

    /// Offers a key to the handler; true when the handler or the viewer has used it.
    [[nodiscard]] bool TranslateAccelerator(MSG& message) const;

private:
    bool Open(const PreviewedDocument& document);
    [[nodiscard]] bool ShowIn(HWND window, HWND keys) const;

    TemporaryCopy m_copy; // outlives the handler that reads it
    common::ComPtr<IPreviewHandler> m_handler;
};

} // namespace viewer
