// Progress of long work on the console, and its end by Ctrl+C.
#pragma once

#include "Output.h"

#include <mxovpackage.h>

/// Shows a line that follows the work when standard error is a console, after the first half second. Ctrl+C
/// cancels.
class Progress final : public mxovshare::PackageProgress {
public:
    /// `verb` begins the line, such as "Packing".
    explicit Progress(std::wstring verb);
    /// Wipes the line.
    ~Progress() override;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    bool OnProgress(const std::wstring& name, std::uint64_t done, std::uint64_t total) override;

private:
    void Show(const std::wstring& line);

    Output m_output;
    std::wstring m_verb;
    ULONGLONG m_nextShow;
    std::size_t m_shown = 0; ///< length of the line on the console
};
