# Everything beyond the compiler is optional. Each library that is missing
# leaves out the targets that need it, and the end of the configure step says so.
set(LARKSPOOL_LEFT_OUT "" CACHE INTERNAL "")

function(larkspool_leave_out what why)
  set(LARKSPOOL_LEFT_OUT ${LARKSPOOL_LEFT_OUT} "${what} (${why})" CACHE INTERNAL "")
endfunction()

function(larkspool_report_left_out)
  if(LARKSPOOL_LEFT_OUT)
    list(JOIN LARKSPOOL_LEFT_OUT ", " text)
    message(STATUS "Left out: ${text}")
  else()
    message(STATUS "Left out: nothing")
  endif()
endfunction()

find_package(Threads REQUIRED)

find_package(Qt6 QUIET COMPONENTS Core Gui Widgets Network)
set(LARKSPOOL_HAS_QT ${Qt6_FOUND})
if(NOT LARKSPOOL_HAS_QT)
  larkspool_leave_out("the program itself" "no Qt 6: qt6-base-dev")
endif()

find_path(CUBEB_INCLUDE_DIR cubeb/cubeb.h)
find_library(CUBEB_LIBRARY cubeb)
set(LARKSPOOL_HAS_CUBEB OFF)
if(CUBEB_INCLUDE_DIR AND CUBEB_LIBRARY)
  set(LARKSPOOL_HAS_CUBEB ON)
else()
  larkspool_leave_out("sound devices" "no cubeb: libcubeb-dev")
endif()

find_path(SOXR_INCLUDE_DIR soxr.h)
find_library(SOXR_LIBRARY soxr)
set(LARKSPOOL_HAS_SOXR OFF)
if(SOXR_INCLUDE_DIR AND SOXR_LIBRARY)
  set(LARKSPOOL_HAS_SOXR ON)
else()
  larkspool_leave_out("the sound library" "no soxr: libsoxr-dev")
endif()

find_package(GTest QUIET)
set(LARKSPOOL_HAS_GTEST ${GTest_FOUND})
if(BUILD_TESTING AND NOT LARKSPOOL_HAS_GTEST)
  larkspool_leave_out("the tests" "no GoogleTest: libgtest-dev")
endif()

find_package(benchmark QUIET)
set(LARKSPOOL_HAS_BENCHMARK ${benchmark_FOUND})
if(NOT LARKSPOOL_HAS_BENCHMARK)
  larkspool_leave_out("the benchmarks" "no Google Benchmark: libbenchmark-dev")
endif()
