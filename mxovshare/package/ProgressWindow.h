// The window of a long save.
#pragma once

#include "mxovpackage.h"

#include <memory>

#include <shlobj.h>

namespace mxovshare {

/// Shows the system's progress dialog over the thread's active window once the work has taken half a second,
/// and cancels when the user does. Meanwhile the windows of the calling thread paint, for less than half of
/// the time. Where COM is not initialised the work runs without a dialog.
class ProgressWindow : public PackageProgress {
public:
    /// `title` is the first line of the dialog.
    explicit ProgressWindow(std::wstring title);

    bool OnProgress(const std::wstring& name, std::uint64_t done, std::uint64_t total) override;

private:
    void Open();
    void Show(const std::wstring& name, std::uint64_t done, std::uint64_t total);

    std::wstring m_title;
    ULONGLONG m_nextLook;
    struct Stop {
        void operator()(IProgressDialog* dialog) const;
    };
    std::unique_ptr<IProgressDialog, Stop> m_dialog; ///< none before it is needed
    bool m_tried = false;
};

} // namespace mxovshare
