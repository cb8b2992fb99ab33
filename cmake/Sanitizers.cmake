# The whole native build runs under AddressSanitizer and UndefinedBehaviorSanitizer.
add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
add_link_options(-fsanitize=address,undefined)
# Line numbers are enough for a report, and they build quickly.
set(CMAKE_C_FLAGS_RELWITHDEBINFO "-O1 -gline-tables-only -DNDEBUG")
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -gline-tables-only -DNDEBUG")
