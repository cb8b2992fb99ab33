# The group boxes and what else any dialog can use.
set(MXOV_CONTROLS_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/CollapseGroupBox.cpp
    ${CMAKE_CURRENT_LIST_DIR}/MXOVGroupBoxEx.cpp
    ${CMAKE_CURRENT_LIST_DIR}/RedrawPause.cpp)
