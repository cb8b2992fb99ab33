// Taking the linked documents of a package along.
#pragma once

#include "care/Information.h"

#include <mxovchange.h>

namespace care {

/// A linked document and the name that its copy gets in the package.
struct TakenDocument {
    std::wstring path;
    std::wstring name;
};

/// A linked document that stays outside, and why.
struct LeftDocument {
    std::wstring path;
    std::wstring reason;
};

/// How a package becomes one that depends on no file outside.
struct Bundle {
    mxovshare::PackageChanges changes;
    std::vector<TakenDocument> taken;
    std::vector<LeftDocument> left;
};

/// Turns every link whose file exists into a copy, and adds the part as one more copy, unless a link to it
/// becomes one: the format holds the part as a path only, which stays. Names that are taken are numbered.
/// Other computers are asked only with `includeNetwork`.
Bundle PlanBundle(const Sections& sections, const std::vector<mxovshare::PackageEntry>& entries,
                  bool includeNetwork);

} // namespace care
