if(TARGET tonebridge_engine)
  add_executable(sound_bench sound_bench.cpp)
  target_link_libraries(sound_bench PRIVATE larkspool_options tonebridge_engine
    benchmark::benchmark benchmark::benchmark_main)
endif()
