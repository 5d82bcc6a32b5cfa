# Interface definitions (src/surface/, neighbours/) become C++ headers, identifiers and type libraries.
#
#   v5_interfaces(TARGET IDL [TYPE_LIBRARY] [ENUMERATIONS namespace] [USES target...] [EMPTY_TEXT_DEFAULTS Interface.Method.parameter...])
#
# makes the static library TARGET, which carries the identifiers (IID_…, CLSID_…, LIBID_…) and the folder of the
# generated header `<name of IDL>.h`. Link to it and include the header, in automation classes and clients only; the
# classes themselves include `<name of IDL>Members.h` too, which describes the members for late-bound calls.
#   TYPE_LIBRARY         the IDL holds a library: also make `<build folder>/<name of IDL>.tlb` (also the target's
#                        property V5_TYPE_LIBRARY)
#   ENUMERATIONS         the namespace that the enumerations stand in; without it their enumerators are global names
#   USES                 targets of the IDL files that this one imports
#   EMPTY_TEXT_DEFAULTS  by-reference text parameters whose default is the empty text (see tools/build/FinishTypeLibrary.cpp)

# widl comes in two copies that differ in their name only; the width of the library is chosen by an option.
find_program(V5_WIDL NAMES ${MINGW_TRIPLET}-widl x86_64-w64-mingw32-widl widl)
if(NOT V5_WIDL)
  message(FATAL_ERROR "The interface compiler widl is missing: install the package mingw-w64-tools.")
endif()
find_path(V5_IDL_INCLUDE oaidl.idl NO_CMAKE_FIND_ROOT_PATH
          PATHS /usr/include/wine/wine/windows /usr/include/wine/windows /usr/include/wine-development/windows)
if(NOT V5_IDL_INCLUDE)
  message(FATAL_ERROR "The system's interface definitions (oaidl.idl) are missing: install the package libwine-dev.")
endif()
find_path(V5_STDOLE_FOLDER stdole2.tlb NO_CMAKE_FIND_ROOT_PATH
          PATHS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows /usr/lib/wine/x86_64-windows /usr/lib64/wine/x86_64-windows)
if(NOT V5_STDOLE_FOLDER)
  message(FATAL_ERROR "The standard type library (stdole2.tlb) is missing: install the package libwine.")
endif()
find_program(V5_HOST_CXX NAMES c++ g++ clang++)
if(NOT V5_HOST_CXX)
  message(FATAL_ERROR "A C++ compiler for this machine is missing: install the package g++.")
endif()

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(V5_WIDL_WIDTH --win64)
else()
  set(V5_WIDL_WIDTH --win32)
endif()
set(V5_IDL_OUTPUT "${CMAKE_BINARY_DIR}/idl")
file(MAKE_DIRECTORY "${V5_IDL_OUTPUT}")
file(GLOB V5_IDL_FILES CONFIGURE_DEPENDS "${CMAKE_SOURCE_DIR}/src/surface/*.idl" "${CMAKE_SOURCE_DIR}/src/surface/Identifiers.h"
     "${CMAKE_SOURCE_DIR}/neighbours/*.idl")

# Two tools that the build itself uses, made for this machine.
function(v5_build_tool variable name source)
  set(tool "${V5_IDL_OUTPUT}/${name}")
  add_custom_command(OUTPUT "${tool}"
    COMMAND "${V5_HOST_CXX}" -std=c++20 -O1 -Wall -Wextra -Werror -o "${tool}" "${CMAKE_SOURCE_DIR}/tools/build/${source}"
    DEPENDS "${CMAKE_SOURCE_DIR}/tools/build/${source}" VERBATIM COMMENT "Building ${name} for this machine")
  set(${variable} "${tool}" PARENT_SCOPE)
endfunction()
v5_build_tool(V5_FINISH_TYPE_LIBRARY finish-type-library FinishTypeLibrary.cpp)
v5_build_tool(V5_WRITE_DISPATCH_MEMBERS write-dispatch-members WriteDispatchMembers.cpp)

function(v5_interfaces target idl)
  cmake_parse_arguments(arg "TYPE_LIBRARY" "ENUMERATIONS" "USES;EMPTY_TEXT_DEFAULTS" ${ARGN})
  get_filename_component(idl "${idl}" ABSOLUTE BASE_DIR "${CMAKE_SOURCE_DIR}")
  get_filename_component(name "${idl}" NAME_WE)
  set(widl "${V5_WIDL}" ${V5_WIDL_WIDTH} "-I${CMAKE_SOURCE_DIR}/src/surface" "-I${CMAKE_SOURCE_DIR}/neighbours" "-I${V5_IDL_INCLUDE}" "-L${V5_STDOLE_FOLDER}")
  set(header "${V5_IDL_OUTPUT}/${name}.h")
  set(members "${V5_IDL_OUTPUT}/${name}Members.h")
  set(identifiers "${V5_IDL_OUTPUT}/${name}_i.cpp")
  set(library "${CMAKE_BINARY_DIR}/${name}.tlb")

  set(wrap)
  if(arg_ENUMERATIONS)
    set(wrap COMMAND "${CMAKE_COMMAND}" "-DHEADER=${header}" "-DNAMESPACE=${arg_ENUMERATIONS}"
                     -P "${CMAKE_SOURCE_DIR}/cmake/WrapEnumerations.cmake")
  endif()
  add_custom_command(OUTPUT "${members}"
    COMMAND "${V5_WRITE_DISPATCH_MEMBERS}" "${idl}" "${members}"
    DEPENDS "${idl}" "${V5_WRITE_DISPATCH_MEMBERS}" VERBATIM COMMENT "Generating ${name}Members.h")
  add_custom_command(OUTPUT "${header}" "${identifiers}"
    COMMAND ${widl} -h -o "${header}" "${idl}"
    ${wrap}
    COMMAND ${widl} -u -o "${identifiers}" "${idl}"
    DEPENDS ${V5_IDL_FILES} "${CMAKE_SOURCE_DIR}/cmake/WrapEnumerations.cmake" VERBATIM COMMENT "Generating ${name}.h")
  set_source_files_properties("${identifiers}" PROPERTIES COMPILE_OPTIONS -w)
  add_library(${target} STATIC "${identifiers}" "${header}" "${members}")
  target_include_directories(${target} SYSTEM PUBLIC "${V5_IDL_OUTPUT}")
  target_link_libraries(${target} PUBLIC ${arg_USES})

  if(arg_TYPE_LIBRARY)
    add_custom_command(OUTPUT "${library}"
      COMMAND ${widl} -t -o "${library}" "${idl}"
      COMMAND "${V5_FINISH_TYPE_LIBRARY}" "${library}" ${arg_EMPTY_TEXT_DEFAULTS}
      DEPENDS ${V5_IDL_FILES} "${V5_FINISH_TYPE_LIBRARY}" VERBATIM COMMENT "Generating ${name}.tlb")
    add_custom_target(${target}_tlb ALL DEPENDS "${library}")
    add_dependencies(${target} ${target}_tlb)
    set_target_properties(${target} PROPERTIES V5_TYPE_LIBRARY "${library}")
  endif()
endfunction()

v5_interfaces(v5messages neighbours/V5Msgs.idl)
v5_interfaces(v5contract src/surface/V5Strings.idl TYPE_LIBRARY ENUMERATIONS V5Strings USES v5messages
  EMPTY_TEXT_DEFAULTS _NimboSecurity.CheckUserPrivilegeLevelEx.strErrorMsg)
v5_interfaces(v5dbil neighbours/V5DBIL.idl TYPE_LIBRARY)
