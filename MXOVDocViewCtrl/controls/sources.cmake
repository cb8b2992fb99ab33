# The group boxes, and helpers for any dialog.
set(MXOV_CONTROLS_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/CollapseGroupBox.cpp
    ${CMAKE_CURRENT_LIST_DIR}/CollapseGroupBoxDrawing.cpp
    ${CMAKE_CURRENT_LIST_DIR}/MXOVGroupBoxEx.cpp
    ${CMAKE_CURRENT_LIST_DIR}/MXOVGroupBoxExPainting.cpp
    ${CMAKE_CURRENT_LIST_DIR}/RedrawPause.cpp)
