# How installed programs and libraries find the installed libraries: by a path relative to themselves, so that any prefix
# works and an installation can be moved.

# roamscan_install_rpath(target): for a program that is installed in CMAKE_INSTALL_BINDIR, or a library in
# CMAKE_INSTALL_LIBDIR.
function(roamscan_install_rpath target)
    if(APPLE)
        set(rpath "@loader_path")
    else()
        set(rpath "$ORIGIN")
    endif()
    get_target_property(type ${target} TYPE)
    if(type STREQUAL "EXECUTABLE")
        # The full paths, because CMAKE_INSTALL_LIBDIR may be lib, lib64, lib/x86_64-linux-gnu or an absolute path.
        cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY "${CMAKE_INSTALL_FULL_BINDIR}"
                   OUTPUT_VARIABLE libFromBin)
        string(APPEND rpath "/${libFromBin}")
    endif()
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "${rpath}")
endfunction()
