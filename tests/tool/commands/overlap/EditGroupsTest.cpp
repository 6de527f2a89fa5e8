#include <tool/commands/overlap/EditGroups.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/commands/overlap/Doublet.h>

namespace tests {
namespace {

using testing::HasSubstr;
using TslBL::Spectrum;
using TslTool::EditGroup;
using TslTool::GroupEdit;

// Two doublets, 12 m/z apart, with a single peak between them.
TslTool::LoadedSpectrum TwoDoublets() {
  return Deconvolved(WithPeaks(CountedSpectrum(
      {{499.0, 3000.0}, {499.7, 2000.0}, {505.0, 2500.0}, {509.0, 4000.0}, {509.7, 2500.0}})));
}

std::string Places(const Spectrum& spectrum) {
  std::string text;
  for (const auto& peak : spectrum.overlapPeaks) {
    char place[40];
    std::snprintf(place, sizeof place, "%u:%.1f ", peak.GroupId,
                  spectrum.FractionalIndexToXAxisVal(peak.Position));
    text += place;
  }
  return text;
}

std::string Edited(const TslTool::LoadedSpectrum& loaded, GroupEdit::Kind kind, double mz) {
  try {
    EditGroup(*loaded.spectrum, {kind, mz});
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return Places(*loaded.spectrum);
}

TEST(EditGroup, RemovesTheFittedPeakThere) {
  EXPECT_EQ(Places(*TwoDoublets().spectrum), "1:499.0 1:499.7 2:509.0 2:509.7 ");
  const std::string left = Edited(TwoDoublets(), GroupEdit::Remove, 499.7);
  EXPECT_THAT(left, testing::StartsWith("1:499.")) << left;
  EXPECT_THAT(left, testing::EndsWith(" 2:509.0 2:509.7 "));
}

TEST(EditGroup, KeepsTheGroupsToTheLeft) {
  const std::string left = Edited(TwoDoublets(), GroupEdit::Remove, 509.7);
  EXPECT_THAT(left, testing::StartsWith("1:499.0 1:499.7 2:509.")) << left;
}

TEST(EditGroup, AddsAPeakThatStandsAloneAsANewGroup) {
  EXPECT_EQ(Edited(TwoDoublets(), GroupEdit::Add, 505.0), "1:499.0 1:499.7 2:505.0 3:509.0 3:509.7 ");
}

TEST(EditGroup, AddsNoPeakWhereOneIs) {
  const TslTool::LoadedSpectrum loaded = TwoDoublets();
  Edited(loaded, GroupEdit::Add, 505.0);
  EXPECT_THAT(Edited(loaded, GroupEdit::Add, 505.0),
              HasSubstr("m/z 505 cannot be added: the group has a fitted peak there, at m/z 50"));
}

TEST(EditGroup, KeepsDataPeaksInStepWithGroups) {
  const TslTool::LoadedSpectrum loaded = TwoDoublets();
  Edited(loaded, GroupEdit::Add, 505.0);
  for (const auto& peak : loaded.spectrum->overlapPeaks)
    EXPECT_EQ(loaded.spectrum->peaks.at(peak.DataPeakId).overlapGroup, peak.GroupId);
}

TEST(EditGroup, SaysWhatIsNotThere) {
  EXPECT_THAT(Edited(TwoDoublets(), GroupEdit::Remove, 505.0),
              HasSubstr("m/z 505 cannot be removed: there is no fitted peak; the nearest is at "));
  EXPECT_EQ(Edited(WithPeaks(), GroupEdit::Remove, 505.0),
            "m/z 505 cannot be removed: the spectrum has no fitted peak");
  EXPECT_EQ(Edited(TwoDoublets(), GroupEdit::Add, 5.0),
            "m/z 5 cannot be added: There are no available peaks at this location.");
}

}  // namespace
}  // namespace tests
