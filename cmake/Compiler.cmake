# larkspool_options carries the warnings (all of them errors) and the sanitizers
# that every target of the project is built with.
add_library(larkspool_options INTERFACE)
target_compile_options(larkspool_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
option(LARKSPOOL_WARNINGS_ARE_ERRORS "Off where a newer compiler has new warnings" ON)
if(LARKSPOOL_WARNINGS_ARE_ERRORS)
  target_compile_options(larkspool_options INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # This version sees overlapping copies in optimized string assignments where there are none.
  target_compile_options(larkspool_options INTERFACE -Wno-restrict)
endif()

set(LARKSPOOL_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize= takes them")
if(LARKSPOOL_SANITIZE)
  target_compile_options(larkspool_options INTERFACE
    -fsanitize=${LARKSPOOL_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(larkspool_options INTERFACE -fsanitize=${LARKSPOOL_SANITIZE})
  if(LARKSPOOL_SANITIZE MATCHES "undefined")
    target_compile_options(larkspool_options INTERFACE -fno-sanitize-recover=undefined)
  endif()
endif()

find_program(LARKSPOOL_CCACHE ccache)
if(LARKSPOOL_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${LARKSPOOL_CCACHE})
endif()
