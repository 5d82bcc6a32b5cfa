# v5_delay_load(TARGET LIBRARY function@bytes...): import functions from a Windows DLL that is loaded when one of them is
# first called, not when the component is: most clients never open a dialog, and those DLLs take long to load. `bytes` is
# the size of the function's arguments on 32 bit.
find_program(V5_DLLTOOL NAMES ${MINGW_TRIPLET}-dlltool REQUIRED)
function(v5_delay_load target library)
  set(definition "${CMAKE_BINARY_DIR}/delay/${library}.def")
  set(imports "${CMAKE_BINARY_DIR}/delay/lib${library}_delay.a")
  set(names ${ARGN})
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    list(TRANSFORM names REPLACE "@.*" "")
  endif()
  list(JOIN names "\n" lines)
  file(CONFIGURE OUTPUT "${definition}" CONTENT "LIBRARY ${library}.dll\nEXPORTS\n${lines}\n")
  add_custom_command(OUTPUT "${imports}"
    COMMAND "${V5_DLLTOOL}" --kill-at --input-def "${definition}" --output-delaylib "${imports}"
    DEPENDS "${definition}" VERBATIM COMMENT "Delay-loading ${library}.dll")
  add_custom_target(${library}_delay DEPENDS "${imports}")
  add_dependencies(${target} ${library}_delay)
  target_link_libraries(${target} PUBLIC "${imports}" delayimp)
endfunction()
