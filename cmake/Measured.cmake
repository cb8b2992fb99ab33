# Builds that measure the tests (MXOV_MEASURE): "lines" counts which lines of the module, the host's library and the framework
# run; "changes" compiles each of their sources on its own and quickly, for one changed source after the other.
foreach(folder framework mxovshare MXOVDocViewCtrl)
    get_property(targets DIRECTORY ${CMAKE_SOURCE_DIR}/${folder} PROPERTY BUILDSYSTEM_TARGETS)
    foreach(target IN LISTS targets)
        get_target_property(type ${target} TYPE)
        if(NOT type MATCHES "LIBRARY")
            continue()
        elseif(MXOV_MEASURE STREQUAL lines)
            target_compile_options(${target} PRIVATE
                $<$<COMPILE_LANGUAGE:CXX>:-O0;--coverage;-fprofile-update=atomic>)
            target_link_options(${target} PUBLIC --coverage)
        else()
            target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-O0;-g0;-w>)
            set_target_properties(${target} PROPERTIES UNITY_BUILD OFF)
        endif()
    endforeach()
endforeach()
