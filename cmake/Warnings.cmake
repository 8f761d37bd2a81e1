# One place for the warning flags; every target links quillon_warnings PRIVATE.
add_library(quillon_warnings INTERFACE)
if(MSVC)
  target_compile_options(quillon_warnings INTERFACE /W4 /permissive- /utf-8)
  if(QUILLON_WARNINGS_AS_ERRORS)
    target_compile_options(quillon_warnings INTERFACE /WX)
  endif()
  return()
endif()
target_compile_options(quillon_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-align
  -Woverloaded-virtual -Wconversion -Wsign-conversion -Wnull-dereference -Wimplicit-fallthrough)
if(QUILLON_WARNINGS_AS_ERRORS)
  target_compile_options(quillon_warnings INTERFACE -Werror)
endif()
