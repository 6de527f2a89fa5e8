#include <gtest/gtest.h>

#include <tslbl/chargestate/DeconSpectrum.h>
#include <utility>

using namespace TslBL;

namespace {

constexpr std::pair<std::uint32_t, const wchar_t*> kLetters[] = {{0, L""},
                                                                 {1, L"A"},
                                                                 {2, L"B"},
                                                                 {25, L"Y"},
                                                                 {26, L"Z"},
                                                                 {27, L"AA"},
                                                                 {52, L"AZ"},
                                                                 {53, L"BA"},
                                                                 {702, L"ZZ"},
                                                                 {703, L"AAA"},
                                                                 {18278, L"ZZZ"},
                                                                 {18279, L"AAAA"},
                                                                 {475254, L"ZZZZ"},
                                                                 {321272406, L"ZZZZZZ"},
                                                                 {4294967295u, L"MWLQKWU"}};

}  // namespace

TEST(CSSeriesLabels, CountByLettersBehindTheType) {
  for (const auto& [id, letters] : kLetters) {
    EXPECT_EQ(DeconSpectrum::CSSeriesObjToLabel({CSSeries::Resolved, id}), std::wstring(L"R") + letters);
    EXPECT_EQ(DeconSpectrum::CSSeriesObjToLabel({CSSeries::Unresolved, id}), std::wstring(L"U") + letters);
  }
}

TEST(CSSeriesLabels, OfAnyTypeButResolvedBeginWithU) {
  EXPECT_EQ(DeconSpectrum::CSSeriesObjToLabel({CSSeries::None, 1}), L"UA");
  EXPECT_EQ(DeconSpectrum::CSSeriesObjToLabel({static_cast<CSSeries::Types>(9), 1}), L"UA");
}

TEST(CSSeriesLabels, GiveTheKeyBack) {
  for (const auto& [id, letters] : kLetters) {
    EXPECT_EQ(DeconSpectrum::CSSeriesLabelToObj(std::wstring(L"R") + letters),
              CSSeries(CSSeries::Resolved, id));
    EXPECT_EQ(DeconSpectrum::CSSeriesLabelToObj(std::wstring(L"U") + letters),
              CSSeries(CSSeries::Unresolved, id));
  }
}

TEST(CSSeriesLabels, ThatAreNoneGiveSomeKey) {
  const std::pair<const wchar_t*, CSSeries> rows[] = {
      {L"", {CSSeries::Resolved, 0}},      {L"X", {CSSeries::Resolved, 0}},
      {L"XB", {CSSeries::Resolved, 2}},    {L"uB", {CSSeries::Resolved, 2}},
      {L"Ua", {CSSeries::Unresolved, 33}}, {L"U@", {CSSeries::Unresolved, 0}},
      {L"U@A", {CSSeries::Unresolved, 1}}};
  for (const auto& [label, key] : rows) EXPECT_EQ(DeconSpectrum::CSSeriesLabelToObj(label), key);
  DeconSpectrum::CSSeriesLabelToObj(std::wstring(1000, L'Z'));
}

TEST(GetSeriesColor, HasAColorOfItsOwnForTheFirst) { EXPECT_EQ(DeconSpectrum::GetSeriesColor(0), 0x8000u); }

TEST(GetSeriesColor, RepeatsTenColors) {
  constexpr std::uint32_t kColors[] = {0xC0C0C0, 0xC000C0, 0x808000, 0x0080FF, 0x00C000,
                                       0x800000, 0x008080, 0xFF309B, 0xC0C000, 0x004080};
  for (int i = 1; i <= 30; ++i)
    EXPECT_EQ(DeconSpectrum::GetSeriesColor(i), kColors[static_cast<std::size_t>(i % 10)]) << i;
}

TEST(GetSeriesColor, IsBlackBeyond30) {
  for (const int i : {31, 32, 1000, -1, -10}) EXPECT_EQ(DeconSpectrum::GetSeriesColor(i), 0u);
}
