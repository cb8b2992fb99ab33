// What is wrong with a package, or may become a problem, and what cures it.
#pragma once

#include "care/Information.h"

#include <package/CatalogueSource.h>
#include <package/ItemText.h>

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

struct Finding {
    Severity severity = Severity::Warning;
    const wchar_t* code = L""; ///< one of the names above
    std::wstring section;      ///< of the information file; empty for a file of the package
    std::wstring key;          ///< of that section, which holds what was found; may be empty
    std::wstring document;     ///< path as the package has it
    std::wstring message;      ///< one line that names the document
    std::wstring cure;         ///< what to do; empty when nothing is known
};

/// Why a path of the information file may not be followed, as the end of a sentence; null when it may.
const wchar_t* PathFault(const std::wstring& path);

/// Whether links may lead to other computers. Documents of the package itself never may.
enum class OtherComputers { Refused, Asked };

/// Gets one finding after the other, since a package can cause more of them than memory should hold.
using FindingSink = std::function<void(const Finding&)>;

/// Passes everything that is found in a package whose entries are sound to `take`. `source` is that package
/// below `folder`, and answers for files on the disk as well, on other computers too if those are asked;
/// `now` is UTC.
void FindFaults(const std::vector<mxovshare::PackageEntry>& entries, const Sections& sections,
                const docview::CatalogueSource& source, const std::wstring& folder, const FILETIME& now,
                OtherComputers others, const FindingSink& take);

/// Only the errors among them: paths that may not be followed.
void FindErrors(const Sections& sections, const docview::CatalogueSource& source, OtherComputers others,
                const FindingSink& take);

} // namespace care
