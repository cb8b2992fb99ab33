#include "Commands.h"
#include "History.h"
#include "output/JsonText.h"
#include "output/Output.h"
#include "output/Report.h"
#include "PackageAccess.h"

#include <package/PackageInformation.h>

using namespace docview;

namespace {

using care::FileChange;
using care::FileChangeKind;
using care::LineDifference;
using care::ValueChange;

const wchar_t* WordFor(FileChangeKind kind) {
    switch (kind) {
    case FileChangeKind::Added:
        return L"added";
    case FileChangeKind::Removed:
        return L"removed";
    case FileChangeKind::Renamed:
        return L"renamed";
    default:
        return L"changed";
    }
}

void PrintFileChange(const FileChange& change) {
    std::wstring line = WordFor(change.kind) + std::wstring(L" ");
    if (change.kind == FileChangeKind::Renamed) {
        line += change.oldName + L" -> ";
    }
    line += change.name;
    if (change.kind == FileChangeKind::Changed) {
        line += L", " + std::to_wstring(change.oldSize) + L" -> " + std::to_wstring(change.size) + L" bytes";
    }
    PrintLine(line);
    for (const LineDifference& difference : change.lines) {
        PrintLine((difference.isRemoved ? L"  -" : L"  +") + std::to_wstring(difference.number) + L": " +
                  Escaped(Decoded(difference.text)));
    }
}

std::wstring QuotedOrNone(const std::optional<std::wstring>& value) {
    return value ? L"\"" + Escaped(*value) + L"\"" : std::wstring(L"none");
}

void PrintHistory(const wchar_t* sign, const std::vector<care::Section>& entries) {
    for (const care::Section& entry : entries) {
        PrintLine(sign + Escaped(entry.name + L": " + care::ValueOf(entry, inikey::kTime) + L" " +
                                 care::ValueOf(entry, inikey::kBy) + L" " +
                                 care::ValueOf(entry, inikey::kOperation)));
    }
}

void PrintComparison(const care::Comparison& comparison) {
    for (const FileChange& change : comparison.files) {
        PrintFileChange(change);
    }
    for (const ValueChange& change : comparison.values) {
        PrintLine(Escaped(change.section + L"/" + change.key) + L": " + QuotedOrNone(change.before) +
                  L" -> " + QuotedOrNone(change.after));
    }
    PrintHistory(L"removed ", comparison.removedHistory);
    PrintHistory(L"added ", comparison.addedHistory);
}

std::string LineJson(const LineDifference& difference) {
    return JsonObject({{"change", difference.isRemoved ? "\"removed\"" : "\"added\""},
                       {"line", std::to_string(difference.number)},
                       {"text", JsonString(Decoded(difference.text))}});
}

std::string FileJson(const FileChange& change) {
    std::vector<std::pair<std::string, std::string>> members = {{"change", JsonString(WordFor(change.kind))},
                                                                {"name", JsonString(change.name)}};
    if (change.kind == FileChangeKind::Renamed) {
        members.emplace_back("oldName", JsonString(change.oldName));
    }
    if (change.kind != FileChangeKind::Added) {
        members.emplace_back("oldSize", std::to_string(change.oldSize));
    }
    if (change.kind != FileChangeKind::Removed) {
        members.emplace_back("size", std::to_string(change.size));
    }
    if (change.isGCode) {
        members.emplace_back("lines", JsonArray(change.lines, LineJson));
    }
    return JsonObject(members);
}

std::string ValueJson(const ValueChange& change) {
    const auto json = [](const std::optional<std::wstring>& value) {
        return value ? JsonString(*value) : std::string("null");
    };
    return JsonObject({{"section", JsonString(change.section)},
                       {"key", JsonString(change.key)},
                       {"before", json(change.before)},
                       {"after", json(change.after)}});
}

std::string ComparisonJson(const Arguments& arguments, const care::Comparison& comparison) {
    return JsonObject({{"before", JsonString(arguments[0])},
                       {"after", JsonString(arguments[1])},
                       {"equal", JsonTruth(comparison.IsEqual())},
                       {"files", JsonArray(comparison.files, FileJson)},
                       {"values", JsonArray(comparison.values, ValueJson)},
                       {"removedHistory", JsonArray(comparison.removedHistory, HistoryJson)},
                       {"addedHistory", JsonArray(comparison.addedHistory, HistoryJson)}});
}

// Nothing after a failure that was reported.
std::optional<care::Comparison> CompareNamed(const Arguments& arguments) {
    const auto left = ReadPackage(arguments[0]);
    const auto right = left ? ReadPackage(arguments[1]) : std::nullopt;
    if (!right) {
        return {};
    }
    care::Comparison comparison = care::Compare(*left, *right);
    const std::vector<std::wstring> names = care::ChangedGCode(comparison);
    const auto leftTexts = ReadTexts(arguments[0], names);
    const auto rightTexts = leftTexts ? ReadTexts(arguments[1], names) : std::nullopt;
    if (!rightTexts) {
        return {};
    }
    care::CompareGCode(comparison, *leftTexts, *rightTexts, arguments.Has(L"--all-lines"));
    return comparison;
}

} // namespace

int Diff(const Arguments& arguments) {
    const std::optional<care::Comparison> comparison = CompareNamed(arguments);
    if (!comparison) {
        return kFailed;
    }
    if (arguments.Has(L"--json")) {
        PrintJson(ComparisonJson(arguments, *comparison));
    } else {
        PrintComparison(*comparison);
    }
    return arguments.Has(L"--exit-code") && !comparison->IsEqual() ? kFindings : kDone;
}
