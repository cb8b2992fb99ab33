// What the user sees of a long save.
#pragma once

#include "mxovpackage.h"

#include <memory>

#include <shlobj.h>

namespace mxovshare {

/// Shows the system's progress dialog over the thread's active window once the work has taken half a second,
/// and cancels when the user does. The windows of the calling thread are painted meanwhile. Without COM there
/// is no dialog, and the work goes on.
class ProgressWindow : public PackageProgress {
public:
    /// `title` stands in the dialog's first line.
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
