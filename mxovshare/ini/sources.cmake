# The platform-free INI model, also built natively with sanitizers. Paths are absolute.
set(INI_MODEL_SOURCES
    ${CMAKE_CURRENT_LIST_DIR}/IniDocument.cpp
    ${CMAKE_CURRENT_LIST_DIR}/IniEncoding.cpp
    ${CMAKE_CURRENT_LIST_DIR}/IniIndex.cpp
    ${CMAKE_CURRENT_LIST_DIR}/IniName.cpp
    ${CMAKE_CURRENT_LIST_DIR}/IniValue.cpp)
