# GoogleTest from Debian's source package, built with the same compiler as the tests.
add_subdirectory(/usr/src/googletest/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
