// A preview handler on a thread of its own: one that does not return holds up nothing else.
#pragma once

#include "handler/PreviewedDocument.h"

#include <atomic>
#include <memory>

namespace viewer {

class PreviewRun {
public:
    /// Starts to show a document in the whole of `host`. Posts `message` to it when the handler shows the
    /// document or has failed; wParam is `number`, lParam whether it is shown. A handler that never returns
    /// posts nothing.
    PreviewRun(HWND host, UINT message, WPARAM number, PreviewedDocument document);

    /// Lets the handler end and does not wait for that.
    ~PreviewRun();
    PreviewRun(const PreviewRun&) = delete;
    PreviewRun& operator=(const PreviewRun&) = delete;

    /// Fits what is shown into the host again.
    void Resize() const;

    /// Moves the focus into what is shown.
    void TakeFocus() const;

    /// Lets the handler end and waits until it has no window in the host, at most this long in milliseconds.
    /// False when the time was not enough.
    [[nodiscard]] bool End(DWORD patience) const;

private:
    class Work;

    std::shared_ptr<Work> m_work; // shared with the thread
};

} // namespace viewer
