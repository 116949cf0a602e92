# How an installed program finds the installed library: by a path relative to itself, so that any prefix works and an
# installation can be moved.

# roamscan_install_rpath(target): for a program that is installed in CMAKE_INSTALL_BINDIR.
function(roamscan_install_rpath target)
    # The full paths, because CMAKE_INSTALL_LIBDIR may be lib, lib64, lib/x86_64-linux-gnu or an absolute path.
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY "${CMAKE_INSTALL_FULL_BINDIR}"
               OUTPUT_VARIABLE libFromBin)
    if(APPLE)
        set(origin "@loader_path")
    else()
        set(origin "$ORIGIN")
    endif()
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "${origin}/${libFromBin}")
endfunction()
