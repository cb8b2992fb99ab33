# Target `warnings` for the project's own code: every warning is an error. -Wnon-virtual-dtor is omitted: COM interfaces
# have no virtual destructors, and -Wall reports a delete through one.
add_library(warnings INTERFACE)
target_compile_options(warnings INTERFACE
    $<$<COMPILE_LANGUAGE:CXX>:-Wall -Wextra -Wpedantic -Werror -Woverloaded-virtual>
    $<$<COMPILE_LANGUAGE:C>:-Wall -Wextra -Wpedantic -Werror>)
