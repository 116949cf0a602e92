# Installs the build into a fresh folder, for the tests that use the installed package. Nothing that is not for plug-ins
# may be in it.
#   cmake -DBINARY_DIR= -DPREFIX= -P Install.cmake

include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")

file(REMOVE_RECURSE "${PREFIX}")
run("${CMAKE_COMMAND}" --install "${BINARY_DIR}" --prefix "${PREFIX}")
file(GLOB_RECURSE hidden "${PREFIX}/include/*detail*" "${PREFIX}/include/*startup*")
if(hidden)
    message(FATAL_ERROR "installed, but not for plug-ins: ${hidden}")
endif()
