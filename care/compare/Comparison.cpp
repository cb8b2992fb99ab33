#include "care/compare/Comparison.h"

#include "care/compare/GCodeLines.h"
#include "care/Documents.h"
#include "common/InformationFile.h"
#include "common/Paths.h"

#include <package/CatalogueLoader.h>
#include <package/PackageInformation.h>

#include <algorithm>
#include <set>

using namespace docview;

namespace care {

namespace {

using mxovshare::PackageEntry;
using Files = std::vector<const PackageEntry*>;

constexpr auto kEntryName = [](const PackageEntry* entry) -> const std::wstring& { return entry->name; };
constexpr auto kContentOf = [](const auto& removed) {
    return std::pair(removed.entry->size, removed.entry->crc32);
};

// In the order of their names.
Files FilesOf(const PackageContent& content) {
    Files files;
    for (const PackageEntry& entry : content.entries) {
        if (!entry.isFolder && !common::IsSamePath(entry.name, common::kInformationFile) &&
            !common::IsSamePath(entry.name, common::kPrivateInformationFile)) {
            files.push_back(&entry);
        }
    }
    std::ranges::sort(files, NameLess(), kEntryName);
    return files;
}

bool HasSameContent(const PackageEntry& left, const PackageEntry& right) {
    return left.size == right.size && left.crc32 == right.crc32;
}

// The folder that shows the G-code, with its separator; none when no file is named.
std::optional<std::wstring> GCodeFolder(const PackageContent& content) {
    const std::wstring list = content.sections.Value(inikey::kFileInfo, inikey::kGCode);
    return FirstEntry(list).empty() ? std::nullopt : std::optional(FolderOfList(list, {}));
}

bool IsIn(const std::optional<std::wstring>& folder, const std::wstring& name) {
    return folder && common::IsSamePath(name.substr(0, name.rfind(L'\\') + 1), *folder);
}

// Passes what stands under one name in two ranges that are sorted by name; null for what one of them lacks.
template <typename Range, typename NameOf, typename Visit>
void ForEachPair(const Range& left, const Range& right, NameOf nameOf, Visit visit) {
    const NameLess isLess;
    auto one = left.begin();
    auto other = right.begin();
    while (one != left.end() || other != right.end()) {
        const bool isOnlyOne =
            other == right.end() || (one != left.end() && isLess(nameOf(*one), nameOf(*other)));
        const bool isOnlyOther =
            one == left.end() || (other != right.end() && isLess(nameOf(*other), nameOf(*one)));
        visit(isOnlyOther ? nullptr : &*one, isOnlyOne ? nullptr : &*other);
        one += isOnlyOther ? 0 : 1;
        other += isOnlyOne ? 0 : 1;
    }
}

class FileComparison {
public:
    FileComparison(const PackageContent& left, const PackageContent& right)
        : m_leftGCode(GCodeFolder(left)), m_rightGCode(GCodeFolder(right)) {
        FindDifferent(FilesOf(left), FilesOf(right));
        std::ranges::stable_sort(m_removed, {}, kContentOf);
        m_changes.reserve(m_changes.size() + m_added.size() + m_removed.size());
    }

    std::vector<FileChange> Make() {
        for (const PackageEntry* entry : m_added) {
            AddNew(*entry);
        }
        AddRemoved();
        std::ranges::sort(m_changes, NameLess(), &FileChange::name);
        return std::move(m_changes);
    }

private:
    struct Removed {
        const PackageEntry* entry;
        std::ptrdiff_t renamed; // in the first file of a content: how many of that content were renamed
    };

    void FindDifferent(const Files& left, const Files& right) {
        ForEachPair(left, right, kEntryName,
                    [this](const PackageEntry* const* before, const PackageEntry* const* after) {
                        if (after == nullptr) {
                            m_removed.push_back({*before, 0});
                        } else if (before == nullptr) {
                            m_added.push_back(*after);
                        } else if (!HasSameContent(**before, **after)) {
                            AddChanged(**before, **after);
                        }
                    });
    }

    FileChange& Add(FileChangeKind kind, const PackageEntry* before, const PackageEntry* after) {
        FileChange& change = m_changes.emplace_back();
        change.kind = kind;
        change.name = (after != nullptr ? after : before)->name;
        change.oldName = kind == FileChangeKind::Renamed ? before->name : std::wstring();
        change.oldSize = before != nullptr ? before->size : 0;
        change.size = after != nullptr ? after->size : 0;
        return change;
    }

    // Empty files have equal content, so they do not identify a renamed file.
    void AddNew(const PackageEntry& entry) {
        const std::pair content(entry.size, entry.crc32);
        const auto first = std::ranges::lower_bound(m_removed, content, {}, kContentOf);
        const auto last = std::ranges::upper_bound(m_removed, content, {}, kContentOf);
        if (entry.size == 0 || first == last || first->renamed == last - first) {
            Add(FileChangeKind::Added, nullptr, &entry);
            return;
        }
        const PackageEntry* before = first[first->renamed++].entry;
        Add(FileChangeKind::Renamed, before, &entry);
    }

