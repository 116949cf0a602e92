# Windows finds the DLLs of a program in the program's folder: all programs and DLLs of the build are put into one.

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

# The DLLs of the dependencies and of the compiler's runtime are copied there, and installed with their licences.
if(MINGW)
    foreach(prefix IN LISTS ROAMSCAN_WINDOWS_PREFIX)
        file(GLOB dlls "${prefix}/bin/*.dll")
        file(COPY ${dlls} DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
        install(FILES ${dlls} DESTINATION "${CMAKE_INSTALL_BINDIR}")
        if(EXISTS "${prefix}/share/licenses")
            install(DIRECTORY "${prefix}/share/licenses" DESTINATION "${CMAKE_INSTALL_DOCDIR}")
        endif()
    endforeach()
endif()

# roamscan_utf8_process(target): the code page of the program is UTF-8, also for its arguments and file names, and it may use
# paths of more than 260 characters, where the system allows it. By a manifest, which needs Windows 10 of 2019 or later.
set(manifest "${PROJECT_SOURCE_DIR}/cmake/windows/Utf8Process.manifest")
if(MINGW)
    enable_language(RC)
    file(CONFIGURE OUTPUT "${PROJECT_BINARY_DIR}/Utf8Process.rc" CONTENT "1 24 \"@manifest@\"\n" @ONLY)
    set(manifest "${PROJECT_BINARY_DIR}/Utf8Process.rc")
endif()
set(ROAMSCAN_UTF8_MANIFEST "${manifest}")
function(roamscan_utf8_process target)
    target_sources(${target} PRIVATE "${ROAMSCAN_UTF8_MANIFEST}")
endfunction()
