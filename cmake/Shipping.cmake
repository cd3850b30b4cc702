# vtr_reproducible(TARGET...): compiled to the same bytes wherever the sources and the build folder are.
# What is linked, besides, has no time stamp. Compiler caches make paths relative to the build folder.
function(vtr_reproducible)
    file(RELATIVE_PATH from_build ${PROJECT_BINARY_DIR} ${PROJECT_SOURCE_DIR})
    foreach(target IN LISTS ARGN)
        target_compile_options(${target} PRIVATE
            "$<$<COMPILE_LANGUAGE:C,CXX>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=vtrutils;-ffile-prefix-map=${from_build}=vtrutils/>")
        get_target_property(type ${target} TYPE)
        if(NOT type STREQUAL OBJECT_LIBRARY)
            target_link_options(${target} PRIVATE -Wl,--no-insert-timestamp)
        endif()
    endforeach()
endfunction()

# vtr_debug_information(TARGET...): the release build has debug information too.
function(vtr_debug_information)
    foreach(target IN LISTS ARGN)
        target_compile_options(${target} PRIVATE $<$<AND:$<CONFIG:Release>,$<COMPILE_LANGUAGE:C,CXX>>:-g>)
    endforeach()
endfunction()

# vtr_separate_symbols(TARGET): in the release build, debug information and names of a DLL are in a file
# of its own beside it, NAME.dll.debug, which GDB finds.
function(vtr_separate_symbols target)
    if(NOT CMAKE_BUILD_TYPE STREQUAL Release)
        return()
    endif()
    # Else these tools would write the time into what they change.
    set(dll $<TARGET_FILE:${target}>)
    set(symbols $<TARGET_FILE_NAME:${target}>.debug)
    add_custom_command(TARGET ${target} POST_BUILD WORKING_DIRECTORY $<TARGET_FILE_DIR:${target}>
        COMMAND ${CMAKE_OBJCOPY} --preserve-dates --only-keep-debug ${dll} ${symbols}
        COMMAND ${CMAKE_STRIP} --preserve-dates --strip-all ${dll}
        COMMAND ${CMAKE_OBJCOPY} --preserve-dates --add-gnu-debuglink=${symbols} ${dll}
        VERBATIM)
    install(FILES ${dll}.debug DESTINATION ${CMAKE_INSTALL_BINDIR})
endfunction()
