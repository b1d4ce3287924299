# delay_import_library(NAME DLL): builds lib${NAME}_delay.a, an import library
# for every export of DLL whose functions load the DLL on first call instead
# of at start-up. The list of exports comes from MinGW's own import library.
function(delay_import_library name dll)
    set(out ${CMAKE_BINARY_DIR}/delayimp/lib${name}_delay.a)
    set(def ${CMAKE_BINARY_DIR}/delayimp/${name}.def)
    find_file(${name}_import_lib lib${name}.a PATHS ${CMAKE_FIND_ROOT_PATH}/lib
              NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH REQUIRED)
    set(import_lib ${${name}_import_lib})
    string(REGEX REPLACE "g\\+\\+.*$" "" prefix ${CMAKE_CXX_COMPILER})
    add_custom_command(OUTPUT ${out}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/delayimp
        COMMAND sh -c "{ echo 'LIBRARY ${dll}'; echo EXPORTS; ${prefix}nm '${import_lib}' | sed -n 's/.* I __imp_//p' | sort -u; } > '${def}'"
        COMMAND ${prefix}dlltool -d ${def} -y ${out}
        DEPENDS ${import_lib}
        VERBATIM)
    add_custom_target(${name}_delay_lib DEPENDS ${out})
    add_library(${name}_delay STATIC IMPORTED GLOBAL)
    set_target_properties(${name}_delay PROPERTIES IMPORTED_LOCATION ${out})
    add_dependencies(${name}_delay ${name}_delay_lib)
endfunction()
