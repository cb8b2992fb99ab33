# The control's interfaces, one by one, under hosts of every kind.
mxov_test(control_ole_tests DESKTOP
    SOURCES
        ActivationTest.cpp
        AutomationTest.cpp
        ControlObject.cpp
        EventTest.cpp
        IdentityTest.cpp
        ModuleTest.cpp
        OleViewTest.cpp
        PackageBuilder.cpp
        PersistenceTest.cpp
        RegistrationErrorTest.cpp
        fuzz/ImportHook.cpp
        ../support/MockContainer.cpp
    LIBRARIES comctl32 gdi32 ole32 oleaut32 uuid version)
set_source_files_properties(OleViewTest.cpp PROPERTIES
    COMPILE_DEFINITIONS MXOV_SHOWN_IDL="Z:${CMAKE_CURRENT_SOURCE_DIR}/MXOVDocView.shown.idl")
add_dependencies(control_ole_tests MXOVDocViewCtrl mxovshare)
set_tests_properties(control_ole_tests PROPERTIES FIXTURES_REQUIRED registered_control)

# Random calls and messages, failing allocations, and many cycles; the runner tells crashes, leaks and hangs.
add_executable(control_fuzz
    ControlObject.cpp
    PackageBuilder.cpp
    fuzz/AllocationFaults.cpp
    fuzz/Cycles.cpp
    fuzz/ImportHook.cpp
    fuzz/InvokeFuzz.cpp
    fuzz/Main.cpp
    fuzz/MessageFuzz.cpp
    fuzz/Resources.cpp
    ../support/MockContainer.cpp)
target_include_directories(control_fuzz PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(control_fuzz PRIVATE test_support gtest warnings comctl32 gdi32 ntdll ole32 oleaut32 uuid)
set_target_properties(control_fuzz PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${MXOV_BUILD}/tests)
add_dependencies(control_fuzz MXOVDocViewCtrl mxovshare)
# Counts that fit a test run; longer ones by hand: tools/with-display tests/control/fuzz.sh invoke 100000000 7
function(mxov_fuzz name)
    add_test(NAME control.fuzz.${name} COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/fuzz.sh ${name} ${ARGN})
    set_tests_properties(control.fuzz.${name} PROPERTIES FIXTURES_REQUIRED registered_control TIMEOUT 1600
        RESOURCE_LOCK desktop ENVIRONMENT MXOV_BUILD=${MXOV_BUILD})
endfunction()
mxov_fuzz(invoke 100000 1)
mxov_fuzz(messages 300000 1)
mxov_fuzz(allocations)
mxov_fuzz(cycles 150)
mxov_fuzz(planted)
include(guide.cmake)
