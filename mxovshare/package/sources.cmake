# The container. ZIP_SOURCES are platform-free and also built natively with sanitizers. Paths are absolute.
set(ZIP_SOURCES)
foreach(name ByteSource CaseFold Checksum Deflate EntryName EntryReader JobQueue PackageError ProvenData Utf8 ZipDirectory ZipEnd ZipExtra
             ZipLocal ZipWriter)
    list(APPEND ZIP_SOURCES ${CMAKE_CURRENT_LIST_DIR}/${name}.cpp)
endforeach()
set(MXOV_PACKAGE_SOURCES ${ZIP_SOURCES})
foreach(name DiskFile EarlyFlush FilePieces FileTimes FolderPath FolderScan Notice OpenFolders PackageApi
             PackageContent PackageWork Packer PackFolder ProgressWindow Regenerate Unchanged Unpack)
    list(APPEND MXOV_PACKAGE_SOURCES ${CMAKE_CURRENT_LIST_DIR}/${name}.cpp)
endforeach()
