# Every sample of the host guide, taken from the page, built, and run by guide.sh.
set(guide ${CMAKE_SOURCE_DIR}/docs/host-guide.md)
set(guide_folder ${MXOV_BUILD}/guide)
set(guide_programs AtlHost LanguageHost SiteHost SideBySideHost)
list(TRANSFORM guide_programs PREPEND ${guide_folder}/ OUTPUT_VARIABLE guide_sources)
list(TRANSFORM guide_sources APPEND .cpp)
add_custom_command(OUTPUT ${guide_sources}
    COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/guide-samples ${guide} ${guide_folder}
    DEPENDS ${guide} guide-samples VERBATIM)
foreach(program ${guide_programs})
    add_executable(guide_${program} ${guide_folder}/${program}.cpp)
    target_link_options(guide_${program} PRIVATE -municode)
    target_link_libraries(guide_${program} PRIVATE warnings atl ole32 oleaut32 uuid)
    set_target_properties(guide_${program} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${guide_folder} OUTPUT_NAME ${program})
    add_dependencies(guide_${program} MXOVDocViewCtrl mxovshare)
endforeach()
target_link_libraries(guide_LanguageHost PRIVATE mxovshare)
mxov_add_test(control.guide DESKTOP COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/guide.sh registered)
mxov_add_test(control.guide.unregistered DESKTOP CLEAN COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/guide.sh unregistered)
