# Resource-only modules of the languages other than English, in lang/<language>/ beside the library. The folders have the
# names of those of the help files.
function(mxov_satellite language)
    set(target mxovtexts_${language})
    add_library(${target} MODULE resources/${language}.rc)
    target_include_directories(${target} PRIVATE resources)
    target_link_options(${target} PRIVATE -nostdlib -Wl,--entry=0)
    mxov_fix_address(${target})
    set_target_properties(${target} PROPERTIES
        LINKER_LANGUAGE C
        LIBRARY_OUTPUT_DIRECTORY ${MXOV_BIN}/lang/${language}
        OUTPUT_NAME mxovtexts
        PREFIX "")
    add_dependencies(mxovshare ${target})
endfunction()

foreach(language german french japanese portuguese-brazilian)
    mxov_satellite(${language})
endforeach()
