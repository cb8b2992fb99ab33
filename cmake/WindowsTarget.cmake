# Settings for everything built for Windows, and the helpers that declare delivered files.
add_compile_definitions(UNICODE _UNICODE STRICT NOMINMAX WIN32_LEAN_AND_MEAN WINVER=0x0A00 _WIN32_WINNT=0x0A00
                        NTDDI_VERSION=0x0A000000)
add_compile_options($<$<COMPILE_LANGUAGE:C,CXX>:-fstack-protector-strong>)
# Paths of this machine do not get into the files, so that builds in different folders have the same bytes.
add_compile_options("$<$<COMPILE_LANGUAGE:C,CXX>:-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.>"
                    "$<$<COMPILE_LANGUAGE:C,CXX>:-ffile-prefix-map=${CMAKE_BINARY_DIR}=build>")
# The version resource of every file: common/version.rc.
foreach(part MAJOR MINOR PATCH)
    add_compile_definitions("$<$<COMPILE_LANGUAGE:RC>:MXOV_VERSION_${part}=${PROJECT_VERSION_${part}}>")
endforeach()
set_property(DIRECTORY APPEND PROPERTY COMPILE_OPTIONS "$<$<COMPILE_LANGUAGE:RC>:-I${CMAKE_SOURCE_DIR}/common>")
add_link_options(-static -fstack-protector-strong -Wl,--no-insert-timestamp -Wl,--nxcompat -Wl,--dynamicbase)
# Line numbers are enough for a crash report and take half the build time of full debug information.
set(CMAKE_C_FLAGS_RELWITHDEBINFO "-O2 -g1 -DNDEBUG")
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g1 -DNDEBUG")
set(CMAKE_RC_FLAGS "-c 65001")
set(CMAKE_UNITY_BUILD ${MXOV_UNITY})
set(MXOV_BIN ${MXOV_BUILD}/bin)

# Makes a library or program quick to load: its stack guard is drawn without loading other libraries, its end by an uncaught
# exception needs no demangler, and its sections lie in the file as they do in memory, so that they are mapped and not read.
function(mxov_quick_load target)
    target_sources(${target} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/StackGuard.c ${CMAKE_SOURCE_DIR}/cmake/Terminate.cpp)
    target_link_options(${target} PRIVATE -Wl,--file-alignment,4096)
endfunction()

# Gives a library its own preferred address, derived from its name. The linker's own choice depends on the build's folder.
function(mxov_fix_address target)
    string(MD5 digest ${target})
    string(SUBSTRING ${digest} 0 4 place)
    target_link_options(${target} PRIVATE -Wl,--disable-auto-image-base -Wl,--image-base,0x2${place}0000)
endfunction()

# Puts a stripped file, without what nothing in it refers to, into the bin folder; its symbols, and a map that names what
# was linked in, stay beside the object files. Without --preserve-dates strip writes the current time into the file's header.
function(mxov_deliver target)
    mxov_quick_load(${target})
    get_target_property(type ${target} TYPE)
    if(NOT type STREQUAL EXECUTABLE)
        mxov_fix_address(${target})
    endif()
    target_link_options(${target} PRIVATE -Wl,--gc-sections -Wl,-Map,${CMAKE_BINARY_DIR}/${target}.map)
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${MXOV_BIN} PREFIX "")
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND ${CMAKE_OBJCOPY} --only-keep-debug $<TARGET_FILE:${target}>
                ${CMAKE_BINARY_DIR}/$<TARGET_FILE_NAME:${target}>.debug
        COMMAND ${CMAKE_STRIP} --preserve-dates --strip-debug --strip-unneeded $<TARGET_FILE:${target}>
        VERBATIM)
endfunction()

# The languages other than English, as the folders of their texts and help files are named.
set(MXOV_LANGUAGES german french japanese portuguese-brazilian)

# A resource-only module with the texts of a language, lang/<language>/NAME.dll beside the file that `owner` builds:
# mxov_satellite(OWNER NAME LANGUAGE SCRIPT)
function(mxov_satellite owner name language script)
    set(target ${name}_${language})
    add_library(${target} MODULE ${script})
    target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR}/resources)
    target_link_options(${target} PRIVATE -nostdlib -Wl,--entry=0)
    mxov_fix_address(${target})
    set_target_properties(${target} PROPERTIES
        LINKER_LANGUAGE C
        LIBRARY_OUTPUT_DIRECTORY ${MXOV_BIN}/lang/${language}
        OUTPUT_NAME ${name}
        PREFIX "")
    add_dependencies(${owner} ${target})
endfunction()
