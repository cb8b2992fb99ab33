#include "compare/DifferenceLines.h"

#include "common/Paths.h"
#include "common/Utf8.h"
#include "compare/TextKinds.h"
#include "package/PackageInformation.h"
#include "package/Paths.h"
#include "package/ValueText.h"
#include "texts/Texts.h"

#include <care/compare/DocumentComparison.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <set>

namespace viewer {

namespace {

namespace keys = docview::inikey;
using ChangeKind = care::FileChangeKind;

constexpr std::size_t kMostLines = 50; // shown of one file

std::wstring OrNone(const std::wstring& value) {
    return value.empty() ? Text(IDS_NO_VALUE) : value;
}

std::wstring BeforeAndAfter(const std::wstring& before, const std::wstring& after) {
    return Text(IDS_BEFORE_AND_AFTER, {OrNone(before), OrNone(after)});
}

std::wstring BeforeAndAfter(const care::ValueChange& change) {
    return BeforeAndAfter(change.before.value_or(std::wstring()), change.after.value_or(std::wstring()));
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

// A key of the information file that has words of its own.
struct KnownKey {
    const wchar_t* key;
    UINT change;
    UINT subject;
};

constexpr std::array kKnownKeys = {
    KnownKey{keys::kVersion, IDS_KIND_CHANGED, IDS_SUBJECT_VERSION},
    KnownKey{keys::kCadPath, IDS_LINK_CHANGED, IDS_SUBJECT_PART},
    KnownKey{keys::kCadTime, IDS_DATE_CHANGED, IDS_SUBJECT_PART},
    KnownKey{keys::kCadDescription, IDS_DESCRIPTION_CHANGED, IDS_SUBJECT_PART},
    KnownKey{keys::kGCode, IDS_KIND_CHANGED, IDS_SUBJECT_PROGRAMS},
    KnownKey{keys::kGCodeDescription, IDS_DESCRIPTION_CHANGED, IDS_SUBJECT_PROGRAMS},
    KnownKey{keys::kSetupSheets, IDS_KIND_CHANGED, IDS_SUBJECT_SHEETS},
    KnownKey{keys::kSetupSheetsDescription, IDS_DESCRIPTION_CHANGED, IDS_SUBJECT_SHEETS},
    KnownKey{keys::kThumbnail, IDS_KIND_CHANGED, IDS_SUBJECT_PICTURE},
};

bool IsDocumentKey(const care::ValueChange& change) {
    constexpr std::array kDocumentKeys = {keys::kIsReferenced, keys::kDescription, keys::kTimestamp,
                                          keys::kFilePath};
    return care::HasPrefix(change.section, keys::kAdditionalPrefix) &&
           std::ranges::any_of(kDocumentKeys,
                               [&](const wchar_t* key) { return common::IsSamePath(change.key, key); });
}

// The lines of one comparison, in their order.
class DifferenceList {
public:
    DifferenceList(const care::PackageContent& before, const care::PackageContent& after)
        : m_before(before), m_after(after) {}

    std::vector<DifferenceLine> Make(const care::Comparison& comparison) {
        for (const care::DocumentChange& change :
             care::CompareDocuments(m_before.sections, m_after.sections)) {
            AddDocument(change);
        }
        std::ranges::for_each(comparison.files, [this](const care::FileChange& change) { AddFile(change); });
        for (const care::ValueChange& change : comparison.values) {
            if (!IsDocumentKey(change)) {
                AddValue(change);
            }
        }
        AddHistory(IDS_HISTORY_REMOVED, comparison.removedHistory);
        AddHistory(IDS_HISTORY_ADDED, comparison.addedHistory);
        return std::move(m_lines);
    }

private:
    void Add(UINT kind, const std::wstring& name, const std::wstring& details) {
        m_lines.push_back({.kind = Text(kind), .name = name, .details = details});
    }

    void AddDocument(const care::DocumentChange& change) {
        if (!change.before) {
            AddWhole(IDS_DOCUMENT_NEW, *change.after, m_shown);
        } else if (!change.after) {
            AddWhole(IDS_DOCUMENT_GONE, *change.before, m_gone);
        } else {
            AddChanges(*change.before, *change.after);
        }
    }

    // The line stands for the file of a copy, too.
    void AddWhole(UINT kind, const care::Document& document, std::set<std::wstring, care::NameLess>& files) {
        std::wstring details = Text(document.isCopy ? IDS_COPY_AT : IDS_LINK_TO, {OrNone(document.path)});
        if (document.description != care::kNoDescription && !document.description.empty()) {
            details += L"\r\n" + document.description;
        }
        Add(kind, FileName(document.path), details);
        if (document.isCopy) {
            files.insert(document.path);
        }
    }

    void AddChanges(const care::Document& before, const care::Document& after) {
        const std::wstring name = FileName(after.path);
        if (before.isCopy != after.isCopy) {
            Add(after.isCopy ? IDS_BECAME_COPY : IDS_BECAME_LINK, name,
                BeforeAndAfter(before.path, after.path));
            (after.isCopy ? m_shown : m_gone).insert(after.isCopy ? after.path : before.path);
        } else if (before.path != after.path) {
            Add(after.isCopy ? IDS_KIND_RENAMED : IDS_LINK_CHANGED, name,
                BeforeAndAfter(before.path, after.path));
        }
        if (before.description != after.description) {
            Add(IDS_DESCRIPTION_CHANGED, name, BeforeAndAfter(before.description, after.description));
        }
        if (before.timestamp != after.timestamp) {
            Add(IDS_DATE_CHANGED, name, BeforeAndAfter(before.timestamp, after.timestamp));
        }
    }

    void AddFile(const care::FileChange& change) {
        switch (change.kind) {
        case ChangeKind::Changed:
            m_lines.push_back(DescribeChangedFile(change, IDS_CONTENT_CHANGED));
            break;
        case ChangeKind::Renamed:
            Add(IDS_KIND_RENAMED, FileName(change.name), Text(IDS_RENAMED_FROM, {change.oldName}));
            break;
        case ChangeKind::Added:
            AddWholeFile(change, change.size, m_shown, m_after, IDS_DOCUMENT_NEW, IDS_KIND_ADDED);
            break;
        case ChangeKind::Removed:
            AddWholeFile(change, change.oldSize, m_gone, m_before, IDS_DOCUMENT_GONE, IDS_KIND_REMOVED);
            break;
        }
    }

    void AddWholeFile(const care::FileChange& change, std::uint64_t size,
                      const std::set<std::wstring, care::NameLess>& documents,
                      const care::PackageContent& content, UINT documentKind, UINT fileKind) {
        if (!documents.contains(change.name)) {
            Add(IsInList(change.name, content) ? documentKind : fileKind, FileName(change.name),
                ByteSizeText(size) + L"\r\n" + change.name);
        }
    }

    static bool IsInList(const std::wstring& file, const care::PackageContent& content) {
        return care::IsInListFolder(file, content.sections, keys::kGCode) ||
               care::IsInListFolder(file, content.sections, keys::kSetupSheets);
    }

    void AddValue(const care::ValueChange& change) {
        const auto* const known = std::ranges::find_if(
            kKnownKeys, [&](const KnownKey& each) { return common::IsSamePath(change.key, each.key); });
        if (common::IsSamePath(change.section, keys::kFileInfo) && known != std::end(kKnownKeys)) {
            Add(known->change, Text(known->subject), BeforeAndAfter(change));
        } else {
            AddUnknownValue(change);
        }
    }

    void AddUnknownValue(const care::ValueChange& change) {
        const std::wstring name = change.section + L"/" + change.key;
        if (!change.before) {
            Add(IDS_KIND_ADDED, name, *change.after);
        } else if (!change.after) {
            Add(IDS_KIND_REMOVED, name, *change.before);
        } else {
            Add(IDS_KIND_CHANGED, name, BeforeAndAfter(change));
        }
    }

    void AddHistory(UINT kind, const std::vector<care::Section>& entries) {
        for (const care::Section& entry : entries) {
            std::wstring details = care::ValueOf(entry, keys::kOperation);
            for (const wchar_t* key : {keys::kBy, keys::kRemarks}) {
                const std::wstring value = care::ValueOf(entry, key);
                details += value.empty() ? value : L", " + value;
            }
            Add(kind, care::ValueOf(entry, keys::kTime), details);
        }
    }

    const care::PackageContent& m_before;
    const care::PackageContent& m_after;
    std::set<std::wstring, care::NameLess> m_shown; // files that a line for an added document stands for
    std::set<std::wstring, care::NameLess> m_gone;  // the same of a removed one
    std::vector<DifferenceLine> m_lines;
};

} // namespace

DifferenceLine DescribeChangedFile(const care::FileChange& change, UINT kind) {
    DifferenceLine line = {
        .kind = Text(kind),
        .name = FileName(change.name),
        .details = Text(IDS_BEFORE_AND_AFTER, {ByteSizeText(change.oldSize), ByteSizeText(change.size)}) +
                   L"\r\n" + change.name + LinesText(change.lines)};
    line.textKind = change.isGCode ? TextKind::GCode : KindOfText(change.name);
    if (line.textKind) {
        line.file = change.name;
    }
    return line;
}

std::vector<DifferenceLine> DescribeDifferences(const care::PackageContent& before,
                                                const care::PackageContent& after,
                                                const care::Comparison& comparison) {
    return DifferenceList(before, after).Make(comparison);
}

} // namespace viewer
