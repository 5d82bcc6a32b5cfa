# Each folder under src/ is a room and lists its own files with these three calls, so that a reader of the room
# sees which file is a rule, which an adapter and which a public class or form.

function(v5_rules)
  target_sources(v5rules PRIVATE ${ARGN})
endfunction()

function(v5_platform)
  if(WIN32)
    target_sources(v5platform PRIVATE ${ARGN})
  endif()
endfunction()

function(v5_component)
  if(WIN32)
    target_sources(V5Strings PRIVATE ${ARGN})
  endif()
endfunction()
