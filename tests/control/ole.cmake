# The control's interfaces, one by one, under hosts of every kind.
mxov_test(control_ole_tests DESKTOP
    SOURCES
        ActivationTest.cpp
        AtlContainerTest.cpp
        AutomationTest.cpp
        EventTest.cpp
        IdentityTest.cpp
        InterfaceTest.cpp
        KeyboardTest.cpp
        ModalTest.cpp
        ModuleTest.cpp
        OleViewTest.cpp
        PersistenceTest.cpp
        RegistrationErrorTest.cpp
        SharingTest.cpp
    LIBRARIES control_test_support atl version)
set_source_files_properties(OleViewTest.cpp PROPERTIES
    COMPILE_DEFINITIONS MXOV_SHOWN_IDL="Z:${CMAKE_CURRENT_SOURCE_DIR}/MXOVDocView.shown.idl")
add_dependencies(control_ole_tests MXOVDocViewCtrl mxovshare)

mxov_test(control_unload_tests DESKTOP
    SOURCES UnloadTest.cpp
    LIBRARIES control_test_support)
add_dependencies(control_unload_tests MXOVDocViewCtrl mxovshare)
