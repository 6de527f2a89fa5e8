// Tests: tool/io/DocumentCheck.cpp.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <tool/TempFile.h>
#include <tool/chain/ChainFile.h>
#include <tool/frame/InputError.h>
#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <tslbl/curve/SmoothParams.h>
#include <tslbl/curve/ThresholdParams.h>

namespace tests {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using TslBL::CurveEval;
using TslTool::ChainToXml;
using Chain = std::vector<CurveEval>;

Chain Load(const std::string& text) {
  const TempFile file("chain.xml", text);
  return TslTool::LoadChain(file.Path());
}

std::string ErrorOf(const std::string& text) {
  const TempFile file("chain.xml", text);
  try {
    TslTool::LoadChain(file.Path());
  } catch (const TslTool::InputError& error) {
    EXPECT_THAT(error.what(), testing::StartsWith(file.Path() + ": "));
    return error.Place() + ": " + error.Reason();
  }
  return "";
}

// Each command, with every parameter unlike its default.
Chain EveryCommand() {
  TslBL::SmoothParams smooth;
  smooth.Passes = 2;
  smooth.Order = 4;
  smooth.Alg = TslBL::SmoothParams::SavitzkyGolay;
  smooth.StepTrans = TslBL::SmoothParams::Staggered;
  smooth.Steps = {{100.25, 7}, {500.5, 11}};
  TslBL::BaselineParams baseline;
  baseline.Auto = false;
  baseline.Alg = TslBL::BaselineParams::Adaptive;
  baseline.SegSize = 77;
  baseline.Window = 33;
  baseline.Points = 6;
  baseline.Width = 4;
  baseline.ManVal = -1.25;
  TslBL::NoiseParams noise;
  noise.Auto = false;
  noise.AlgAuto = TslBL::NoiseParams::AutoAlgs::Median;
  noise.AlgMan = TslBL::NoiseParams::ManAlgs::SixTimesSD;
  noise.SegSize = 66;
  noise.Median = 3;
  noise.Start = 12.5;
  noise.End = 99.75;
  TslBL::ThresholdParams threshold;
  threshold.Value = 3.25;
  TslBL::PeakDetectParams detect;
  detect.FullSearch = false;
  detect.SN = 17;
  detect.RelAmplInUse = true;
  detect.RelAmpl = 0.5;
  detect.MaxValley = 12.5;
  detect.RetentionType = TslBL::PeakDetectParams::PeakTop;
  detect.FindFeatureAlgorithm = TslBL::PeakDetectParams::Sorted;
  return {CurveEval(),
          CurveEval(smooth),
          CurveEval(baseline),
          CurveEval(CurveEval::BaselineSubtract()),
          CurveEval(noise),
          CurveEval(threshold),
          CurveEval(CurveEval::ThresholdSubtract()),
          CurveEval(CurveEval::AerosolFilter()),
          CurveEval(detect)};
}

TEST(ChainFile, WhatIsShownIsWhatIsRead) { EXPECT_EQ(Load(ChainToXml(EveryCommand())), EveryCommand()); }

TEST(ChainFile, EachCommandAloneComesBack) {
  for (const CurveEval& eval : EveryCommand()) EXPECT_EQ(Load(ChainToXml({eval})), Chain{eval});
}

TEST(ChainFile, AnEmptyListIsAnEmptyChain) { EXPECT_THAT(Load("<CurveEvals/>"), IsEmpty()); }

TEST(ChainFile, AnElementLeftOutKeepsItsDefault) {
  EXPECT_EQ(Load(R"(<CurveEvals><CurveEval Type="Smooth"><Smooth/></CurveEval></CurveEvals>)"),
            Chain{CurveEval(TslBL::SmoothParams())});
}

TEST(ChainFile, CommentsAndAnOlderNameAreTaken) {
  const Chain chain = Load(
      "<?xml version=\"1.0\"?><CurveEvals><!-- mine --><CurveEval Type=\"Baseline\"><Baseline>"
      "<Alg>APB Morph</Alg></Baseline></CurveEval></CurveEvals>");
  TslBL::BaselineParams adaptive;
  adaptive.Alg = TslBL::BaselineParams::Adaptive;
  EXPECT_EQ(chain, Chain{CurveEval(adaptive)});
}

// A chain with one text replaced by another.
std::string Changed(const std::string& from, const std::string& to) {
  std::string text = ChainToXml({CurveEval(TslBL::SmoothParams()), CurveEval(TslBL::PeakDetectParams())});
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

TEST(ChainFile, ASlipOfThePenIsNamedWithItsPlace) {
  const std::string smooth = "CurveEvals/CurveEval[1]/Smooth";
  const std::string detect = "CurveEvals/CurveEval[2]/PeakDetect";
  EXPECT_EQ(ErrorOf(Changed("<Order>2</Order>", "<Ordre>2</Ordre>")), smooth + ": unknown element \"Ordre\"");
  EXPECT_EQ(ErrorOf(Changed("<Order>2<", "<Order>two<")), smooth + "/Order: \"two\" is not a value for it");
  EXPECT_EQ(ErrorOf(Changed("<Order>2<", "<Order>-2<")), smooth + "/Order: \"-2\" is not a value for it");
  EXPECT_EQ(ErrorOf(Changed("<Order>2<", "<Order>2.5<")), smooth + "/Order: \"2.5\" is not a value for it");
  EXPECT_EQ(ErrorOf(Changed("<Order>2<", "<Order>5000000000<")),
            smooth + "/Order: \"5000000000\" is not a value for it");
  EXPECT_EQ(ErrorOf(Changed("<Alg>Mean<", "<Alg>Meen<")), smooth + "/Alg: \"Meen\" is not a value for it");
  EXPECT_EQ(ErrorOf(Changed("Size=\"5\"", "Width=\"5\"")),
            smooth + "/Steps/Step: unknown attribute \"Width\"");
  EXPECT_EQ(ErrorOf(Changed("Size=\"5\"", "Size=\"wide\"")),
            smooth + "/Steps/Step@Size: \"wide\" is not a value for it");
  EXPECT_EQ(ErrorOf(Changed("<MaxValley>25<", "<MaxValley>nan<")),
            detect + "/MaxValley: \"nan\" is not a value for it");
  EXPECT_EQ(ErrorOf(Changed("InUse=\"true\"", "InUse=\"perhaps\"")),
            detect + "/SN@InUse: \"perhaps\" is not a value for it");
}

TEST(ChainFile, SmoothingThatWouldSeemToHangIsRefused) {
  EXPECT_EQ(ErrorOf(Changed("<Passes>1<", "<Passes>1000<")), "");
  EXPECT_EQ(ErrorOf(Changed("<Passes>1<", "<Passes>1001<")),
            "CurveEvals/CurveEval[1]/Smooth/Passes: \"1001\" is not from 1 to 1000");
  EXPECT_EQ(ErrorOf(Changed("<Passes>1<", "<Passes>-1<")),
            "CurveEvals/CurveEval[1]/Smooth/Passes: \"-1\" is not a value for it");
}

TEST(ChainFile, ValuesThatNobodyCanMeanAreRefused) {
  const std::string smooth = "CurveEvals/CurveEval[1]/Smooth";
  const std::string detect = "CurveEvals/CurveEval[2]/PeakDetect";
  EXPECT_EQ(ErrorOf(Changed("<Passes>1<", "<Passes>0<")), smooth + "/Passes: \"0\" is not from 1 to 1000");
  EXPECT_EQ(ErrorOf(Changed("<Order>2<", "<Order>400000000<")),
            smooth + "/Order: \"400000000\" is not from 0 to 100");
  EXPECT_EQ(ErrorOf(Changed("Size=\"5\"", "Size=\"0\"")),
            smooth + "/Steps/Step@Size: \"0\" is not from 1 to 4294967295");
  EXPECT_EQ(ErrorOf(Changed("<MaxValley>25<", "<MaxValley>-50<")),
            detect + "/MaxValley: \"-50\" is not from 0 to 100");
}

TEST(ChainFile, ADamagedValueCannotGarbleATerminal) {
  EXPECT_EQ(ErrorOf(Changed("<Order>2<", "<Order>2\n\xc3\xa4<")),
            "CurveEvals/CurveEval[1]/Smooth/Order: \"2\\n\xc3\xa4\" is not a value for it");
}

TEST(ChainFile, AnUnknownCommandIsNamedWithItsPlace) {
  EXPECT_EQ(ErrorOf(Changed("Type=\"Smooth\"", "Type=\"Smoth\"")),
            "CurveEvals/CurveEval[1]@Type: \"Smoth\" is not a value for it");
  EXPECT_EQ(ErrorOf(Changed("Type=\"Peak Detect\"", "Type=\"PeakDetect\"")),
            "CurveEvals/CurveEval[2]@Type: \"PeakDetect\" is not a value for it");
}

TEST(ChainFile, ARangeOfChargeStatesIsFullTrueOrFalse) {
  const auto withRange = [](const std::string& text) {
    return ErrorOf("<CurveEvals><CurveEval Type=\"Charge State Deconvolution\"><ChargeState><Range>" + text +
                   "</Range></ChargeState></CurveEval></CurveEvals>");
  };
  EXPECT_EQ(withRange("Full"), "");
  EXPECT_EQ(withRange("false"), "");
  EXPECT_EQ(withRange("true"), "");
  EXPECT_THAT(withRange("TRUE"), HasSubstr("ChargeState/Range: \"TRUE\" is not a value for it"));
}

TEST(ChainFile, ChargeStatesThatTheLibraryWroteComeBackAsTheyWere) {
  for (const bool isFull : {true, false}) {
    TslBL::ChargeStateParams params;
    params.FullRange = isFull;
    params.StartMz = 700;
    params.EndMz = 900;
    params.MaxCSGaps = 2;
    params.Resolved.MaxCS = 17;
    const Chain chain = {CurveEval(TslBL::PeakDetectParams()), CurveEval(params)};
    const Chain loaded = Load(ChainToXml(chain));
    EXPECT_EQ(loaded, chain) << isFull;
    EXPECT_EQ(TslTool::ChargeStatesOf(loaded.back()), params) << isFull;
  }
}

TEST(ChainFile, WhatIsNoChainIsRefused) {
  EXPECT_EQ(ErrorOf(""), ": line 1, column 1: No document element found");
  EXPECT_EQ(ErrorOf("<CurveEvals><CurveEval>"), ": line 1, column 23: Start-end tags mismatch");
  EXPECT_EQ(ErrorOf("<Chain/>"), ": the document has no element \"CurveEvals\"");
  EXPECT_THAT(ErrorOf("100 5\n"), HasSubstr("line 1, column 1"));
  EXPECT_EQ(ErrorOf("<CurveEvals><Smooth/></CurveEvals>"), "CurveEvals: unknown element \"Smooth\"");
}

TEST(ChainFile, CutAnywhereItIsRefused) {
  const std::string text = ChainToXml(EveryCommand());
  const std::size_t last = text.rfind('>');
  for (std::size_t length = 0; length < last; length += 7)
    EXPECT_NE(ErrorOf(text.substr(0, length)), "") << length;
}

TEST(ChainFile, AFileThatIsMissingOrAFolderIsNamed) {
  for (const char* path : {"/no/such/chain.xml", "/tmp"}) {
    try {
      TslTool::LoadChain(path);
      FAIL();
    } catch (const TslTool::InputError& error) {
      EXPECT_EQ(std::string(error.what()), std::string(path) + ": the file cannot be read");
    }
  }
}

}  // namespace
}  // namespace tests
