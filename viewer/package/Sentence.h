// Reports of libraries as sentences.
#pragma once

#include <windows.h>

#include <string>

namespace viewer {

/// What a package's reader reports, as a sentence of its own.
[[nodiscard]] inline std::wstring Sentence(std::wstring report) {
    CharUpperBuffW(report.data(), report.empty() ? 0 : 1);
    return report.ends_with(L'.') ? report : report + L".";
}

} // namespace viewer
