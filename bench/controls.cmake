# The group boxes, in the parent window of their tests.
set(controls_test_folder ${CMAKE_SOURCE_DIR}/tests/MXOVDocViewCtrl/controls)
mxov_bench(controls_bench
    SOURCES controls_bench.cpp ${controls_test_folder}/BoxParent.cpp
    LIBRARIES mxov_controls)
target_include_directories(controls_bench PRIVATE ${controls_test_folder})
