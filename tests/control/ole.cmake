# The control's interfaces, one by one, under hosts of every kind.
mxov_test(control_ole_tests DESKTOP
    SOURCES
        ActivationTest.cpp
        AtlContainerTest.cpp
        AutomationTest.cpp
        ControlObject.cpp
        EventTest.cpp
        IdentityTest.cpp
        InterfaceTest.cpp
        KeyboardTest.cpp
        ModalTest.cpp
        ModuleTest.cpp
        OleViewTest.cpp
        PackageBuilder.cpp
        PersistenceTest.cpp
        RegistrationErrorTest.cpp
        SharingTest.cpp
        fuzz/ImportHook.cpp
        ../support/ControlInterfaces.cpp
        ../support/MockContainer.cpp
    LIBRARIES atl comctl32 gdi32 ole32 oleaut32 uuid version)
set_source_files_properties(OleViewTest.cpp PROPERTIES
    COMPILE_DEFINITIONS MXOV_SHOWN_IDL="Z:${CMAKE_CURRENT_SOURCE_DIR}/MXOVDocView.shown.idl")
add_dependencies(control_ole_tests MXOVDocViewCtrl mxovshare)
set_tests_properties(control_ole_tests PROPERTIES FIXTURES_REQUIRED registered_control)

mxov_test(control_unload_tests DESKTOP
    SOURCES ControlObject.cpp PackageBuilder.cpp UnloadTest.cpp ../support/MockContainer.cpp
    LIBRARIES comctl32 ole32 oleaut32 uuid)
add_dependencies(control_unload_tests MXOVDocViewCtrl mxovshare)

include(fuzz.cmake)
include(guide.cmake)
