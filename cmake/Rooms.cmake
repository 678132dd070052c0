# One library is made of the sources of several rooms; a room that stands on two floors names the files of the
# upper one, and the rest belongs to the lower.

# brimwick_room_sources(VARIABLE ROOM [EXCEPT FILE...] [ONLY FILE...])
function(brimwick_room_sources variable room)
  cmake_parse_arguments(ARG "" "" "EXCEPT;ONLY" ${ARGN})
  if(ARG_ONLY)
    list(TRANSFORM ARG_ONLY PREPEND ${PROJECT_SOURCE_DIR}/src/${room}/)
    set(files ${ARG_ONLY})
  else()
    file(GLOB files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/${room}/*.cpp)
    if(ARG_EXCEPT)
      list(TRANSFORM ARG_EXCEPT PREPEND ${PROJECT_SOURCE_DIR}/src/${room}/)
      list(REMOVE_ITEM files ${ARG_EXCEPT})
    endif()
  endif()
  set(${variable} ${${variable}} ${files} PARENT_SCOPE)
endfunction()
