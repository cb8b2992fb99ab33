# The package container under the sanitizers, and its fuzz target.
find_package(ZLIB REQUIRED)
include(${MXOVSHARE}/zip/sources.cmake)

add_library(package_model STATIC ${CMAKE_SOURCE_DIR}/common/posix/UpperCase.cpp ${MXOVSHARE}/text/posix/UpperCase.cpp
    ${PACKAGE_FORGE_SOURCES} ${ZIP_SOURCES})
target_include_directories(package_model PUBLIC ${MXOVSHARE} ${TESTS}/zip ${CMAKE_SOURCE_DIR}/common/posix)
target_link_libraries(package_model PUBLIC fuzzed ZLIB::ZLIB PRIVATE warnings)
set_target_properties(package_model PROPERTIES UNITY_BUILD ${MXOV_UNITY})

add_executable(package_native_tests ${PACKAGE_NATIVE_TESTS})
target_link_libraries(package_native_tests PRIVATE package_model GTest::gtest_main warnings)
add_test(NAME package_native_tests COMMAND package_native_tests)

set(seeds ${CMAKE_CURRENT_BINARY_DIR}/package_seeds)
file(MAKE_DIRECTORY ${seeds})
add_executable(package_fuzz_seeds ${TESTS}/zip/FuzzSeeds.cpp)
target_link_libraries(package_fuzz_seeds PRIVATE package_model warnings)
add_custom_command(TARGET package_fuzz_seeds POST_BUILD COMMAND package_fuzz_seeds ${seeds} VERBATIM)

add_executable(package_fuzz ${TESTS}/zip/PackageFuzz.cpp)
target_link_libraries(package_fuzz PRIVATE package_model fuzzer warnings)
add_dependencies(package_fuzz package_fuzz_seeds)
add_test(NAME package_fuzz
    COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/fuzz.sh $<TARGET_FILE:package_fuzz> 2048
            ${CMAKE_CURRENT_BINARY_DIR}/package_corpus ${seeds})
