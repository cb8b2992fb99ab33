# Tests of the framework's OLE half: a program of their own, with a type library of its own.
find_path(OLE_IDL_FOLDER oaidl.idl PATHS /usr/include/wine/wine/windows /usr/include/wine/windows
          NO_CMAKE_FIND_ROOT_PATH REQUIRED)
find_path(OLE_TLB_FOLDER stdole2.tlb PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows
          NO_CMAKE_FIND_ROOT_PATH REQUIRED)
find_program(OLE_WIDL x86_64-w64-mingw32-widl REQUIRED)
set(ole_generated ${MXOV_BUILD}/generated/framework)
set(ole_idl ${CMAKE_CURRENT_SOURCE_DIR}/support/OleTest.idl)
set(ole_widl ${OLE_WIDL} -m64 -I ${OLE_IDL_FOLDER} -L ${OLE_TLB_FOLDER})
file(MAKE_DIRECTORY ${ole_generated})
add_custom_command(
    OUTPUT ${ole_generated}/OleTest.tlb ${ole_generated}/OleTest.h ${ole_generated}/OleTest_i.c
    COMMAND ${ole_widl} -t -o ${ole_generated}/OleTest.tlb ${ole_idl}
    COMMAND ${ole_widl} -h -o ${ole_generated}/OleTest.h ${ole_idl}
    COMMAND ${ole_widl} -u -o ${ole_generated}/OleTest_i.c ${ole_idl}
    DEPENDS ${ole_idl}
    VERBATIM)
add_custom_target(ole_test_idl DEPENDS ${ole_generated}/OleTest.h)
add_library(ole_test_guids STATIC ${ole_generated}/OleTest_i.c ${ole_generated}/OleTest.h ${ole_generated}/OleTest.tlb)
target_include_directories(ole_test_guids SYSTEM INTERFACE ${ole_generated})

set_source_files_properties(support/OleTest.rc PROPERTIES OBJECT_DEPENDS ${ole_generated}/OleTest.tlb)
mxov_test(framework_ole_tests DESKTOP PARALLEL
    SOURCES
        control/ControlActivationTest.cpp
        control/ControlConnectionTest.cpp
        control/ControlKeyboardTest.cpp
        control/ControlPersistTest.cpp
        control/ControlTest.cpp
        control/ControlViewTest.cpp
        ole/OleDispatchTest.cpp
        ole/OleFactoryTest.cpp
        ole/OleIdentityTest.cpp
        ole/OleThreadTest.cpp
        support/OleTest.rc
        support/OleTestControl.cpp
        control/PropertyPageTest.cpp
        ole/RegistrationTest.cpp
        ${CMAKE_SOURCE_DIR}/MXOVDocViewCtrl/control/DialogControl.cpp
    LIBRARIES framework ole_test_guids)
target_include_directories(framework_ole_tests PRIVATE support ${ole_generated} ${CMAKE_SOURCE_DIR}/MXOVDocViewCtrl)

# A dispatch map entry with its member's types compiles, one with others does not.
foreach(flag RIGHT_TYPES WRONG_TYPES)
    add_test(NAME dispatch_entry_${flag} COMMAND ${CMAKE_CXX_COMPILER} -std=c++20 -DUNICODE -D_UNICODE -DNOMINMAX
        -D_WIN32_WINNT=0x0A00 -D${flag} -I${CMAKE_SOURCE_DIR}/framework -fsyntax-only
        ${CMAKE_CURRENT_SOURCE_DIR}/ole/OleWrongEntry.cpp)
endforeach()
set_tests_properties(dispatch_entry_WRONG_TYPES PROPERTIES
    PASS_REGULAR_EXPRESSION "the types of the dispatch map entry are not those of the member")
