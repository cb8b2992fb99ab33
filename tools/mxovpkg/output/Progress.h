// Progress of long operations on the console; Ctrl+C cancels them.
#pragma once

#include "Interrupt.h"
#include "Output.h"

#include <mxovpackage.h>

#include <chrono>

/// Shows the progress on one line after half a second, if standard error is a console. Ctrl+C cancels.
class Progress final : public mxovshare::PackageProgress {
public:
    /// `verb` starts the line, such as "Packing".
    explicit Progress(std::wstring verb);
    /// Clears the line.
    ~Progress() override;
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    bool OnProgress(const std::wstring& name, std::uint64_t done, std::uint64_t total) override;
    /// Warns and continues.
    bool OnLoss(const std::wstring& lost) override;

private:
    void Show(const std::wstring& line);

    InterruptWatch m_interrupts;
    Output m_output;
    std::wstring m_verb;
    std::chrono::steady_clock::time_point m_nextShow;
    std::size_t m_shown = 0; ///< length of the line on the console
};
