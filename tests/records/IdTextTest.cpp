#include <gtest/gtest.h>

#include <tslbl/records/IdText.h>

namespace {

using namespace TslBL;
using Ids = std::vector<std::uint32_t>;

TEST(IdText, HasABlankBetweenTwoIds) { EXPECT_EQ(IdsToText({3, 0, 4294967295}), L"3 0 4294967295"); }
TEST(IdText, IsEmptyOfNone) { EXPECT_EQ(IdsToText({}), L""); }

TEST(IdText, IsReadAsFarAsThereAreIds) {
  const std::pair<const wchar_t*, Ids> kTexts[] = {
      {L"", {}},   {L" \t\r\n", {}},        {L"1 2 3", {1, 2, 3}}, {L"  7\n\t8 ", {7, 8}},
      {L"x", {}},  {L"5 x 6", {5}},         {L"5,6", {5}},         {L"5 6x 7", {5, 6}},
      {L"0", {0}}, {L"5 4294967296 6", {5}}};
  for (const auto& [text, ids] : kTexts) EXPECT_EQ(IdsFromText(text), ids) << text;
}

}  // namespace
