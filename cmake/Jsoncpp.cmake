# jsoncpp, whose interface vtrutils.dll exports unchanged beside its own. Its code is compiled as it
# came, without our warnings.
vtr_debian_source(libjsoncpp JSONCPP_SOURCE LICENCE LICENSE)

add_library(vtrutils_jsoncpp OBJECT
    ${JSONCPP_SOURCE}/src/lib_json/json_reader.cpp
    ${JSONCPP_SOURCE}/src/lib_json/json_value.cpp
    ${JSONCPP_SOURCE}/src/lib_json/json_writer.cpp)
target_compile_definitions(vtrutils_jsoncpp PRIVATE JSON_DLL_BUILD)
# What runs when the library is loaded must not wake the run-time's threads, which keep memory and handles
# for that at each load: no standard streams, which nothing here uses (this is the include guard of
# <iostream>), and no guard round the one static of json_value.cpp, which is made while the library is loaded.
target_compile_definitions(vtrutils_jsoncpp PRIVATE _GLIBCXX_IOSTREAM)
set_source_files_properties(${JSONCPP_SOURCE}/src/lib_json/json_value.cpp PROPERTIES
    COMPILE_OPTIONS -fno-threadsafe-statics)
target_include_directories(vtrutils_jsoncpp SYSTEM PUBLIC ${JSONCPP_SOURCE}/include)

install(DIRECTORY ${JSONCPP_SOURCE}/include/json DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
    FILES_MATCHING PATTERN *.h)
vtr_reproducible(vtrutils_jsoncpp)
vtr_debug_information(vtrutils_jsoncpp)
