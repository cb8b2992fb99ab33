# The properties popup, with the owner window and documents of its tests.
set(popup_test_folder ${CMAKE_SOURCE_DIR}/tests/MXOVDocViewCtrl/popup)
mxov_bench(popup_bench
    SOURCES popup_bench.cpp ${popup_test_folder}/PopupFixture.cpp
    LIBRARIES mxov_popup mxov_resources)
target_include_directories(popup_bench PRIVATE ${popup_test_folder})
