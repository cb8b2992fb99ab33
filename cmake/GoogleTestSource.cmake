# GoogleTest from Debian's source package, so that it is built by the same compiler as the tests.
add_subdirectory(/usr/src/googletest/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL)
