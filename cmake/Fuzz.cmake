# Fuzz targets, one for each fuzz/NAME.cpp: build/fuzz/bin/NAME [folder of inputs]. Library and tool are
# compiled with the fuzzer's coverage too (the preset's TSLBL_SANITIZE), without which it would be blind to them.
file(GLOB fuzz_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/fuzz/*.cpp)
foreach(source IN LISTS fuzz_sources)
  cmake_path(GET source STEM name)
  add_executable(${name} ${source})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_options(${name} PRIVATE -fsanitize=fuzzer)
  if(TSLBL_BUILD_TOOL)
    target_link_libraries(${name} PRIVATE tslbl_tool_parts)
  endif()
  target_link_libraries(${name} PRIVATE tslbl_objects tslbl_flags)
endforeach()
