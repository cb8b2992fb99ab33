# A build that counts which lines of the module, the host's library and the framework run (MXOV_MEASURE=lines, tools/coverage).
foreach(folder framework mxovshare MXOVDocViewCtrl)
    get_property(targets DIRECTORY ${CMAKE_SOURCE_DIR}/${folder} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
        get_target_property(type ${target} TYPE)
        if(type MATCHES "LIBRARY")
            target_compile_options(${target} PRIVATE
                $<$<COMPILE_LANGUAGE:CXX>:-O0;--coverage;-fprofile-update=atomic>)
            target_link_options(${target} PUBLIC --coverage)
        endif()
    endforeach()
endforeach()
