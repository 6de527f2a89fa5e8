#include <gtest/gtest.h>

#include <spectrum/SampleSpectrum.h>
#include <algorithm>
#include <random>

using namespace TslBL;
using namespace tests;

namespace {

Spectrum SpectrumWithFits(std::uint32_t dataPeaks, const std::string& fits) {
  Spectrum s = SpectrumWithPeaks(dataPeaks);
  s.overlapPeaks = Fits(fits);
  s.SyncOverlapGroups();
  return s;
}

std::string Add(Spectrum& s, const std::string& fits) {
  std::vector<OverlapPeakInfo> group = Fits(fits);
  s.WOverlapPeakGroup(group);
  return Text(group);
}

}  // namespace

TEST(OverlapGroups, WithoutOverlapPeaksThereAreNone) {
  const Spectrum s = SpectrumWithPeaks(3);
  EXPECT_EQ(s.QNumGroups(), 0u);
  EXPECT_EQ(s.QNumOverlappedPeaks(), 0u);
  EXPECT_TRUE(s.QOverlapGroupPeakIds(0).empty());
  EXPECT_TRUE(s.QOverlapGroupPeakIds(1).empty());
  EXPECT_TRUE(s.QOverlapPeakGroup(1).empty());
}

TEST(OverlapGroups, AreCountedByTheLastPeak) {
  const Spectrum s = SpectrumWithFits(3, "1:0@4 2:1@12 2:1@17 3:2@25");
  EXPECT_EQ(s.QNumGroups(), 3u);
  EXPECT_EQ(s.QNumOverlappedPeaks(), 4u);
}

TEST(QPeakIdxByCurveIdx, FindsTheDataPeakThatSpansAPoint) {
  const Spectrum s = SpectrumWithPeaks(3);
  std::uint32_t peak = 77;
  EXPECT_TRUE(s.QPeakIdxByCurveIdx(19, peak));
  EXPECT_EQ(peak, 1u);
}

TEST(QPeakIdxByCurveIdx, LeavesTheResultWithoutOne) {
  std::uint32_t peak = 77;
  EXPECT_FALSE(SpectrumWithPeaks(3).QPeakIdxByCurveIdx(30, peak));
  EXPECT_FALSE(SpectrumWithPeaks(0).QPeakIdxByCurveIdx(0, peak));
  EXPECT_EQ(peak, 77u);
}

TEST(QOverlapPeakIdByMzPeak, IsTheFirstOfSeveralOnOneDataPeak) {
  const Spectrum s = SpectrumWithFits(3, "1:0@4 1:1@12 1:1@17 1:2@25");
  std::uint32_t opd = 77;
  EXPECT_TRUE(s.QOverlapPeakIdByMzPeak(1, opd));
  EXPECT_EQ(opd, 1u);
}

TEST(QOverlapPeakIdByMzPeak, IsLeftAtTheCountOnFailure) {
  const Spectrum s = SpectrumWithFits(3, "1:0@4 1:1@12");
  std::uint32_t opd = 77;
  EXPECT_FALSE(s.QOverlapPeakIdByMzPeak(2, opd));
  EXPECT_EQ(opd, 2u);
}

TEST(QOverlapGroupPeakIds, ListsAGroup) {
  const Spectrum s = SpectrumWithFits(3, "1:0@4 2:1@12 2:1@17 3:2@25");
  EXPECT_EQ(s.QOverlapGroupPeakIds(2), (std::vector<std::uint32_t>{1, 2}));
  EXPECT_TRUE(s.QOverlapGroupPeakIds(4).empty());
}

TEST(QOverlapGroupPeakIds, StopsAtTheFirstHigherGroup) {
  const Spectrum s = SpectrumWithFits(4, "1:0@4 3:1@12 2:2@25 1:3@35");
  EXPECT_EQ(s.QOverlapGroupPeakIds(1), (std::vector<std::uint32_t>{0}));
  EXPECT_TRUE(s.QOverlapGroupPeakIds(2).empty());
  EXPECT_EQ(s.QOverlapGroupPeakIds(3), (std::vector<std::uint32_t>{1}));
}

