// How the open package differs from its file, which somebody else saved.
#pragma once

namespace viewer {

class PackageSession;
class PackageView;

/// Shows the differences, or why the file cannot be read.
void ComparePackage(PackageView& view, const PackageSession& session);

} // namespace viewer
