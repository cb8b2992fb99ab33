// What is wrong with a package, or may become a problem, and what cures it.
#pragma once

#include "care/Information.h"

#include <package/CatalogueSource.h>

#include <functional>

namespace care {

enum class Severity {
    Error,   ///< the package must not be used as it is
    Warning, ///< something is missing or misleading
    Note,    ///< worth knowing
};

/// Names of findings, stable for programs.
namespace finding {
inline constexpr wchar_t kDamaged[] = L"damaged";
inline constexpr wchar_t kLeavesFolder[] = L"leaves-folder";
inline constexpr wchar_t kOtherComputer[] = L"other-computer";
inline constexpr wchar_t kLinkMissing[] = L"link-missing";
inline constexpr wchar_t kCopyMissing[] = L"copy-missing";
inline constexpr wchar_t kPreviewMissing[] = L"preview-missing";
inline constexpr wchar_t kNoInformation[] = L"no-information";
inline constexpr wchar_t kLinkNewer[] = L"link-newer";
inline constexpr wchar_t kPersonalFolder[] = L"personal-folder";
inline constexpr wchar_t kNotShown[] = L"not-shown";
inline constexpr wchar_t kShared[] = L"shared-file";
inline constexpr wchar_t kHistoryOrder[] = L"history-order";
inline constexpr wchar_t kFuture[] = L"future-date";
inline constexpr wchar_t kOldVersion[] = L"old-version";
} // namespace finding

/// The message of a finding and its arguments; EnglishMessage formats it.
enum class FindingText {
    Damaged,        ///< %1: the reason
    LeavesFolder,   ///< %1: section or key, %2: path
    OtherComputer,  ///< the same
    LinkMissing,    ///< %1: path
    LinkUnanswered, ///< %1: path, whose computer does not answer
    CopyMissing,    ///< %1: path
    PreviewMissing, ///< %1: path
    NoInformation,
    LinkNewer,      ///< %1: path, %2: recorded date
    PersonalFolder, ///< %1: path
    NotShown,       ///< %1: path
    Shared,         ///< %1 and %2: sections, %3: path
    HistoryOrder,   ///< %1: section, %2: its date, %3: the date before
    Future,         ///< %1: section and key, %2: date
    OldVersion,     ///< %1: version
};

struct Finding {
    Severity severity = Severity::Warning;
    const wchar_t* code = L""; ///< one of the names above
    std::wstring section;      ///< of the information file; empty for a file of the package
    std::wstring key;          ///< of that section, which holds what was found; may be empty
    std::wstring document;     ///< path as the package has it
    FindingText text = FindingText::Damaged;
    std::vector<std::wstring> inserts; ///< of the text, in the order of their numbers
};

/// One line that names the document.
[[nodiscard]] std::wstring EnglishMessage(const Finding& finding);
/// What to do, for users of the command line; empty when nothing is known.
[[nodiscard]] std::wstring EnglishCure(const Finding& finding);

/// Why a path of the information file may not be followed, as the end of a sentence; null when it may.
const wchar_t* PathFault(const std::wstring& path);

/// Whether links may lead to other computers. Documents of the package itself never may.
enum class OtherComputers { Refused, Asked };

/// Gets one finding after the other, since a package can cause more of them than memory should hold.
using FindingSink = std::function<void(const Finding&)>;

/// A package that is checked, whose entries are sound.
struct CheckedPackage {
    const std::vector<mxovshare::PackageEntry>& entries;
    const Sections& sections;
    /// That package below `folder`; answers for files on the disk as well, on other computers too if those
    /// are asked.
    const docview::CatalogueSource& source;
    const std::wstring& folder;
    OtherComputers others;
};

/// Passes everything that is found to `take`; `now` is UTC.
void FindFaults(const CheckedPackage& package, const FILETIME& now, const FindingSink& take);

/// Only the errors among them: paths that may not be followed.
void FindErrors(const CheckedPackage& package, const FindingSink& take);

/// A finding that a package is damaged, whose entries are not sound.
[[nodiscard]] Finding DamageOf(const std::wstring& reason);

} // namespace care