TEST(QOverlapPeakGroup, CopiesTheFirstUnbrokenRun) {
  const Spectrum s = SpectrumWithFits(4, "1:0@4 2:1@12 2:1@17 1:2@25 2:3@35");
  EXPECT_EQ(Text(s.QOverlapPeakGroup(1)), "1:0@4");
  EXPECT_EQ(Text(s.QOverlapPeakGroup(2)), "2:1@12 2:1@17");
  EXPECT_EQ(Text(s.QOverlapPeakGroup(3)), "");
}

TEST(PeakIds, OverlapPeaksFollowTheDataPeaks) {
  const Spectrum s = SpectrumWithFits(10, "1:0@1 1:1@12 1:2@25");
  EXPECT_TRUE(s.IsMzPkId(9));
  EXPECT_FALSE(s.IsMzPkId(10));
  for (const std::uint32_t opd : {0u, 1u, 2u}) {
    std::uint32_t peakId = 0;
    std::uint32_t back = 77;
    EXPECT_TRUE(s.OpdPkIdToSpecPkId(opd, peakId));
    EXPECT_EQ(peakId, 10 + opd);
    EXPECT_TRUE(s.IsOpdPkId(peakId));
    EXPECT_TRUE(s.SpecPkIdToOpdPkId(peakId, back));
    EXPECT_EQ(back, opd);
  }
}

TEST(PeakIds, OutOfRangeAreRefused) {
  const Spectrum s = SpectrumWithFits(10, "1:0@1 1:1@12 1:2@25");
  std::uint32_t result = 77;
  EXPECT_FALSE(s.OpdPkIdToSpecPkId(3, result));
  for (const std::uint32_t peakId : {0u, 9u, 13u, 0xFFFFFFFFu}) {
    EXPECT_FALSE(s.IsOpdPkId(peakId)) << peakId;
    EXPECT_FALSE(s.SpecPkIdToOpdPkId(peakId, result)) << peakId;
  }
  EXPECT_EQ(result, 77u);
}

TEST(WOverlapPeakGroup, EmptyGroupChangesNothing) {
  Spectrum s = SpectrumWithFits(3, "4:1@12");
  s.peaks[0].overlapGroup = 9;  // would not outlive a synchronisation
  Add(s, "");
  EXPECT_EQ(Text(s.overlapPeaks), "4:1@12");
  EXPECT_EQ(RowGroups(s), "9 4 0");
}

TEST(WOverlapPeakGroup, FirstGroupIsNumber1) {
  Spectrum s = SpectrumWithPeaks(3);
  EXPECT_EQ(Add(s, "9:1@12 9:2@25"), "1:1@12 1:2@25");
  EXPECT_EQ(Text(s.overlapPeaks), "1:1@12 1:2@25");
  EXPECT_EQ(RowGroups(s), "0 1 1");
}

TEST(WOverlapPeakGroup, SortsTheGroupInPlace) {
  Spectrum s = SpectrumWithPeaks(3);
  EXPECT_EQ(Add(s, "0:2@25 0:0@4 0:1@12"), "1:0@4 1:1@12 1:2@25");
  EXPECT_EQ(Text(s.overlapPeaks), "1:0@4 1:1@12 1:2@25");
}

TEST(WOverlapPeakGroup, ToTheRightGetsTheNextNumberWithoutRenumbering) {
  Spectrum s = SpectrumWithFits(4, "3:0@4 7:1@12");
  EXPECT_EQ(Add(s, "0:3@32 0:2@25"), "8:2@25 8:3@32");
  EXPECT_EQ(Text(s.overlapPeaks), "3:0@4 7:1@12 8:2@25 8:3@32");
  EXPECT_EQ(RowGroups(s), "3 7 8 8");
}

