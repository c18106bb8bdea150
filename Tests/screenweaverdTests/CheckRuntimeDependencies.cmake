# Fails unless every library that EXECUTABLE loads is named in LIST (one name a line, the file name
# up to its first dot; "#" starts a comment, words after the name are a comment) or in EXTRA (names
# separated by commas). On macOS every library must also be one of the system's, at a path under
# /usr/lib/ or /System/Library/.
#
#   cmake -DEXECUTABLE=... -DLIST=... [-DEXTRA=libasan,libubsan] -DTOOL=readelf|otool -P this-file
cmake_minimum_required(VERSION 3.25)

file(STRINGS "${LIST}" lines)
string(REPLACE "," ";" allowed "${EXTRA}")
foreach(line IN LISTS lines)
  string(REGEX REPLACE "#.*" "" line "${line}")
  string(REGEX MATCH "[^ \t]+" name "${line}")
  if(name)
    list(APPEND allowed "${name}")
  endif()
endforeach()

if(TOOL MATCHES "otool$")
  execute_process(COMMAND "${TOOL}" -L "${EXECUTABLE}" OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  # The first line names the executable itself; each further line is "\t<path> (compatibility ...)".
  string(REGEX MATCHALL "\n\t[^\n(]+" entries "${output}")
  list(TRANSFORM entries STRIP)
else()
  execute_process(COMMAND "${TOOL}" --dynamic "${EXECUTABLE}" OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "\\(NEEDED\\)[^[]*\\[[^]]+\\]" entries "${output}")
  list(TRANSFORM entries REPLACE ".*\\[(.+)\\]" "\\1")
endif()
if(NOT entries)
  message(FATAL_ERROR "found no libraries in ${EXECUTABLE}: is it dynamically linked, and is ${TOOL} the right tool?")
endif()

set(failures "")
foreach(entry IN LISTS entries)
  get_filename_component(file_name "${entry}" NAME)
  string(REGEX REPLACE "\\..*" "" name "${file_name}")
  if(NOT name IN_LIST allowed)
    string(APPEND failures "\n  ${entry}: not in ${LIST}")
  endif()
  if(TOOL MATCHES "otool$" AND NOT entry MATCHES "^/(usr/lib|System/Library)/")
    string(APPEND failures "\n  ${entry}: not a library of the system")
  endif()
endforeach()
list(JOIN entries ", " loaded)
if(failures)
  message(FATAL_ERROR "${EXECUTABLE} loads ${loaded}${failures}")
endif()
message(STATUS "${EXECUTABLE} loads ${loaded}: all listed")
