# A room is one folder of src/ as a static library. Each room's headers are reachable only through
# a private include root that holds nothing but a link to that room, and rooms pass on the roots of
# the rooms they link. So `#include "gestures/..."` compiles only where the target links `gestures`:
# the arrows of docs/architecture.md are enforced by the compiler.
#
#   velotap_room(NAME [PATH src-relative path] USES room... SOURCES file...)
function(velotap_room name)
  cmake_parse_arguments(ROOM "" "PATH" "USES;SOURCES" ${ARGN})
  if(NOT ROOM_PATH)
    set(ROOM_PATH ${name})
  endif()
  set(root ${CMAKE_BINARY_DIR}/rooms/${name})
  get_filename_component(parent ${root}/${ROOM_PATH} DIRECTORY)
  file(MAKE_DIRECTORY ${parent})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/src/${ROOM_PATH} ${root}/${ROOM_PATH} SYMBOLIC)
  list(TRANSFORM ROOM_USES PREPEND velotap_ OUTPUT_VARIABLE links)
  if(ROOM_SOURCES)
    add_library(velotap_${name} STATIC ${ROOM_SOURCES})
    target_include_directories(velotap_${name} PUBLIC ${root})
    target_link_libraries(velotap_${name} PUBLIC ${links} PRIVATE velotap_flags)
  else()
    add_library(velotap_${name} INTERFACE)
    target_include_directories(velotap_${name} INTERFACE ${root})
    target_link_libraries(velotap_${name} INTERFACE ${links})
  endif()
endfunction()
