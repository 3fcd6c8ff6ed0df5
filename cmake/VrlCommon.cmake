# Compiler settings shared by every target of the tree.

if(WIN32)
  add_compile_definitions(UNICODE _UNICODE NOMINMAX _WIN32_WINNT=0x0601 WINVER=0x0601)
  # Static runtime: the programs then import system DLLs only and start under a bare Wine prefix.
  add_link_options(-static -static-libgcc -static-libstdc++)
  set(VRL_WIN_SYSTEM_LIBS comctl32 comdlg32 gdiplus ole32 oleaut32 uuid shell32 shlwapi
      user32 gdi32 advapi32 winmm version)
  if(VRL_RELEASE)
    # Reproducible: no link time in the PE header, and neither the checkout's nor the tree's folder
    # in the code (__FILE__) or in the debug information kept beside the package.
    add_compile_options("$<$<COMPILE_LANGUAGE:C,CXX>:-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.>"
                        "$<$<COMPILE_LANGUAGE:C,CXX>:-ffile-prefix-map=${CMAKE_BINARY_DIR}=.>")
    add_link_options(-Wl,--no-insert-timestamp)
  endif()
  if(CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64" AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
    set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_SOURCE_DIR}/scripts/wine-exec)
  endif()
else()
  if(VRL_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
    add_link_options(-fsanitize=address,undefined)
  endif()
endif()

function(vrl_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wshadow -Wnon-virtual-dtor)
  if(WIN32)
    # GetProcAddress results are cast to typed function pointers on purpose.
    target_compile_options(${target} PRIVATE -Wno-cast-function-type)
  endif()
  if(VRL_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
