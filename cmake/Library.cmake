# libtslbl.so: every source under tslbl/.
find_package(TBB REQUIRED)
find_package(Boost 1.74 REQUIRED)
find_package(Eigen3 REQUIRED NO_MODULE)
find_package(pugixml REQUIRED)
find_package(PkgConfig REQUIRED)
pkg_check_modules(log4cxx REQUIRED IMPORTED_TARGET liblog4cxx)

file(GLOB_RECURSE tslbl_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tslbl/*.cpp)
file(GLOB_RECURSE tslbl_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/tslbl/*.h)
add_library(tslbl SHARED ${tslbl_sources})
add_library(TslBL::tslbl ALIAS tslbl)
target_include_directories(tslbl PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
  $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
target_compile_features(tslbl PUBLIC cxx_std_20)
target_link_libraries(tslbl PRIVATE
  $<BUILD_INTERFACE:tslbl_flags> TBB::tbb Boost::headers Eigen3::Eigen pugixml::pugixml
  PkgConfig::log4cxx ${CMAKE_DL_LIBS})
set_target_properties(tslbl PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION 0)
