# Pwiz::pwiz: ProteoWizard, whose vocabulary and Numpress decoder serve to read mzML files.
# Debian: libpwiz-dev and libboost-dev (its headers include Boost's; the Boost libraries that it needs at run time
# come with libpwiz3 and are not linked here).
find_path(PWIZ_INCLUDE_DIR pwiz/data/msdata/MSNumpress.hpp PATH_SUFFIXES proteowizard)
find_library(PWIZ_LIBRARY pwiz)
if(NOT PWIZ_INCLUDE_DIR OR NOT PWIZ_LIBRARY)
  message(FATAL_ERROR "ProteoWizard is missing: install libpwiz-dev, or set PWIZ_INCLUDE_DIR and PWIZ_LIBRARY")
endif()
find_package(Boost 1.74 REQUIRED)
add_library(Pwiz::pwiz UNKNOWN IMPORTED)
set_target_properties(Pwiz::pwiz PROPERTIES
  IMPORTED_LOCATION ${PWIZ_LIBRARY}
  INTERFACE_INCLUDE_DIRECTORIES ${PWIZ_INCLUDE_DIR}
  INTERFACE_LINK_LIBRARIES Boost::headers)
