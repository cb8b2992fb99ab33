#include "care/compare/Comparison.h"

#include "care/compare/GCodeLines.h"
#include "care/Documents.h"
#include "common/InformationFile.h"
#include "common/Paths.h"

#include <package/CatalogueLoader.h>
#include <package/PackageInformation.h>

#include <algorithm>

using namespace docview;

namespace care {

namespace {

using mxovshare::PackageEntry;
using Files = std::map<std::wstring, const PackageEntry*, NameLess>;

Files FilesOf(const PackageContent& content) {
    Files files;
    for (const PackageEntry& entry : content.entries) {
        if (!entry.isFolder && !common::IsSamePath(entry.name, common::kInformationFile) &&
            !common::IsSamePath(entry.name, common::kPrivateInformationFile)) {
            files.emplace(entry.name, &entry);
        }
    }
    return files;
}

bool HasSameContent(const PackageEntry& left, const PackageEntry& right) {
    return left.size == right.size && left.crc32 == right.crc32;
}

class FileComparison {
public:
    FileComparison(const PackageContent& left, const PackageContent& right)
        : m_left(left), m_right(right), m_leftFiles(FilesOf(left)), m_rightFiles(FilesOf(right)) {}

    std::vector<FileChange> Make() {
        FindRemoved();
        for (const auto& [name, entry] : m_rightFiles) {
            const auto before = m_leftFiles.find(name);
            if (before == m_leftFiles.end()) {
                AddNew(*entry);
            } else if (!HasSameContent(*before->second, *entry)) {
                AddChanged(*before->second, *entry);
            }
        }
        for (const auto& [content, entry] : m_removed) {
            FileChange& change = m_changes.emplace_back();
            change.kind = FileChangeKind::Removed;
            change.name = entry->name;
            change.oldSize = entry->size;
        }
        std::ranges::sort(m_changes, NameLess(), &FileChange::name);
        return std::move(m_changes);
    }

private:
    using ContentKey = std::pair<std::uint64_t, std::uint32_t>;

    void FindRemoved() {
        for (const auto& [name, entry] : m_leftFiles) {
            if (!m_rightFiles.contains(name)) {
                m_removed.emplace(ContentKey(entry->size, entry->crc32), entry);
            }
        }
    }

    // Empty files have equal content, so they do not identify a renamed file.
    void AddNew(const PackageEntry& entry) {
        FileChange change;
        change.kind = FileChangeKind::Added;
        change.name = entry.name;
        change.size = entry.size;
        const auto old = m_removed.find(ContentKey(entry.size, entry.crc32));
        if (entry.size > 0 && old != m_removed.end()) {
            change.kind = FileChangeKind::Renamed;
            change.oldName = old->second->name;
            change.oldSize = old->second->size;
            m_removed.erase(old);
        }
        m_changes.push_back(std::move(change));
    }

    void AddChanged(const PackageEntry& before, const PackageEntry& after) {
        const bool isShort = std::max(before.size, after.size) <= kLargestComparedText;
        const bool isGCode = IsInListFolder(before.name, m_left.sections, inikey::kGCode) &&
                             IsInListFolder(after.name, m_right.sections, inikey::kGCode);
        m_changes.push_back({.kind = FileChangeKind::Changed,
                             .name = after.name,
                             .oldName = {},
                             .oldSize = before.size,
                             .size = after.size,
                             .isGCode = isGCode && isShort,
                             .lines = {}});
    }

    const PackageContent& m_left;
    const PackageContent& m_right;
    Files m_leftFiles;
    Files m_rightFiles;
    std::multimap<ContentKey, const PackageEntry*> m_removed;
    std::vector<FileChange> m_changes;
};

using Values = std::map<std::wstring, std::wstring, NameLess>;

Values ValuesOf(const Section* section) {
    Values values;
    if (section != nullptr) {
        for (const auto& [key, value] : section->values) {
            values.emplace(key, value);
        }
    }
    return values;
}

void CompareSection(const std::wstring& name, const Section* left, const Section* right,
                    std::vector<ValueChange>& changes) {
    const Values before = ValuesOf(left);
    const Values after = ValuesOf(right);
    Values both = before;
    both.insert(after.begin(), after.end());
    for (const auto& [key, value] : both) {
        const auto old = before.find(key);
        const auto now = after.find(key);
        ValueChange change = {.section = name, .key = key, .before = {}, .after = {}};
        if (old != before.end()) {
            change.before = old->second;
        }
        if (now != after.end()) {
            change.after = now->second;
        }
        if (change.before != change.after) {
            changes.push_back(std::move(change));
        }
    }
}

using SectionMap = std::map<std::wstring, const Section*, NameLess>;

SectionMap SectionsOf(const PackageContent& content) {
    SectionMap sections;
    for (const Section& section : content.sections) {
        sections.emplace(section.name, &section);
    }
    return sections;
}

const Section* SectionIn(const SectionMap& sections, const std::wstring& name) {
    const auto found = sections.find(name);
    return found != sections.end() ? found->second : nullptr;
}

void CompareSections(const PackageContent& left, const PackageContent& right, Comparison& comparison) {
    const SectionMap before = SectionsOf(left);
    const SectionMap after = SectionsOf(right);
    SectionMap both = before;
    both.insert(after.begin(), after.end());
    for (const auto& [name, any] : both) {
        const Section* old = SectionIn(before, name);
        const Section* now = SectionIn(after, name);
        if (!HasPrefix(name, inikey::kHistoryPrefix)) {
            CompareSection(name, old, now, comparison.values);
        } else if (ValuesOf(old) != ValuesOf(now)) {
            if (old != nullptr) {
                comparison.removedHistory.push_back(*old);
            }
            if (now != nullptr) {
                comparison.addedHistory.push_back(*now);
            }
        }
    }
}

} // namespace

Comparison Compare(const PackageContent& left, const PackageContent& right) {
    Comparison comparison;
    comparison.files = FileComparison(left, right).Make();
    CompareSections(left, right, comparison);
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
