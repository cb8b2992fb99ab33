// Times of the file system and of the container.
#pragma once

#include "zip/ZipEntry.h"

#include <windows.h>

namespace mxovshare {

ZipTime ToZipTime(const FILETIME& utc);

/// UTC; zero for a time that is unknown.
FILETIME ToFileTime(const ZipTime& time);

} // namespace mxovshare
