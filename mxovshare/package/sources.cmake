# The container. ZIP_SOURCES are platform-free and also built natively with sanitizers. Paths are absolute.
set(ZIP_SOURCES)
foreach(name ByteSource CaseFold Deflate EntryName EntryReader JobQueue PackageError Utf8 ZipDirectory ZipEnd ZipExtra ZipLocal
             ZipWriter)
    list(APPEND ZIP_SOURCES ${CMAKE_CURRENT_LIST_DIR}/${name}.cpp)
endforeach()
set(MXOV_PACKAGE_SOURCES ${ZIP_SOURCES})
foreach(name DiskFile FilePieces FileTimes FolderPath FolderScan Notice OpenFolders PackageApi PackageContent
             PackageWork PackFolder ProgressWindow Regenerate Unchanged Unpack)
    list(APPEND MXOV_PACKAGE_SOURCES ${CMAKE_CURRENT_LIST_DIR}/${name}.cpp)
endforeach()
