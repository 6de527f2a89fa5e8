# The installed tree: library, public headers, tool, find_package(TslBL) and pkg-config, all
# of it movable.
include(CMakePackageConfigHelpers)
set(CMAKE_INSTALL_MESSAGE NEVER)

# Public are the headers to which tslbl/TslBL.h leads; the others lie beside their sources
# for the library alone.
set(public_headers tslbl/TslBL.h)
set(unread ${public_headers})
while(unread)
  list(POP_FRONT unread header)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
  file(STRINGS ${header} lines REGEX "^#include <tslbl/")
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "^#include <(.*)>.*$" "\\1" included "${line}")
    if(NOT included IN_LIST public_headers)
      list(APPEND public_headers ${included})
      list(APPEND unread ${included})
    endif()
  endforeach()
endwhile()
foreach(header IN LISTS public_headers)
  cmake_path(GET header PARENT_PATH folder)
  install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${folder})
endforeach()

install(TARGETS tslbl EXPORT TslBLTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(TSLBL_BUILD_TOOL)
  install(TARGETS tslbl_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()

set(config_folder ${CMAKE_INSTALL_LIBDIR}/cmake/TslBL)
install(EXPORT TslBLTargets NAMESPACE TslBL:: FILE TslBLConfig.cmake DESTINATION ${config_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TslBLConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TslBLConfigVersion.cmake DESTINATION ${config_folder})

# The way from the file's own folder to the prefix, so that the tree needs no name.
cmake_path(SET pc_folder /${CMAKE_INSTALL_LIBDIR}/pkgconfig)
cmake_path(RELATIVE_PATH pc_folder BASE_DIRECTORY / OUTPUT_VARIABLE depth)
string(REGEX REPLACE "[^/]+" ".." pc_prefix "${depth}")
configure_file(cmake/tslbl.pc.in ${PROJECT_BINARY_DIR}/tslbl.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tslbl.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
