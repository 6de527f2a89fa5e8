# Google Benchmarks, one file a hot path: build/release/bin/tslbl_benchmarks.
find_package(benchmark REQUIRED)
file(GLOB_RECURSE benchmark_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/benchmarks/*.cpp)
add_executable(tslbl_benchmarks ${benchmark_sources})
target_include_directories(tslbl_benchmarks PRIVATE ${PROJECT_SOURCE_DIR}/benchmarks)
target_link_libraries(tslbl_benchmarks PRIVATE
  tslbl_objects tslbl_flags benchmark::benchmark benchmark::benchmark_main)
