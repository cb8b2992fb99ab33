// The place on the page of a document where the preview handler of its kind shows it.
#pragma once

#include "handler/PreviewHandler.h"
#include "window/Window.h"

namespace viewer {

class PreviewHost : public Window {
public:
    /// Creates the window, hidden.
    bool Create(HWND parent, int id);

    /// Shows a document instead of the last one. The focus stays where it is, or returns to the document if
    /// the last one lost it by Clear(). False, and hidden, when its handler fails.
    [[nodiscard]] bool Show(const PreviewedDocument& document);

    /// Shows nothing, hidden; the frame gets the focus if the document has it.
    void Clear();

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    PreviewHandler Start(const PreviewedDocument& document) const;
    bool HasFocus() const;

    PreviewHandler m_handler;
    int m_asked = 0;             // documents so far
    HWND m_substitute = nullptr; // has had the focus since Clear() took it from a document
};

} // namespace viewer
