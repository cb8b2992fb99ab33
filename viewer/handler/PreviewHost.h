// The place on the page of a document where the preview handler of its kind shows it.
#pragma once

#include "handler/PreviewRun.h"
#include "window/Window.h"

#include <functional>
#include <memory>

namespace viewer {

class PreviewHost : public Window {
public:
    /// How long a handler may take to show a document, in milliseconds.
    static constexpr UINT kPatience = 5000;

    /// Creates the window, hidden.
    bool Create(HWND parent, int id);

    /// `failed` is called when the handler of the last document has failed or takes too long; the window is
    /// hidden then.
    void OnFailed(std::function<void()> failed) { m_failed = std::move(failed); }

    /// Lets its handler show a document instead of the last one and returns before that is done. The focus
    /// stays where it is, or returns to the document if the last one lost it by Clear().
    void Show(PreviewedDocument document);

    /// Shows nothing, hidden; the frame gets the focus if the document has it.
    void Clear();

    /// Shows nothing and takes the handler's windows out of this one. False when the handler does not answer;
    /// this window cannot be destroyed then.
    [[nodiscard]] bool End();

protected:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void OnStarted(WPARAM number, bool isShown);
    void Fail();
    [[nodiscard]] bool HasFocus() const;

    std::unique_ptr<PreviewRun> m_run;
    WPARAM m_asked = 0;          // documents so far
    HWND m_substitute = nullptr; // has had the focus since Clear() took it from a document
    std::function<void()> m_failed;
};

} // namespace viewer
