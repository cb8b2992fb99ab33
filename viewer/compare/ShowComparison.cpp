#include "compare/ShowComparison.h"

#include "compare/DifferencesDialog.h"
#include "package/Sentence.h"
#include "prompts/TaskPrompt.h"
#include "prompts/WorkPrompt.h"
#include "texts/Texts.h"

#include <memory>

namespace viewer {

std::wstring ShowComparison(HWND owner, const std::wstring& name, const ComparedPackages& packages) {
    const auto report = std::make_shared<DifferenceReport>();
    const auto compare = [report, packages](WorkProgress& progress) {
        *report = ComparePackages(packages, progress);
    };
    if (!WaitForWork(owner, Text(IDS_COMPARING, {name}), compare) || report->result.cancelled) {
        return {};
    }
    if (!report->result.ok) {
        return Text(IDS_CANNOT_COMPARE, {name, Sentence(report->result.message)});
    }
    if (report->lines.empty() && report->noise.empty()) {
        ShowTaskPrompt(owner, Text(IDS_SAME_PACKAGE, {name}), {}, {Text(IDS_CLOSE)}, TD_INFORMATION_ICON);
    } else {
        ShowDifferences(owner, packages, *report);
    }
    return {};
}

} // namespace viewer