TEST(WOverlapPeakGroup, ToTheLeftIsSortedInAndAllAreRenumbered) {
  Spectrum s = SpectrumWithFits(4, "1:1@12 1:1@15 2:3@32");
  EXPECT_EQ(Add(s, "0:0@2 0:0@6"), "3:0@2 3:0@6");
  EXPECT_EQ(Text(s.overlapPeaks), "1:0@2 1:0@6 2:1@12 2:1@15 3:3@32");
  EXPECT_EQ(RowGroups(s), "1 2 0 3");
}

TEST(WOverlapPeakGroup, AtThePositionOfTheLastPeakIsToTheRight) {
  Spectrum s = SpectrumWithFits(3, "5:1@12");
  Add(s, "0:1@12");
  EXPECT_EQ(Text(s.overlapPeaks), "5:1@12 6:1@12");
}

TEST(WOverlapPeakGroup, InsideAnotherSplitsIt) {
  Spectrum s = SpectrumWithFits(3, "1:0@4 1:2@25");
  Add(s, "0:1@12");
  EXPECT_EQ(Text(s.overlapPeaks), "1:0@4 2:1@12 3:2@25");
  EXPECT_EQ(RowGroups(s), "1 2 3");
}

TEST(ReorderGroups, NumbersRunsInTheirOrder) {
  Spectrum s = SpectrumWithFits(5, "7:0@4 7:0@5 3:1@12 7:2@25 9:3@35");
  s.ReorderGroups();
  EXPECT_EQ(Text(s.overlapPeaks), "1:0@4 1:0@5 2:1@12 3:2@25 4:3@35");
}

TEST(ReorderGroups, LeavesALeadingGroup0At0) {
  Spectrum s = SpectrumWithFits(3, "0:0@4 5:1@12");
  s.ReorderGroups();
  EXPECT_EQ(Text(s.overlapPeaks), "0:0@4 1:1@12");
}

TEST(SyncOverlapGroups, LastFitOnADataPeakGivesItsGroup) {
  Spectrum s = SpectrumWithPeaks(3);
  for (PeakInfo& row : s.peaks) row.overlapGroup = 9;
  s.overlapPeaks = Fits("1:1@12 2:1@15");
  s.SyncOverlapGroups();
  EXPECT_EQ(RowGroups(s), "0 2 0");
}

TEST(SyncOverlapGroups, FitWithoutADataPeakMarksNone) {
  Spectrum s = SpectrumWithPeaks(2);
  s.overlapPeaks = Fits("1:1@12 2:2@25 3:4294967295@26");
  s.SyncOverlapGroups();
  EXPECT_EQ(RowGroups(s), "0 1");
}

TEST(RenumberDataPeakIds, ShiftsFromAnIdOn) {
  Spectrum s = SpectrumWithFits(9, "1:2@4 1:3@5 1:4@6");
  s.RenumberDataPeakIds(3, true);
  EXPECT_EQ(Text(s.overlapPeaks), "1:2@4 1:4@5 1:5@6");
  s.RenumberDataPeakIds(4, false);
  EXPECT_EQ(Text(s.overlapPeaks), "1:2@4 1:3@5 1:4@6");
}

TEST(RemoveOverlapDataPeaks, TakesAllUpToTheLargestListed) {
  Spectrum s = SpectrumWithFits(6, "1:0@4 2:2@22 2:3@33 3:4@44 4:5@55");
  s.RemoveOverlapDataPeaks({1, 3});
  EXPECT_EQ(Text(s.overlapPeaks), "1:4@44 2:5@55");
}

TEST(RemoveOverlapDataPeaks, LeavesThePeakTableAlone) {
  Spectrum s = SpectrumWithFits(3, "1:0@4 2:2@22");
  s.RemoveOverlapDataPeaks({0});
  EXPECT_EQ(RowGroups(s), "1 0 2");
}

TEST(RemoveOverlapDataPeaks, RenumbersOnlyIfAnyWent) {
  Spectrum s = SpectrumWithFits(6, "5:3@33 7:4@44");
  s.RemoveOverlapDataPeaks({0, 2});
  s.RemoveOverlapDataPeaks({});
  EXPECT_EQ(Text(s.overlapPeaks), "5:3@33 7:4@44");
}

