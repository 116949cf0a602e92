# Windows finds the DLLs of a program in the program's folder: all programs and DLLs of the build are put into one.

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

# The runtime DLLs of MinGW-w64 and the dependencies are copied there.
if(MINGW)
    set(ROAMSCAN_RUNTIME_DLLS "")
    foreach(name IN ITEMS libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
        execute_process(
            COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${name}"
            OUTPUT_VARIABLE dll
            OUTPUT_STRIP_TRAILING_WHITESPACE)
        if(IS_ABSOLUTE "${dll}")
            list(APPEND ROAMSCAN_RUNTIME_DLLS "${dll}")
        endif()
    endforeach()
    foreach(prefix IN LISTS ROAMSCAN_WINDOWS_PREFIX)
        file(GLOB dlls "${prefix}/bin/*.dll")
        list(APPEND ROAMSCAN_RUNTIME_DLLS ${dlls})
    endforeach()
    file(COPY ${ROAMSCAN_RUNTIME_DLLS} DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
endif()
