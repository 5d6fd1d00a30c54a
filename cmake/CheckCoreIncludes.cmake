cmake_minimum_required(VERSION 3.25)

# Fails if a file of the core includes anything but a standard header or a header
# of the core. Run as a script with ROOT (the source folder) and STAMP.
set(standard
  algorithm any array atomic barrier bit bitset charconv chrono codecvt compare complex concepts
  condition_variable coroutine deque exception execution filesystem format forward_list fstream
  functional future initializer_list iomanip ios iosfwd iostream istream iterator latch limits list
  locale map memory memory_resource mutex new numbers numeric optional ostream queue random ranges
  ratio regex scoped_allocator semaphore set shared_mutex source_location span sstream stack
  stdexcept stop_token streambuf string string_view syncstream system_error thread tuple
  type_traits typeindex typeinfo unordered_map unordered_set utility valarray variant vector version
  cassert cctype cerrno cfenv cfloat cinttypes climits clocale cmath csetjmp csignal cstdarg cstddef
  cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype)

file(GLOB_RECURSE files ${ROOT}/*.h ${ROOT}/*.cpp)
list(FILTER files EXCLUDE REGEX "/platform/qt/")
set(wrong "")
foreach(file IN LISTS files)
  file(STRINGS ${file} lines REGEX "^[ \t]*#[ \t]*include")
  foreach(line IN LISTS lines)
    if(line MATCHES "<([^>]+)>")
      if(NOT CMAKE_MATCH_1 IN_LIST standard)
        list(APPEND wrong "${file}: ${line}")
      endif()
    elseif(line MATCHES "\"([^\"]+)\"")
      if(CMAKE_MATCH_1 STREQUAL "DeploymentValues.h" OR CMAKE_MATCH_1 STREQUAL "shell/Version.h")
        continue() # the configure step writes these
      endif()
      if(CMAKE_MATCH_1 MATCHES "^platform/qt/" OR NOT EXISTS ${ROOT}/${CMAKE_MATCH_1})
        list(APPEND wrong "${file}: ${line}")
      endif()
    endif()
  endforeach()
endforeach()
if(wrong)
  list(JOIN wrong "\n  " text)
  message(FATAL_ERROR "The core may include the standard library and itself, nothing else:\n  ${text}")
endif()
file(TOUCH ${STAMP})