    void AddRemoved() {
        std::ptrdiff_t renamed = 0;
        for (std::size_t at = 0; at < m_removed.size(); ++at) {
            if (at == 0 || kContentOf(m_removed[at]) != kContentOf(m_removed[at - 1])) {
                renamed = m_removed[at].renamed;
            }
            if (renamed > 0) {
                --renamed;
            } else {
                Add(FileChangeKind::Removed, m_removed[at].entry, nullptr);
            }
        }
    }

    void AddChanged(const PackageEntry& before, const PackageEntry& after) {
        const bool isShort = std::max(before.size, after.size) <= kLargestComparedText;
        const bool isGCode = IsIn(m_leftGCode, before.name) && IsIn(m_rightGCode, after.name);
        Add(FileChangeKind::Changed, &before, &after).isGCode = isGCode && isShort;
    }

    std::optional<std::wstring> m_leftGCode;
    std::optional<std::wstring> m_rightGCode;
    std::vector<Removed> m_removed;
    std::vector<const PackageEntry*> m_added;
    std::vector<FileChange> m_changes;
};

using Values = std::vector<const std::pair<std::wstring, std::wstring>*>;

Values ValuesOf(const std::optional<Section>& section) {
    return section ? ValuesByKey(*section) : Values();
}

void CompareValues(const std::wstring& section, const Values& left, const Values& right,
                   const ValueSink& take) {
    const auto keyOf = [](const auto* pair) -> const std::wstring& { return pair->first; };
    ForEachPair(left, right, keyOf, [&](const auto* before, const auto* after) {
        ValueChange change = {.section = section,
                              .key = (before != nullptr ? *before : *after)->first,
                              .before = {},
                              .after = {}};
        if (before != nullptr) {
            change.before = (*before)->second;
        }
        if (after != nullptr) {
            change.after = (*after)->second;
        }
        if (change.before != change.after) {
            take(change);
        }
    });
}

bool HasSameValues(const Values& left, const Values& right) {
    return std::ranges::equal(left, right, [](const auto* one, const auto* other) { return *one == *other; });
}

std::set<std::wstring, NameLess> SectionNames(const Sections& left, const Sections& right) {
    std::set<std::wstring, NameLess> names;
    for (const Sections* sections : {&left, &right}) {
        for (std::wstring& name : sections->SectionNames({})) {
            names.insert(std::move(name));
        }
    }
    return names;
}

} // namespace

std::vector<FileChange> CompareFiles(const PackageContent& left, const PackageContent& right) {
    return FileComparison(left, right).Make();
}

void ForEachChangedValue(const Sections& left, const Sections& right, const ValueSink& take) {
    for (const std::wstring& name : SectionNames(left, right)) {
        if (!HasPrefix(name, inikey::kHistoryPrefix)) {
            const std::optional<Section> old = left.Find(name);
            const std::optional<Section> now = right.Find(name);
            CompareValues(name, ValuesOf(old), ValuesOf(now), take);
        }
    }
}

void ForEachChangedEntry(const Sections& left, const Sections& right, const EntrySink& take) {
    for (const std::wstring& name : SectionNames(left, right)) {
        if (HasPrefix(name, inikey::kHistoryPrefix)) {
            const std::optional<Section> old = left.Find(name);
            const std::optional<Section> now = right.Find(name);
            if (!HasSameValues(ValuesOf(old), ValuesOf(now))) {
                take(old, now);
            }
        }
    }
}

Comparison Compare(const PackageContent& left, const PackageContent& right) {
    Comparison comparison;
    comparison.files = CompareFiles(left, right);
    ForEachChangedValue(left.sections, right.sections,
                        [&](const ValueChange& change) { comparison.values.push_back(change); });
    ForEachChangedEntry(left.sections, right.sections, [&](const auto& before, const auto& after) {
        if (before) {
            comparison.removedHistory.push_back(*before);
        }
        if (after) {
            comparison.addedHistory.push_back(*after);
        }
    });
    return comparison;
}

std::vector<std::wstring> ChangedGCode(const Comparison& comparison) {
    std::vector<std::wstring> names;
    for (const FileChange& change : comparison.files) {
        if (change.isGCode) {
            names.push_back(change.name);
        }
    }
    return names;
}

void CompareGCode(Comparison& comparison, const Texts& left, const Texts& right, bool isPlain) {
    for (FileChange& change : comparison.files) {
        if (change.isGCode) {
            change.lines =
                CompareLines(LinesOf(left.at(change.name), isPlain), LinesOf(right.at(change.name), isPlain));
        }
    }
    std::erase_if(comparison.files, [isPlain](const FileChange& change) {
        return change.isGCode && change.lines.empty() && !isPlain;
    });
}

} // namespace care
