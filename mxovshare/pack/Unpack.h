// Unpacking a package into a folder.
#pragma once

#include "files/WebMark.h"
#include "mxovpackage.h"

#include <functional>
#include <string>

namespace mxovshare {

/// Unpacks the package `file` into `folder`, which must not exist or be empty; missing folders above it are
/// created. Every file gets the mark of the web that the package has. `onUnpacked` is called at the end.
/// Throws FileFailure, PackageError, Cancelled or what `onUnpacked` throws after removing everything that it
/// had created.
void UnpackInto(const std::wstring& file, const std::wstring& folder, PackageProgress* progress,
                const std::function<void()>& onUnpacked, WebMark::StreamProbe hasStreams = HasStreams);

} // namespace mxovshare
