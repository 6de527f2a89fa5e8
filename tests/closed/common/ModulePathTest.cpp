#include <gtest/gtest.h>

#include <tslbl/closed/common/ModulePath.h>
#include <tslbl/closed/common/Text.h>
#include <cstdlib>
#include <filesystem>

namespace {

using namespace TslCommon;

TEST(ModulePath, IsThatOfTheLibrary) {
  const std::filesystem::path file(ToUtf8(ModuleFileName(ModuleHandle())));
  EXPECT_TRUE(file.is_absolute());
  EXPECT_TRUE(std::filesystem::is_regular_file(file)) << file;
  EXPECT_EQ(file.filename(), "tslbl_tests");  // of which the library is a part here
}

TEST(ModulePath, FolderIsThePathUpToItsLastSeparator) {
  const std::wstring file = ModuleFileName(ModuleHandle()), folder = ModuleFolder(ModuleHandle());
  EXPECT_EQ(folder.back(), L'/');
  EXPECT_EQ(file.substr(0, folder.size()), folder);
  EXPECT_EQ(file.find(L'/', folder.size()), file.npos);
}

TEST(ModulePath, AnotherModulesAddressGivesThatModule) {
  // A function of the C library that no sanitizer puts its own in the place of.
  const std::wstring other = ModuleFileName(reinterpret_cast<HINSTANCE>(&::ldiv));
  EXPECT_NE(other, ModuleFileName(ModuleHandle()));
  EXPECT_TRUE(std::filesystem::exists(ToUtf8(other))) << ToUtf8(other);
}

TEST(ModulePath, AnAddressInNoModuleHasNoPath) {
  EXPECT_EQ(ModuleFileName(nullptr), L"");
  EXPECT_EQ(ModuleFolder(nullptr), L"");
}

}  // namespace
