# Does what the page of the first steps says, with its own commands: makes a recording with the installed tool, builds the
# plug-in against the installed package, and runs it on the recording.
#   cmake -DPAGE= -DPROJECT= -DPREFIX= -DWORK_DIR= -DCXX= -P RunPlugin.cmake

include("${CMAKE_CURRENT_LIST_DIR}/../support/Run.cmake")

file(READ "${PAGE}" page)
string(REGEX MATCHALL "```bash\n[^`]*```" blocks "${page}")
list(LENGTH blocks count)
if(NOT count EQUAL 3)
    message(FATAL_ERROR "the page has ${count} blocks of commands, and not three: install, make a recording, build and run")
endif()
list(TRANSFORM blocks REPLACE "```(bash\n)?" "")
list(GET blocks 1 recording)
list(GET blocks 2 building)

# The page installs into ~/roamscan.
file(REMOVE_RECURSE "${WORK_DIR}")
file(COPY "${PROJECT}/" DESTINATION "${WORK_DIR}/plugin")
file(CREATE_LINK "${PREFIX}" "${WORK_DIR}/roamscan" SYMBOLIC)
set(ENV{HOME} "${WORK_DIR}")
set(ENV{CXX} "${CXX}")
set(ENV{CXXFLAGS} "-Wall -Wextra -Werror")
run(bash -euc "cd \"$HOME\"\n${recording}")
run(bash -euc "cd \"$HOME/plugin\"\n${building}")
if(NOT RUN_OUTPUT MATCHES "placed [1-9][0-9]* points")
    message(FATAL_ERROR "the plug-in placed no points")
endif()
