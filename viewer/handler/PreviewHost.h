// The place on the page of a document where the preview handler of its kind shows it.
#pragma once

#include "handler/PreviewHandler.h"
#include "window/Window.h"

namespace viewer {

class PreviewHost : public Window {
public:
    /// Creates the window, hidden.
    bool Create(HWND parent, int id);

    /// Shows a document instead of the last one, without moving the focus. False, and hidden, when its
    /// handler fails.
    [[nodiscard]] bool Show(const PreviewedDocument& document);

    /// Shows nothing, hidden.
    void Clear();

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    PreviewHandler m_handler;
    int m_asked = 0; // documents so far
};

} // namespace viewer
