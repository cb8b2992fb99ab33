# Random calls and messages, failing allocations, and many cycles; the runner tells crashes, leaks and hangs.
mxov_test_program(control_fuzz
    SOURCES
        fuzz/AllocationFaults.cpp
        fuzz/Cycles.cpp
        fuzz/InvokeFuzz.cpp
        fuzz/InvokeValues.cpp
        fuzz/Main.cpp
        fuzz/MessageFuzz.cpp
        fuzz/Progress.cpp
    LIBRARIES control_test_support ntdll)
target_include_directories(control_fuzz PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
add_dependencies(control_fuzz MXOVDocViewCtrl mxovshare)

foreach(kind invoke messages allocations cycles planted)
    mxov_add_test(control.fuzz.${kind} DESKTOP TIMEOUT 660 COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/fuzz.sh ${kind})
endforeach()
