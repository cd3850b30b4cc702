# vtr_debian_source(NAME FOLDER_VARIABLE [LICENCE FILE]): the unpacked, unpatched-by-us sources of a
# Debian source package, at the version that scripts/sources.list pins. Fetched once into
# build/sources. LICENCE names the file that must travel with binaries that link the library.
function(vtr_debian_source name folder_variable)
    cmake_parse_arguments(PARSE_ARGV 2 arg "" "LICENCE" "")
    set(folder ${PROJECT_SOURCE_DIR}/build/sources/${name})
    execute_process(
        COMMAND ${PROJECT_SOURCE_DIR}/scripts/fetch-source.sh ${name} ${folder}
        RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "The sources of ${name} could not be fetched; see above")
    endif()
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
        ${PROJECT_SOURCE_DIR}/scripts/sources.list)
    if(arg_LICENCE)
        install(FILES ${folder}/${arg_LICENCE}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/vtrutils/licences RENAME ${name}.txt)
    endif()
    set(${folder_variable} ${folder} PARENT_SCOPE)
endfunction()
