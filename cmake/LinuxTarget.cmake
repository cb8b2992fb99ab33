# Settings for what is built for Linux: the package command line with the distribution's compiler.
find_package(Threads REQUIRED)
find_package(ZLIB REQUIRED)
add_compile_definitions(MXOVSHARE_API=) # the library is linked in
add_compile_options(-fstack-protector-strong -ffile-prefix-map=${CMAKE_SOURCE_DIR}=. -ffile-prefix-map=${CMAKE_BINARY_DIR}=build)
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g1 -DNDEBUG")
set(CMAKE_UNITY_BUILD ${MXOV_UNITY})
