# What every target of this project is compiled with. Fetched or system code is not compiled with these.
add_library(v5warnings INTERFACE)
target_compile_options(v5warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Woverloaded-virtual -Wcast-qual
  -Wformat=2 -Wundef -Werror)
if(V5_SANITIZE)
  target_compile_options(v5warnings INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                         -fno-omit-frame-pointer)
  target_link_options(v5warnings INTERFACE -fsanitize=address,undefined)
endif()
if(V5_FUZZ)
  # clang counts sign changes among the conversions, which GCC does not.
  target_compile_options(v5warnings INTERFACE -Wno-sign-conversion -fsanitize=fuzzer-no-link,address,undefined
                         -fno-sanitize-recover=all)
  target_link_options(v5warnings INTERFACE -fsanitize=address,undefined)
endif()
if(WIN32)
  target_compile_definitions(v5warnings INTERFACE UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX
                             _WIN32_WINNT=0x0601 STRICT)
  # Hardening: checked copies, stack protector, address space layout randomisation (high-entropy on 64 bit), no
  # executable data.
  target_compile_options(v5warnings INTERFACE -fstack-protector-strong)
  target_compile_definitions(v5warnings INTERFACE _FORTIFY_SOURCE=2)
  target_link_options(v5warnings INTERFACE -static -fstack-protector-strong -Wl,--dynamicbase -Wl,--nxcompat)
  if(CMAKE_SIZEOF_VOID_P EQUAL 8)
    target_link_options(v5warnings INTERFACE -Wl,--high-entropy-va)
  endif()
endif()
# The same sources make the same bytes, wherever and whenever they are built; symbols name them below /V5Strings.
if(WIN32)
  add_compile_options("$<$<COMPILE_LANGUAGE:C,CXX>:-ffile-prefix-map=${CMAKE_SOURCE_DIR}/=/V5Strings/>")
  target_link_options(v5warnings INTERFACE -Wl,--no-insert-timestamp)
endif()
