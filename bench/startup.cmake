# Start-up of the control in a container, compared with a control that has one list view.
add_library(minimal_control SHARED
    MinimalControl.cpp
    MinimalControl.def
    MinimalControl.rc)
target_link_libraries(minimal_control PRIVATE framework warnings)
mxov_quick_load(minimal_control)
target_link_options(minimal_control PRIVATE -s)
set_target_properties(minimal_control PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${MXOV_BUILD}/bench PREFIX "")
set_source_files_properties(MinimalControl.rc PROPERTIES
    COMPILE_OPTIONS "-I;${MXOV_BUILD}/generated"
    OBJECT_DEPENDS ${MXOV_BUILD}/generated/MXOVDocViewCtrl.manifest)
mxov_bench(startup_bench
    SOURCES startup_bench.cpp StartupSubjects.cpp
    LIBRARIES atl comctl32 gdi32 ole32 uuid)
add_dependencies(startup_bench minimal_control MXOVDocViewCtrl mxovshare)
target_link_options(startup_bench PRIVATE -municode)
# Start-up of the viewer, compared with the system's editor.
mxov_bench(viewer_bench SOURCES viewer_bench.cpp)
add_dependencies(viewer_bench viewer)
target_link_options(viewer_bench PRIVATE -municode)
