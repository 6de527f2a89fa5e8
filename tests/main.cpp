// The program of the library's tests.

#include <gmock/gmock.h>

#include <tune/BesideLibrary.h>

int main(int argc, char** argv) {
  tests::StartInSite(argv);
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
