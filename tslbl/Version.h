#pragma once
// The version of the library, also the one that CMake and pkg-config report.

#define TSLBL_VERSION "0.1.0"
