# The tests that are built natively, and what they share.
set(TESTS ${CMAKE_SOURCE_DIR}/tests/mxovshare)
set(INI_ORACLE_SOURCES ${TESTS}/ini/EditComparison.cpp ${TESTS}/ini/PlainIni.cpp)
set(INI_NATIVE_TESTS
    ${TESTS}/ini/IniDocumentSizeTest.cpp
    ${TESTS}/ini/IniDocumentTest.cpp
    ${TESTS}/ini/IniEncodingTest.cpp
    ${TESTS}/ini/IniLimitsTest.cpp
    ${TESTS}/ini/IniRandomEditTest.cpp
    ${TESTS}/ini/IniValueTest.cpp)
set(PACKAGE_FORGE_SOURCES ${TESTS}/zip/MemoryFile.cpp ${TESTS}/zip/ZipForge.cpp)
set(PACKAGE_NATIVE_TESTS
    ${TESTS}/pack/JobQueueTest.cpp
    ${TESTS}/pack/VerifiedEntryCacheTest.cpp
    ${TESTS}/text/Utf8Test.cpp
    ${TESTS}/zip/ChecksumTest.cpp
    ${TESTS}/zip/EntryNameTest.cpp
    ${TESTS}/zip/EntryReaderTest.cpp
    ${TESTS}/zip/ZipDirectoryTest.cpp
    ${TESTS}/zip/ZipEndTest.cpp
    ${TESTS}/zip/ZipExtraTest.cpp
    ${TESTS}/zip/ZipWriterTest.cpp)
