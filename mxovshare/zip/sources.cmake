# The container and the platform-free part of packing, also built natively with sanitizers. Paths are absolute.
set(ZIP_SOURCES
    files/ByteSource.cpp
    pack/JobQueue.cpp
    pack/VerifiedEntryCache.cpp
    text/CaseFold.cpp
    text/Utf8.cpp
    zip/ByteWindow.cpp
    zip/Checksum.cpp
    zip/Deflate.cpp
    zip/EntryName.cpp
    zip/EntryReader.cpp
    zip/PackageError.cpp
    zip/ZipDirectory.cpp
    zip/ZipEnd.cpp
    zip/ZipExtra.cpp
    zip/ZipLocal.cpp
    zip/ZipWriter.cpp)
list(TRANSFORM ZIP_SOURCES PREPEND ${CMAKE_CURRENT_LIST_DIR}/../)
