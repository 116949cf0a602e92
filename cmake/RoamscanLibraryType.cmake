# Whether the libraries are shared or static, and what their users compile and link with.

# Shared libraries are the default, also as a subdirectory of a project that does not set BUILD_SHARED_LIBS.
if(DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS)
    set(ROAMSCAN_STATIC ON)
    set(ROAMSCAN_LIBRARY_TYPE STATIC)
else()
    set(ROAMSCAN_STATIC OFF)
    set(ROAMSCAN_LIBRARY_TYPE SHARED)
endif()

# Part of the binary interface: the layout of poses must not follow each plug-in's instruction set.
set(ROAMSCAN_INTERFACE_DEFINITIONS EIGEN_MAX_STATIC_ALIGN_BYTES=16)

# A linker takes only those objects of a static library that a program refers to. This reference brings in
# frame/startup/LoadTimeObjects.cpp, and so all load-time objects and the entry point.
set(ROAMSCAN_STARTUP_LINK_OPTION "")
if(ROAMSCAN_STATIC)
    list(APPEND ROAMSCAN_INTERFACE_DEFINITIONS ROAMSCAN_STATIC)
    if(MSVC)
        set(ROAMSCAN_STARTUP_LINK_OPTION /INCLUDE:roamscanLoadTimeObjects)
    elseif(APPLE)
        set(ROAMSCAN_STARTUP_LINK_OPTION -Wl,-u,_roamscanLoadTimeObjects)
    else()
        set(ROAMSCAN_STARTUP_LINK_OPTION -Wl,-u,roamscanLoadTimeObjects)
    endif()
endif()
