# Random calls and messages, failing allocations, and many cycles; the runner tells crashes, leaks and hangs.
add_executable(control_fuzz
    ControlObject.cpp
    PackageBuilder.cpp
    fuzz/AllocationFaults.cpp
    fuzz/Cycles.cpp
    fuzz/ImportHook.cpp
    fuzz/InvokeFuzz.cpp
    fuzz/InvokeValues.cpp
    fuzz/Main.cpp
    fuzz/MessageFuzz.cpp
    fuzz/Progress.cpp
    ../support/MockContainer.cpp)
target_include_directories(control_fuzz PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(control_fuzz PRIVATE test_support gtest warnings comctl32 gdi32 ntdll ole32 oleaut32 uuid)
set_target_properties(control_fuzz PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${MXOV_BUILD}/tests)
add_dependencies(control_fuzz MXOVDocViewCtrl mxovshare)
# Longer runs by hand: MXOV_FUZZ_SECONDS=9000 tools/with-display tests/control/fuzz.sh invoke 100000000 7
function(mxov_fuzz name)
    add_test(NAME control.fuzz.${name} COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/fuzz.sh ${name} ${ARGN})
    set_tests_properties(control.fuzz.${name} PROPERTIES FIXTURES_REQUIRED registered_control TIMEOUT 660
        RESOURCE_LOCK desktop ENVIRONMENT MXOV_BUILD=${MXOV_BUILD})
endfunction()
mxov_fuzz(invoke 10000000 1)
mxov_fuzz(messages 1000000 1)
mxov_fuzz(allocations)
mxov_fuzz(cycles 400)
mxov_fuzz(planted)
