# The library: every source under tslbl/ is compiled once, into tslbl_objects. libtslbl.so is made of these, and so
# are the programs that look inside the library (its tests, benchmarks, fuzz targets): nothing is exported for their
# sake. A program links one of the two, never both, or it would have two registries and two pools of threads.
find_package(TBB REQUIRED)
find_package(Boost 1.74 REQUIRED)
find_package(Eigen3 REQUIRED NO_MODULE)
find_package(pugixml REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(log4cxx REQUIRED IMPORTED_TARGET liblog4cxx)

file(GLOB_RECURSE tslbl_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tslbl/*.cpp)
file(GLOB_RECURSE tslbl_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tslbl/*.h)
add_library(tslbl_objects OBJECT ${tslbl_sources})
target_include_directories(tslbl_objects PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(tslbl_objects PRIVATE
  tslbl_flags TBB::tbb Boost::headers Eigen3::Eigen pugixml::pugixml PkgConfig::log4cxx ${CMAKE_DL_LIBS})

add_library(tslbl SHARED)
add_library(TslBL::tslbl ALIAS tslbl)
target_include_directories(tslbl PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_compile_features(tslbl PUBLIC cxx_std_20)
target_link_libraries(tslbl PRIVATE $<BUILD_INTERFACE:tslbl_objects>)
set_target_properties(tslbl PROPERTIES
  VERSION ${PROJECT_VERSION} SOVERSION ${TSLBL_SOVERSION} LINKER_LANGUAGE CXX)
