#pragma once
// Runs code in a process of its own, with the library in a folder of its own and a file
// beside it, as a site would put one there. Neither the build nor another test sees it.
//
//   TEST(Limits, ARowReplacesARow) {
//     const BesideLibrary site("overrides.txt", "22 -300 300 1");
//     EXPECT_BESIDE_LIBRARY(site, FieldLimits().QLimits(22) == (Limits{-300, 300, 1}), "");
//   }
//
// The process is a death test of style "threadsafe": the test program starts itself anew up
// to that statement. The library is part of the test program, so the new process enters
// through a link to it in the site's folder (StartInSite); the check fails if it did not.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tslbl/closed/common/ModulePath.h>
#include <tslbl/closed/common/Text.h>
#include <unistd.h>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace tests {

inline constexpr const char* kSite = "TSLBL_TEST_SITE";  // the variable that names the site's folder

class BesideLibrary {
 public:
  // A site without any file.
  BesideLibrary() {
    const char* known = std::getenv(kSite);
    child_ = known != nullptr;
    folder_ = child_ ? std::filesystem::path(known) : MakeFolder();
  }
  BesideLibrary(const std::string& file, const std::string& content) : BesideLibrary() {
    if (!child_) std::ofstream(folder_ / file, std::ios::binary) << content;
  }
  BesideLibrary(const BesideLibrary&) = delete;
  BesideLibrary& operator=(const BesideLibrary&) = delete;
  ~BesideLibrary() {
    if (child_) return;
    unsetenv(kSite);
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }

  const std::filesystem::path& Folder() const { return folder_; }
  bool InChild() const { return child_; }
  // Whether the library of this process is the site's.
  bool IsLoaded() const { return LibraryPath().parent_path() == folder_; }

  static std::filesystem::path LibraryPath() {
    return TslCommon::ToUtf8(TslCommon::ModuleFileName(TslCommon::ModuleHandle()));
  }

 private:
  static std::filesystem::path MakeFolder() {
    std::string made = (std::filesystem::temp_directory_path() / "tslbl-site-XXXXXX").string();
    if (mkdtemp(made.data()) == nullptr) throw std::runtime_error("cannot make " + made);
    std::filesystem::create_symlink(LibraryPath(), made / LibraryPath().filename());
    setenv(kSite, made.c_str(), 1);
    return made;
  }

  bool child_ = false;
  std::filesystem::path folder_;
};

// For main: in the process of a site, starts the program again as the site's.
inline void StartInSite(char** argv) {
  const char* site = std::getenv(kSite);
  const std::filesystem::path here = BesideLibrary::LibraryPath();
  if (site == nullptr || here.parent_path() == site) return;
  std::string program = (site / here.filename()).string();
  argv[0] = program.data();
  execv(argv[0], argv);
}

}  // namespace tests

// Holds `condition` in the site's process, and `logMatcher` against what it writes to
// standard error.
#define EXPECT_BESIDE_LIBRARY(site, condition, logMatcher) \
  do {                                                     \
    GTEST_FLAG_SET(death_test_style, "threadsafe");        \
    EXPECT_EXIT(std::exit(!(site).IsLoaded() ? 2           \
                          : (condition)      ? 0           \
                                             : 1),              \
                testing::ExitedWithCode(0), logMatcher);   \
  } while (false)
