#pragma once
// The version of the library, also the one that CMake and pkg-config report.

#define TSLBL_VERSION "0.1.0"

// The number in the name that programs are linked to, "libtslbl.so.0". It is raised with every change that a
// program built before would not survive; scripts/check-abi tells.
#define TSLBL_SOVERSION 0
