#include "compare/PackageDifferences.h"

#include "mxovchange.h"
#include "package/Paths.h"
#include "texts/Texts.h"

#include <algorithm>

namespace viewer {

namespace {

using mxovshare::PackageResult;

constexpr std::uint64_t kLargestShownText = std::uint64_t{16} << 20;

// What one side holds; reads on when asked for more.
class Side {
public:
    Side(std::wstring path, PackageResult& result) : m_path(std::move(path)), m_result(result) {}

    care::PackageContent Read(WorkProgress& progress) {
        care::PackageContent content;
        Take(mxovshare::ReadContent(m_path, content.entries, content.sections, &progress));
        return content;
    }

    care::Texts ReadTexts(const std::vector<std::wstring>& names, std::uint64_t limit) {
        care::Texts texts;
        Take(mxovshare::ReadContentFiles(m_path, names, limit,
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

// Those of the changed files that the comparison of their lines no longer has.
std::vector<DifferenceLine> NoiseOf(const std::vector<care::FileChange>& files,
                                    const care::Comparison& comparison) {
    std::vector<DifferenceLine> lines;
    for (const care::FileChange& file : files) {
        if (std::ranges::find(comparison.files, file.name, &care::FileChange::name) ==
            comparison.files.end()) {
            lines.push_back(DescribeChangedFile(file, IDS_NOISE_CHANGED));
        }
    }
    return lines;
}

std::vector<care::FileChange> GCodeOf(const care::Comparison& comparison) {
    std::vector<care::FileChange> files;
    std::ranges::copy_if(comparison.files, std::back_inserter(files), &care::FileChange::isGCode);
    return files;
}

} // namespace

DifferenceReport ComparePackages(const ComparedPackages& packages, WorkProgress& progress) {
    DifferenceReport report;
    report.result.ok = true;
    Side before(packages.before, report.result);
    Side after(packages.after, report.result);
    const care::PackageContent old = before.Read(progress);
    const care::PackageContent now = after.Read(progress);
    if (!report.result.ok) {
        return report;
    }
    care::Comparison comparison = care::Compare(old, now);
    const std::vector<care::FileChange> programs = GCodeOf(comparison);
    const std::vector<std::wstring> names = care::ChangedGCode(comparison);
    const care::Texts oldTexts = before.ReadTexts(names, care::kLargestComparedText);
    const care::Texts newTexts = after.ReadTexts(names, care::kLargestComparedText);
    if (report.result.ok) {
        care::CompareGCode(comparison, oldTexts, newTexts, false);
        report.lines = DescribeDifferences(old, now, comparison);
        report.noise = NoiseOf(programs, comparison);
    }
    return report;
}

TextPairReport ReadTextPair(const ComparedPackages& packages, const DifferenceLine& line) {
    TextPairReport report;
    report.result.ok = true;
    const care::Texts before = Side(packages.before, report.result).ReadTexts({line.file}, kLargestShownText);
    const care::Texts after = Side(packages.after, report.result).ReadTexts({line.file}, kLargestShownText);
    if (!report.result.ok) {
        return report;
    }
    const std::string& old = before.begin()->second;
    const std::string& now = after.begin()->second;
    if (IsBinary(old) || IsBinary(now)) {
        report.result = {.ok = false, .cancelled = false, .message = Text(IDS_NO_TEXT, {line.name})};
    } else {
        report.texts = {.before = DecodeText(old), .after = DecodeText(now), .kind = *line.textKind};
    }
    return report;
}

} // namespace viewer
