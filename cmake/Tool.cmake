# The command-line tool, an application above the library's public headers. All of it but
# main.cpp is a static library, so that its tests link the same code. It leaves to the program
# in which form this links the library (see Library.cmake).
find_package(SQLite3 REQUIRED)
find_package(CLI11 REQUIRED)
find_package(fmt REQUIRED)
find_package(nlohmann_json REQUIRED)
find_package(ZLIB REQUIRED)
include(cmake/Pwiz.cmake)

file(GLOB_RECURSE tool_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tool/*.cpp)
list(REMOVE_ITEM tool_sources ${PROJECT_SOURCE_DIR}/tool/main.cpp)
add_library(tslbl_tool_parts STATIC ${tool_sources})
target_include_directories(tslbl_tool_parts PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(tslbl_tool_parts
  PUBLIC SQLite::SQLite3 fmt::fmt nlohmann_json::nlohmann_json ZLIB::ZLIB
  PRIVATE TBB::tbb tslbl_flags CLI11::CLI11 pugixml::pugixml PkgConfig::log4cxx Pwiz::pwiz)

add_executable(tslbl_tool tool/main.cpp)
target_link_libraries(tslbl_tool PRIVATE tslbl_tool_parts tslbl tslbl_flags)
set_target_properties(tslbl_tool PROPERTIES OUTPUT_NAME tslbl)
