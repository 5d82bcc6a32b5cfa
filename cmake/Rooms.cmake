# Each folder under src/ is a room and lists its own files with these calls, so that a reader of the room
# sees which file is a rule, which an adapter and which a public class or form.

function(v5_rules)
  target_sources(v5rules PRIVATE ${ARGN})
endfunction()

function(v5_adapters)
  if(WIN32)
    target_sources(v5adapters PRIVATE ${ARGN})
  endif()
endfunction()

function(v5_component)
  if(WIN32)
    target_sources(V5Strings PRIVATE ${ARGN})
  endif()
endfunction()

# What every in-process server of this project has in common: it lies at the top of the build folder under its plain
# name, has the entry points over its own class table (ThisComponent), exports what its .def file names and nothing
# else, chooses its stack guard. Its sections lie in the file as in memory, so that the loader can map them and need not copy.
function(v5_server name)
  target_sources(${name} PRIVATE "${CMAKE_SOURCE_DIR}/src/com/ClassFactory.cpp"
                                 "${CMAKE_SOURCE_DIR}/src/platform/StackGuard.cpp")
  target_compile_definitions(${name} PRIVATE _CRT_RAND_S)  # makes <cstdlib> declare rand_s, for the stack guard
  set_target_properties(${name} PROPERTIES PREFIX "" LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}"
                        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}")
  v5_symbols_apart(${name})
  target_link_options(${name} PRIVATE -Wl,--gc-sections -Wl,--enable-stdcall-fixup
                      -Wl,--exclude-all-symbols -Wl,--file-alignment=4096)
endfunction()

# What is shipped is stripped; its symbols lie beside it in a file of the same name with .debug at its end. Both carry the
# build identifier by which they are matched. (--preserve-dates keeps the header's, which is none.)
function(v5_symbols_apart name)
  target_link_options(${name} PRIVATE -Wl,--build-id "-Wl,-Map,$<TARGET_FILE:${name}>.map")
  add_custom_command(TARGET ${name} POST_BUILD
    COMMAND "${CMAKE_OBJCOPY}" --only-keep-debug --preserve-dates "$<TARGET_FILE:${name}>" "$<TARGET_FILE:${name}>.debug"
    COMMAND "${CMAKE_STRIP}" --preserve-dates "$<TARGET_FILE:${name}>" VERBATIM)
endfunction()
