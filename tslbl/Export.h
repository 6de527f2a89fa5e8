#pragma once
// What the shared library shows to its users; everything else stays hidden.

#if defined(__GNUC__)
#define TSLBL_API __attribute__((visibility("default")))
#else
#define TSLBL_API
#endif
