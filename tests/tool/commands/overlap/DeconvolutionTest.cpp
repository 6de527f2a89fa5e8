#include <tool/commands/overlap/Deconvolution.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <tool/commands/overlap/Doublet.h>
#include <tool/frame/InputError.h>
#include <tslbl/closed/engines/OverlapPeakEngine.h>

namespace tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TslTool::Deconvolution;
using TslTool::EditsByScan;
using TslTool::GroupEdit;
using TslTool::OverlapOptions;

std::string Failure(Deconvolution& deconvolution) {
  TslTool::LoadedSpectrum loaded = WithPeaks();
  try {
    deconvolution.Run(loaded);
  } catch (const TslTool::InputError& e) {
    return e.what();
  }
  return "";
}

TEST(Deconvolution, FitsWhatOverlaps) {
  Deconvolution deconvolution("doublet", OverlapOptions(), {}, {});
  TslTool::LoadedSpectrum loaded = WithPeaks();
  deconvolution.Run(loaded);
  EXPECT_EQ(loaded.spectrum->QNumGroups(), 1U);
  EXPECT_EQ(deconvolution.Note(), "1 group of 2 fitted peaks");
  EXPECT_THAT(deconvolution.Warnings(), IsEmpty());
}

TEST(Deconvolution, MakesTheEditsOfItsScan) {
  Deconvolution deconvolution("doublet", OverlapOptions(), EditsByScan{{3, {{GroupEdit::Add, 507.0}}}}, {});
  EXPECT_EQ(Failure(deconvolution), "");
  EXPECT_EQ(deconvolution.Note(), "2 groups of 3 fitted peaks");
}

TEST(Deconvolution, TellsOfEditsForScansThatNeverCame) {
  Deconvolution deconvolution("doublet", OverlapOptions(),
                              EditsByScan{{3, {{GroupEdit::Add, 507.0}}}, {8, {{GroupEdit::Add, 507.0}}}},
                              {});
  Failure(deconvolution);
  EXPECT_THAT(deconvolution.Warnings(), ElementsAre("scan 8 has edits and was not evaluated"));
}

TEST(Deconvolution, TellsOfFitsThatLeaveMoreThanNoise) {
  Deconvolution deconvolution("doublet", OverlapOptions(), {}, {{GroupEdit::Remove, kRight.mz}});
  EXPECT_EQ(Failure(deconvolution), "");
  ASSERT_EQ(deconvolution.Warnings().size(), 1U);
  EXPECT_THAT(
      deconvolution.Warnings()[0],
      testing::StartsWith("1 spectrum with a group whose fit leaves more than noise, chi2 above 3 (first at "
                          "scan 3, m/z 503."));
}

TEST(Deconvolution, EditsOneSpectrumWhereTheEditsNameNone) {
  Deconvolution deconvolution("doublet", OverlapOptions(), {}, {{GroupEdit::Add, 507.0}});
  EXPECT_EQ(Failure(deconvolution), "");
  EXPECT_THAT(Failure(deconvolution),
              testing::StartsWith("doublet: --refit-add and --refit-remove edit one "));
}

TEST(Deconvolution, FitsWhatTouchesWhereThePeaksCannotBeGrouped) {
  TslTool::LoadedSpectrum loaded = WithPeaks(CountedSpectrum({{500.0, 3000.0}, {501.0, 1500.0}, kAlone}));
  ASSERT_EQ(loaded.spectrum->peaks.size(), 3U);
  loaded.spectrum->peaks[1].baselineAmpl = 1e5;
  Deconvolution deconvolution("doublet", OverlapOptions(), {}, {});
  deconvolution.Run(loaded);
  EXPECT_EQ(deconvolution.Note(), "1 group of 2 fitted peaks");
  ASSERT_EQ(deconvolution.Warnings().size(), 1U);
  EXPECT_THAT(
      deconvolution.Warnings()[0],
      testing::StartsWith("1 spectrum where a peak lies below the baseline of its neighbour, in which "
                          "only data peaks that touch were fitted together (first at scan 3)"));
}

TEST(Deconvolution, NamesTheScanOfAFailure) {
  Deconvolution deconvolution("doublet", OverlapOptions(), {}, {{GroupEdit::Remove, 600.0}});
  EXPECT_THAT(Failure(deconvolution),
              testing::StartsWith("doublet: scan 3: m/z 600 cannot be removed: there is no fitted peak;"));
}

TEST(Deconvolution, NamesTheScanWhereThereIsNoEngine) {
  TslCommon::ComponentRegistry::Instance().Register(TslMath::OverlapPeakEngine::kClassId, nullptr);
  Deconvolution deconvolution("doublet", OverlapOptions(), {}, {});
  EXPECT_EQ(Failure(deconvolution), "doublet: scan 3: Unable to load overlap peak deconvolution library.");
  TslMath::RegisterOwnOverlapPeakEngine();
}

}  // namespace
}  // namespace tests
