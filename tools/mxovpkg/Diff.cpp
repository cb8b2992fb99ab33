#include "Commands.h"
#include "History.h"
#include "output/JsonText.h"
#include "output/LineText.h"
#include "output/Report.h"
#include "PackageAccess.h"

#include <package/PackageInformation.h>

#include <algorithm>

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

void PrintSigned(const wchar_t* sign, const care::Section& entry) {
    PrintLine(sign +
              Escaped(entry.name + L": " + care::ValueOf(entry, inikey::kTime) + L" " +
                      care::ValueOf(entry, inikey::kBy) + L" " + care::ValueOf(entry, inikey::kOperation)));
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

// Two packages that were read, and what differs.
class Difference {
public:
    Difference(care::PackageContent left, care::PackageContent right)
        : m_left(std::move(left)), m_right(std::move(right)),
          m_comparison{.files = care::CompareFiles(m_left, m_right),
                       .values = {},
                       .removedHistory = {},
                       .addedHistory = {}} {}

    bool IsEqual() const { return m_isEqual; }

    // False after a failure that was reported.
    bool CompareGCode(const Arguments& arguments) {
        const std::vector<std::wstring> names = care::ChangedGCode(m_comparison);
        const auto leftTexts = ReadTexts(arguments[0], names);
        const auto rightTexts = leftTexts ? ReadTexts(arguments[1], names) : std::nullopt;
        if (!rightTexts) {
            return false;
        }
        care::CompareGCode(m_comparison, *leftTexts, *rightTexts, arguments.Has(L"--all-lines"));
        m_isEqual = m_comparison.files.empty();
        return true;
    }

    void Print() {
        std::ranges::for_each(m_comparison.files, PrintFileChange);
        ForEachValue([](const ValueChange& change) {
            PrintLine(Escaped(change.section + L"/" + change.key) + L": " + QuotedOrNone(change.before) +
                      L" -> " + QuotedOrNone(change.after));
        });
        ForEachRemoved([](const care::Section& entry) { PrintSigned(L"removed ", entry); });
        ForEachAdded([](const care::Section& entry) { PrintSigned(L"added ", entry); });
    }

    void PrintJson(const Arguments& arguments) {
        JsonListing listing({{"before", JsonString(arguments[0])}, {"after", JsonString(arguments[1])}},
                            "files");
        for (const FileChange& change : m_comparison.files) {
            listing.Print(FileJson(change));
        }
        listing.Next("values");
        ForEachValue([&listing](const ValueChange& change) { listing.Print(ValueJson(change)); });
        listing.Next("removedHistory");
        ForEachRemoved([&listing](const care::Section& entry) { listing.Print(HistoryJson(entry)); });
        listing.Next("addedHistory");
        ForEachAdded([&listing](const care::Section& entry) { listing.Print(HistoryJson(entry)); });
        listing.End({{"equal", JsonTruth(m_isEqual)}});
    }

private:
    void ForEachValue(const care::ValueSink& take) {
        care::ForEachChangedValue(m_left.sections, m_right.sections, [&](const ValueChange& change) {
            m_isEqual = false;
            take(change);
        });
    }

    template <typename Visit>
    void ForEachRemoved(Visit visit) {
        care::ForEachChangedEntry(m_left.sections, m_right.sections, [&](const auto& before, const auto&) {
            m_isEqual = false;
            if (before) {
                visit(*before);
            }
        });
    }

    template <typename Visit>
    void ForEachAdded(Visit visit) {
        care::ForEachChangedEntry(m_left.sections, m_right.sections, [&](const auto&, const auto& after) {
            if (after) {
                visit(*after);
            }
        });
    }

    care::PackageContent m_left;
    care::PackageContent m_right;
    care::Comparison m_comparison; // of the files; the rest is passed on
    bool m_isEqual = true;         // as far as it was compared
};

} // namespace

int Diff(const Arguments& arguments) {
    auto left = ReadPackage(arguments[0]);
    auto right = left ? ReadPackage(arguments[1]) : std::nullopt;
    if (!right) {
        return kFailed;
    }
    Difference difference(std::move(*left), std::move(*right));
    if (!difference.CompareGCode(arguments)) {
        return kFailed;
    }
    if (arguments.Has(L"--json")) {
        difference.PrintJson(arguments);
    } else {
        difference.Print();
    }
    return arguments.Has(L"--exit-code") && !difference.IsEqual() ? kFindings : kDone;
}
