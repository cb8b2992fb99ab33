// What differs between two packages.
#pragma once

#include "care/compare/LineComparison.h"
#include "care/Information.h"

#include <functional>
#include <map>
#include <optional>

namespace care {

enum class FileChangeKind { Added, Removed, Changed, Renamed };

/// A file that only one package has, or that differs. A renamed one has the same content under another name.
struct FileChange {
    FileChangeKind kind = FileChangeKind::Changed;
    std::wstring name;    ///< in the second package; of a removed file in the first
    std::wstring oldName; ///< of a renamed file
    std::uint64_t oldSize = 0;
    std::uint64_t size = 0;
    bool isGCode = false; ///< and short enough to be compared line by line
    std::vector<LineDifference> lines;
};

/// A key of the information file that differs.
struct ValueChange {
    std::wstring section;
    std::wstring key;
    std::optional<std::wstring> before;
    std::optional<std::wstring> after;
};

struct Comparison {
    std::vector<FileChange> files;
    std::vector<ValueChange> values; ///< without those of the history
    std::vector<Section> removedHistory;
    std::vector<Section> addedHistory;

    bool IsEqual() const {
        return files.empty() && values.empty() && removedHistory.empty() && addedHistory.empty();
    }
};

/// Largest file that is compared line by line, in bytes.
inline constexpr std::uint64_t kLargestComparedText = std::uint64_t{64} << 20;

/// Compares two packages. Files are compared by size and checksum, whatever their dates; the information file
/// by its keys.
Comparison Compare(const PackageContent& left, const PackageContent& right);

/// Only the files.
std::vector<FileChange> CompareFiles(const PackageContent& left, const PackageContent& right);

// Only the information files. They may differ in more than memory should hold, so each difference is passed
// on.
using ValueSink = std::function<void(const ValueChange&)>;
/// A section that only one of them has, or both with other values.
using EntrySink =
    std::function<void(const std::optional<Section>& before, const std::optional<Section>& after)>;

/// Passes the keys that differ, without those of the history.
void ForEachChangedValue(const Sections& left, const Sections& right, const ValueSink& take);
/// Passes the entries of the history that differ.
void ForEachChangedEntry(const Sections& left, const Sections& right, const EntrySink& take);

/// Names of the changed G-code files, whose text CompareGCode needs.
std::vector<std::wstring> ChangedGCode(const Comparison& comparison);

/// The texts of some files by their names.
using Texts = std::map<std::wstring, std::string, NameLess>;

/// Compares the changed G-code line by line; see LinesOf for `isPlain`. Files without a difference are no
/// longer changed.
void CompareGCode(Comparison& comparison, const Texts& left, const Texts& right, bool isPlain);

} // namespace care
