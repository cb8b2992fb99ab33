# Link to the target `warnings` for the project's own code: every warning is an error. Left out is the
# warning of non-virtual destructors: COM interfaces have none, and deleting through one is caught by -Wall.
add_library(warnings INTERFACE)
target_compile_options(warnings INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Werror -Woverloaded-virtual>
    $<$<COMPILE_LANGUAGE:C>:-Wall -Wextra -Wpedantic -Werror>)