TEST(ClearOverlapRange, RemovesWhatMeetsTheRangeAndWhatLiesBelow) {
  Spectrum s = SpectrumWithFits(4, "1:0@4 2:1@12 3:2@25 4:3@35");
  s.ClearOverlapRange(122.0, 127.0);
  EXPECT_EQ(Text(s.overlapPeaks), "1:3@35");
  EXPECT_EQ(RowGroups(s), "0 0 0 1");
}

TEST(ClearOverlapRange, PeakThatOnlyTouchesTheRangeIsNotInIt) {
  Spectrum s = SpectrumWithFits(4, "1:0@4 2:1@12 3:2@25 4:3@35");
  s.ClearOverlapRange(119.0, 120.0);  // the end of data peak 1 and the start of 2
  EXPECT_EQ(Text(s.overlapPeaks), "1:0@4 2:1@12 3:2@25 4:3@35");
  s.ClearOverlapRange(118.0, 120.0);
  EXPECT_EQ(Text(s.overlapPeaks), "1:2@25 2:3@35");
}

TEST(ClearOverlapRange, RoundsTheRangeInwards) {
  Spectrum s = SpectrumWithFits(4, "1:0@4 2:1@12 3:2@25 4:3@35");
  s.ClearOverlapRange(118.5, 120.5);  // points 19 to 20
  EXPECT_EQ(s.QNumGroups(), 4u);
}

TEST(ClearOverlapRange, WithoutADataPeakInItRemovesNothingButBringsTheTableInStep) {
  Spectrum s = SpectrumWithFits(2, "1:0@4 2:1@12");
  s.peaks[0].overlapGroup = 9;
  s.ClearOverlapRange(125.0, 128.0);
  EXPECT_EQ(Text(s.overlapPeaks), "1:0@4 2:1@12");
  EXPECT_EQ(RowGroups(s), "1 2");
}

TEST(ClearOverlapRange, OfTheWholeInstrumentRemovesAll) {
  Spectrum s = SpectrumWithFits(4, "1:0@4 2:1@12 3:2@25 4:3@35");
  s.ClearOverlapRange(5.0, 3000.0);
  EXPECT_EQ(Text(s.overlapPeaks), "");
  EXPECT_EQ(RowGroups(s), "0 0 0 0");
}

// Random editing: one seed, printed by the trace of whatever fails.

namespace {

constexpr std::uint32_t kDataPeaks = 12;

class Editor {
 public:
  explicit Editor(unsigned seed) : random_(seed) {}

  std::uint32_t Below(std::uint32_t end) {
    return std::uniform_int_distribution<std::uint32_t>(0, end - 1)(random_);
  }

  // Fits on the data peaks from `first` on, each at a place within its data peak.
  std::vector<OverlapPeakInfo> Group() {
    std::vector<OverlapPeakInfo> group(1 + Below(4));
    const std::uint32_t first = Below(kDataPeaks - 2);
    for (OverlapPeakInfo& fit : group) {
      fit.DataPeakId = first + Below(3);
      fit.Position = 10.0 * fit.DataPeakId + 0.125 * Below(80);
    }
    return group;
  }

  std::vector<std::uint32_t> Ascending() {
    std::vector<std::uint32_t> list(Below(4));
    for (auto& dataPeak : list) dataPeak = Below(kDataPeaks);
    std::ranges::sort(list);
    return list;
  }

  void Edit(Spectrum& s) {
    switch (Below(4)) {
      case 0: {
        const double low = 100.0 + Below(10 * kDataPeaks);
        return s.ClearOverlapRange(low, low + Below(20));
      }
      case 1:
        s.RemoveOverlapDataPeaks(Ascending());
        return s.SyncOverlapGroups();
      default: {
        auto group = Group();
        return s.WOverlapPeakGroup(group);
      }
    }
  }

