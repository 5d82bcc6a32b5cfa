# v5_delay_load(TARGET LIBRARY function...): import functions from a Windows DLL that is loaded when one of them is first
# called, not when the component is: most clients never open a dialog, and those DLLs take long to load. On 64 bit only:
# the import tools make call stubs for 32 bit that jump to nowhere.
find_program(V5_DLLTOOL NAMES ${MINGW_TRIPLET}-dlltool REQUIRED)
function(v5_delay_load target library)
  if(NOT CMAKE_SIZEOF_VOID_P EQUAL 8)
    target_link_libraries(${target} PUBLIC ${library})
    return()
  endif()
  set(definition "${CMAKE_BINARY_DIR}/delay/${library}.def")
  set(imports "${CMAKE_BINARY_DIR}/delay/lib${library}_delay.a")
  list(JOIN ARGN "\n" lines)
  file(CONFIGURE OUTPUT "${definition}" CONTENT "LIBRARY ${library}.dll\nEXPORTS\n${lines}\n")
  add_custom_command(OUTPUT "${imports}"
    COMMAND "${V5_DLLTOOL}" --kill-at --input-def "${definition}" --output-delaylib "${imports}"
    DEPENDS "${definition}" VERBATIM COMMENT "Delay-loading ${library}.dll")
  add_custom_target(${library}_delay DEPENDS "${imports}")
  add_dependencies(${target} ${library}_delay)
  target_link_libraries(${target} PUBLIC "${imports}" delayimp)
endfunction()
