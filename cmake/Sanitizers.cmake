# Everything of the native build runs under AddressSanitizer and UndefinedBehaviorSanitizer.
add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
add_link_options(-fsanitize=address,undefined)
# Built quickly: line numbers are all that a report needs.
set(CMAKE_C_FLAGS_RELWITHDEBINFO "-O1 -gline-tables-only -DNDEBUG")
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O1 -gline-tables-only -DNDEBUG")