 private:
  std::mt19937 random_;
};

bool NumbersHaveNoGap(const std::vector<OverlapPeakInfo>& fits) {
  std::uint32_t last = 0;
  for (const OverlapPeakInfo& fit : fits) {
    if (fit.GroupId != last && fit.GroupId != last + 1) return false;
    last = fit.GroupId;
  }
  return fits.empty() || fits.front().GroupId == 1;
}

std::uint32_t GroupOfLastFit(const Spectrum& s, std::uint32_t dataPeak) {
  std::uint32_t group = NoOverlapGroupId;
  for (const OverlapPeakInfo& fit : s.overlapPeaks)
    if (fit.DataPeakId == dataPeak) group = fit.GroupId;
  return group;
}

}  // namespace

TEST(OverlapGroups, KeepTheirOrderAndNumbersThroughRandomEditing) {
  Editor editor(20240607);
  Spectrum s = SpectrumWithPeaks(kDataPeaks);
  std::size_t most = 0;
  for (int step = 0; step < 3000; ++step) {
    editor.Edit(s);
    most = std::max(most, s.overlapPeaks.size());
    SCOPED_TRACE("step " + std::to_string(step) + ": " + Text(s.overlapPeaks));
    ASSERT_TRUE(std::ranges::is_sorted(s.overlapPeaks, {}, &OverlapPeakInfo::Position));
    ASSERT_TRUE(NumbersHaveNoGap(s.overlapPeaks));
    for (std::uint32_t i = 0; i < kDataPeaks; ++i)
      ASSERT_EQ(s.peaks[i].overlapGroup, GroupOfLastFit(s, i)) << i;
  }
  EXPECT_GE(most, 8u) << "the editing never built up anything";
}

TEST(OverlapGroups, GroupsOnTheirOwnDataPeaksStandTogetherWhateverTheOrderOfAdding) {
  Editor editor(4711);
  for (int round = 0; round < 300; ++round) {
    Spectrum s = SpectrumWithPeaks(kDataPeaks);
    std::vector<std::uint32_t> order(kDataPeaks);
    for (std::uint32_t i = 0; i < kDataPeaks; ++i) order[i] = i;
    for (std::uint32_t i = kDataPeaks; i > 1; --i) std::swap(order[i - 1], order[editor.Below(i)]);
    for (const std::uint32_t dataPeak : order) {
      const double at = 10.0 * dataPeak;
      auto group = Fits("0:" + std::to_string(dataPeak) + "@" + std::to_string(at + 1 + editor.Below(8)) +
                        " 0:" + std::to_string(dataPeak) + "@" + std::to_string(at));
      s.WOverlapPeakGroup(group);
    }
    for (std::uint32_t i = 0; i < kDataPeaks; ++i) {
      ASSERT_EQ(s.peaks[i].overlapGroup, i + 1) << Text(s.overlapPeaks);
      ASSERT_EQ(s.QOverlapGroupPeakIds(i + 1), (std::vector<std::uint32_t>{2 * i, 2 * i + 1}));
    }
  }
}

TEST(RemoveOverlapDataPeaks, IsALowerBoundThatDoesNotFallOffTheEnd) {
  Editor editor(815);
  for (int round = 0; round < 1000; ++round) {
    Spectrum s = SpectrumWithPeaks(kDataPeaks);
    for (int i = 0; i < 6; ++i) {
      auto group = editor.Group();
      s.WOverlapPeakGroup(group);
    }
    const auto list = editor.Ascending();
    std::vector<double> kept;
    for (const OverlapPeakInfo& fit : s.overlapPeaks)
      if (std::ranges::lower_bound(list, fit.DataPeakId) == list.end()) kept.push_back(fit.Position);
    s.RemoveOverlapDataPeaks(list);
    std::vector<double> left;
    for (const OverlapPeakInfo& fit : s.overlapPeaks) left.push_back(fit.Position);
    ASSERT_EQ(left, kept);
  }
}
