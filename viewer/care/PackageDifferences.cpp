#include "care/PackageDifferences.h"

#include "common/Utf8.h"
#include "mxovchange.h"
#include "package/PackageInformation.h"
#include "package/ValueText.h"
#include "texts/Texts.h"

#include <care/compare/Comparison.h>

#include <algorithm>

namespace viewer {

namespace {

using ChangeKind = care::FileChangeKind;
using mxovshare::PackageResult;

constexpr std::size_t kMostLines = 50; // shown of one file

// By kind of change.
constexpr UINT kKinds[] = {IDS_KIND_ADDED, IDS_KIND_REMOVED, IDS_KIND_CHANGED, IDS_KIND_RENAMED};

std::wstring KindOf(ChangeKind kind) {
    return Text(kKinds[static_cast<std::size_t>(kind)]);
}

// The lines that differ; those of the older side behind "-".
std::wstring LinesText(const std::vector<care::LineDifference>& lines) {
    std::wstring text;
    for (std::size_t i = 0; i < std::min(lines.size(), kMostLines); ++i) {
        text += lines[i].isRemoved ? L"\r\n- " : L"\r\n+ ";
        text += std::to_wstring(lines[i].number) + L": " + common::FromUtf8(lines[i].text);
    }
    if (lines.size() > kMostLines) {
        text += L"\r\n" + Text(IDS_MORE_LINES, {std::to_wstring(lines.size() - kMostLines)});
    }
    return text;
}

std::wstring DetailsText(const care::FileChange& change) {
    switch (change.kind) {
    case ChangeKind::Renamed:
        return Text(IDS_RENAMED_FROM, {change.oldName});
    case ChangeKind::Changed:
        return Text(IDS_BEFORE_AND_AFTER, {ByteSizeText(change.oldSize), ByteSizeText(change.size)}) +
               LinesText(change.lines);
    default:
        return ByteSizeText(change.kind == ChangeKind::Added ? change.size : change.oldSize);
    }
}

DifferenceLine DifferenceOf(const care::ValueChange& change) {
    const ChangeKind kind = !change.before  ? ChangeKind::Added
                            : !change.after ? ChangeKind::Removed
                                            : ChangeKind::Changed;
    const std::wstring details = change.before && change.after
                                     ? Text(IDS_BEFORE_AND_AFTER, {*change.before, *change.after})
                                     : change.before.value_or(change.after.value_or(std::wstring()));
    return {KindOf(kind), change.section + L"/" + change.key, details};
}

DifferenceLine DifferenceOf(const care::Section& entry, ChangeKind kind) {
    using namespace docview::inikey;
    std::wstring details = care::ValueOf(entry, kTime);
    for (const wchar_t* key : {kBy, kOperation, kRemarks}) {
        const std::wstring value = care::ValueOf(entry, key);
        details += value.empty() ? value : L", " + value;
    }
    return {KindOf(kind), entry.name, details};
}

std::vector<DifferenceLine> DifferencesOf(const care::Comparison& comparison) {
    std::vector<DifferenceLine> lines;
    for (const care::FileChange& change : comparison.files) {
        lines.push_back({KindOf(change.kind), change.name, DetailsText(change)});
    }
    for (const care::ValueChange& change : comparison.values) {
        lines.push_back(DifferenceOf(change));
    }
    for (const care::Section& entry : comparison.removedHistory) {
        lines.push_back(DifferenceOf(entry, ChangeKind::Removed));
    }
    for (const care::Section& entry : comparison.addedHistory) {
        lines.push_back(DifferenceOf(entry, ChangeKind::Added));
    }
    return lines;
}

// What one side holds; reads on when asked for more.
class Side {
public:
    Side(std::wstring path, PackageResult& result) : m_path(std::move(path)), m_result(result) {}

    care::PackageContent Read(WorkProgress& progress) {
        care::PackageContent content;
        Take(mxovshare::ReadContent(m_path, content.entries, content.sections, &progress));
        return content;
    }

    care::Texts ReadTexts(const std::vector<std::wstring>& names) {
        care::Texts texts;
        Take(mxovshare::ReadContentFiles(m_path, names, care::kLargestComparedText,
                                         [&texts](const std::wstring& name, std::string bytes) {
                                             texts.emplace(name, std::move(bytes));
                                         }));
        return texts;
    }

private:
    // The first failure stays.
    void Take(PackageResult result) {
        if (m_result.ok) {
            m_result = std::move(result);
        }
    }

    std::wstring m_path;
    PackageResult& m_result;
};

} // namespace

DifferenceReport CompareUnpacked(const std::wstring& package, const std::wstring& folder,
                                 WorkProgress& progress) {
    DifferenceReport report;
    report.result.ok = true;
    Side before(package, report.result);
    Side after(folder, report.result);
    const care::PackageContent old = before.Read(progress);
    const care::PackageContent now = after.Read(progress);
    if (!report.result.ok) {
        return report;
    }
    care::Comparison comparison = care::Compare(old, now);
    const std::vector<std::wstring> names = care::ChangedGCode(comparison);
    const care::Texts oldTexts = before.ReadTexts(names);
    const care::Texts newTexts = after.ReadTexts(names);
    if (report.result.ok) {
        care::CompareGCode(comparison, oldTexts, newTexts, false);
        report.lines = DifferencesOf(comparison);
    }
    return report;
}

} // namespace viewer
