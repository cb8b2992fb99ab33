#include "prompts/WorkPrompt.h"

#include "common/BackgroundThread.h"
#include "common/Handles.h"
#include "prompts/ProgressDialog.h"
#include "window/DisabledWindow.h"

#include <memory>

namespace viewer {

namespace {

constexpr DWORD kShowDelay = 200;    // milliseconds before the window appears
constexpr DWORD kUpdatePeriod = 100; // milliseconds between its updates

// What the thread shares with the window.
class AwaitedWork {
public:
    explicit AwaitedWork(std::function<void(WorkProgress&)> function)
        : m_function(std::move(function)), m_ended(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

    void Run() noexcept {
        try {
            m_function(m_progress);
        } catch (...) {
            // Out of memory: the result stays as its owner has prepared it.
        }
        SetEvent(m_ended.get());
    }

    [[nodiscard]] WorkProgress& Progress() { return m_progress; }
    [[nodiscard]] HANDLE Ended() const { return m_ended.get(); }
    [[nodiscard]] bool EndsWithin(DWORD milliseconds) const {
        return WaitForSingleObject(m_ended.get(), milliseconds) == WAIT_OBJECT_0;
    }

private:
    std::function<void(WorkProgress&)> m_function;
    WorkProgress m_progress;
    common::UniqueHandle m_ended;
};

// Passes on the messages that are waiting.
void PassMessages(const ProgressDialog& dialog) {
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (!dialog.IsDialogMessage(message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

// Returns at the end of the work, or once it is cancelled.
void ShowUntilEnd(HWND owner, const std::wstring& title, AwaitedWork& work) {
    ProgressDialog dialog(owner, work.Progress(), title);
    const DisabledWindow disabled(owner); // enabled before the dialog goes, so that it is activated again
    const HANDLE ended = work.Ended();
    while (!work.Progress().IsCancelled() &&
           MsgWaitForMultipleObjects(1, &ended, FALSE, kUpdatePeriod, QS_ALLINPUT) != WAIT_OBJECT_0) {
        PassMessages(dialog);
        dialog.Update();
    }
}

} // namespace

bool WaitForWork(HWND owner, const std::wstring& title, std::function<void(WorkProgress&)> function) {
    const auto work = std::make_shared<AwaitedWork>(std::move(function));
    {
        const common::BackgroundThread thread([work] { work->Run(); });
        if (!work->EndsWithin(kShowDelay)) {
            ShowUntilEnd(owner, title, *work);
        }
    }
    return work->EndsWithin(0);
}

} // namespace viewer
