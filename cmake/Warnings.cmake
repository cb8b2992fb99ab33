# Link to the target `warnings` for the project's own code: every warning is an error.
add_library(warnings INTERFACE)
target_compile_options(warnings INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Werror -Wnon-virtual-dtor -Woverloaded-virtual>
    $<$<COMPILE_LANGUAGE:C>:-Wall -Wextra -Wpedantic -Werror>)
