// Tests: CmdEmpty.cpp, tslbl/CommandTable.cpp.

#include <RecordCheck.h>

#include <curve/TestCurve.h>
#include <tslbl/curve/CommandTable.h>
#include <tslbl/curve/Execute.h>
#include <tslbl/records/OPDParams.h>

using namespace TslBL;
using namespace tests;

namespace {

BaselineParams SampleBaseline() {
  BaselineParams p;
  p.Auto = false;
  p.Alg = BaselineParams::Adaptive;
  p.SegSize = 251;
  p.Window = 102;
  p.Points = 7;
  p.Width = 4;
  p.ManVal = -3.25;
  return p;
}
NoiseParams SampleNoise() {
  NoiseParams p;
  p.Median = 8;
  return p;
}
PeakDetectParams SamplePeakDetect() {
  PeakDetectParams p;
  p.SN = 9;
  return p;
}
SmoothParams SampleSmooth() {
  SmoothParams p;
  p.Passes = 3;
  return p;
}
ThresholdParams SampleThreshold() {
  ThresholdParams p;
  p.Value = 12.5;
  return p;
}

OPDParams SampleOPD() {
  OPDParams p;
  p.MaxPeaks = 4;
  return p;
}

// Every command with its row of the table, its parameters apart from those of a new one. Charge state
// deconvolution, whose parameters lie in a room above, has tests there.
struct Row {
  const wchar_t* text;
  std::uint32_t type;
  CurveEval eval;
  CurveEval fresh;      // with default parameters
  std::string stored;   // what follows type in a stream
  std::wstring inside;  // what stands inside its element
  std::wstring dump;
};

template <class Params>
Row WithParams(const wchar_t* text, std::uint32_t type, const Params& params) {
  return {text, type, CurveEval(params), CurveEval(Params()), ToBytes(params), ToXml(params), DumpOf(params)};
}
template <class Tag>
Row Without(const wchar_t* text, std::uint32_t type, const std::wstring& element) {
  return {text, type, CurveEval(Tag()), CurveEval(Tag()), Bytes(type), element, L""};
}

std::vector<Row> Rows() {
  return {
      {L"Empty", 0, CurveEval(), CurveEval(), "", L"", L""},
      WithParams(L"Baseline", 1, SampleBaseline()),
      Without<CurveEval::BaselineSubtract>(L"Baseline Subtract", 8, L"<Baseline_x0020_Subtract />\n"),
      WithParams(L"Noise", 2, SampleNoise()),
      WithParams(L"Peak Detect", 3, SamplePeakDetect()),
      WithParams(L"Smooth", 4, SampleSmooth()),
      WithParams(L"Threshold", 5, SampleThreshold()),
      Without<CurveEval::ThresholdSubtract>(L"Threshold Subtract", 9, L"<Threshold_x0020_Subtract />\n"),
      WithParams(L"OPD", 6, SampleOPD()),
      Without<CurveEval::AerosolFilter>(L"Aerosol Filter", 10, L"<Aerosol_x0020_Filter />\n"),
  };
}

std::wstring Attribute(const std::wstring& text) { return L"<CurveEval Type='" + text + L"'/>"; }

// Indents each line by one level.
std::wstring Indented(const std::wstring& xml) {
  std::wstring text;
  std::wistringstream in(xml);
  for (std::wstring line; std::getline(in, line);) text += L"  " + line + L"\n";
  return text;
}

}  // namespace

TEST(AllRecords, CurveEval) {
  std::vector<FieldChange<CurveEval>> commands;
  for (const Row& row : Rows())
    if (row.type != 0) commands.push_back({"command", [row](CurveEval& eval) { eval = row.eval; }});
  CheckRecord<CurveEval>(commands);
}
TEST(Golden, CurveEval) {
  CheckGolden(CurveEval(SampleBaseline()), "CurveEval.v2");
  CheckGolden(CurveEval(CurveEval::BaselineSubtract()), "CurveEval.v2.subtract");
}
TEST(CutShort, CurveEval) {
  for (const Row& row : Rows()) CheckCutShort(row.eval);
}

TEST(CurveEval, IsEmptyByDefault) {
  EXPECT_EQ(CurveEval().Type(), 0u);
  EXPECT_EQ(CurveEval().TypeText(), L"Empty");
}

TEST(CurveEval, HasTheTypeAndTheTextOfItsCommand) {
  for (const Row& row : Rows()) {
    EXPECT_EQ(row.eval.Type(), row.type);
    EXPECT_EQ(row.eval.TypeText(), row.text);
  }
}

TEST(CurveEval, IsOneOfTheseCommands) {
  ASSERT_EQ(CommandTable().size(), Rows().size() + 1);
  for (const Row& row : Rows()) EXPECT_EQ(FindCommand(row.text)->make(), row.fresh) << row.type;
}

TEST(CurveEval, KeepsACopyOfTheParameters) {
  BaselineParams params = SampleBaseline();
  const CurveEval eval(params);
  params.SegSize = 1;
  EXPECT_EQ(eval, CurveEval(SampleBaseline()));
}

TEST(CurveEval, IsCopiedAndAssigned) {
  for (const Row& row : Rows()) {
    const CurveEval copy(row.eval);
    CurveEval assigned(CurveEval::AerosolFilter{});
    assigned = row.eval;
    EXPECT_EQ(copy, row.eval);
    EXPECT_EQ(assigned, row.eval);
  }
}

TEST(CurveEval, AssignedToItselfStaysAsItIs) {
  CurveEval eval{SampleBaseline()};
  const CurveEval& itself = eval;
  eval = itself;
  EXPECT_EQ(eval, CurveEval(SampleBaseline()));
}

TEST(CurveEval, EqualsItselfAloneAmongTheCommands) {
  const std::vector<Row> rows = Rows();
  for (const Row& a : rows)
    for (const Row& b : rows) EXPECT_EQ(a.eval == b.eval, a.type == b.type);
}

TEST(CurveEval, ComparesParameters) {
  for (const Row& row : Rows()) EXPECT_EQ(row.eval == row.fresh, row.dump.empty()) << row.type;
}

TEST(CurveEval, EqualsItselfWhateverItHolds) {
  ThresholdParams p;
  p.Value = std::numeric_limits<double>::quiet_NaN();
  const CurveEval eval(p);
  EXPECT_TRUE(eval == eval);
  EXPECT_FALSE(eval == CurveEval(p));
}

TEST(CurveEval, StoresVersionTypeAndParameters) {
  for (const Row& row : Rows()) EXPECT_EQ(ToBytes(row.eval), Bytes(2u, row.type) + row.stored) << row.type;
}

TEST(CurveEval, ReadsWhatItStores) {
  for (const Row& row : Rows())
    EXPECT_EQ(FromBytes<CurveEval>(ToBytes(row.eval), CurveEval(SampleNoise())), row.eval) << row.type;
}

TEST(CurveEval, DropsTheSecondTypeOfACommandWithoutParameters) {
  for (const std::uint32_t type : {8u, 9u, 10u})
    EXPECT_EQ(FromBytes<CurveEval>(Bytes(2u, type, 12345u)).Type(), type);
}

TEST(CurveEval, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 1u, 3u, 0xFFFFFFFFu})
    EXPECT_EQ(ReadFailure<CurveEval>(Bytes(version, 0u), CurveEval(SampleNoise())),
              "Unknown CurveEval version.");
}

TEST(CurveEval, RefusesUnknownTypes) {
  for (const std::uint32_t type : {11u, 0xFFFFFFFFu})
    EXPECT_EQ(ReadFailure<CurveEval>(Bytes(2u, type, 0u), CurveEval(SampleNoise())),
              "Invalid curve evaluation type.");
}

TEST(CurveEval, IsChargeStateDeconvolutionForATextOfNoCommand) {
  for (const wchar_t* text : {L"opd", L"Smooth ", L"smooth", L""}) {
    const auto read = FromXml<CurveEval>(Attribute(text), CurveEval(SampleNoise()));
    EXPECT_TRUE(read.Type() == EvalType::CSDecon);
    EXPECT_EQ(read, FindCommand(EvalType::CSDecon)->make());
  }
}

TEST(EvalType, IsHeldAgainstStoredNumbers) {
  EXPECT_TRUE(CurveEval(SampleSmooth()).Type() == EvalType::Smooth);
  EXPECT_TRUE(EvalType::Smooth == 4u);
  EXPECT_TRUE(4u == EvalType::Smooth);
  EXPECT_TRUE(EvalType::Smooth != 5u);
  EXPECT_EQ(Number(EvalType::AerosolFilter), 10u);
}

TEST(CurveEval, StaysAsItIsIfItsParametersAreOfAnUnknownVersion) {
  EXPECT_EQ(ReadFailure<CurveEval>(Bytes(2u, 1u, 7u), CurveEval(SampleNoise())),
            "Unknown BaselineParams version.");
}

TEST(CurveEval, WritesItsTextAndItsParametersAsXml) {
  for (const Row& row : Rows()) {
    const std::wstring open = std::wstring(L"<CurveEval Type=\"") + row.text + L"\"";
    EXPECT_EQ(ToXml(row.eval), row.inside.empty() ? open + L" />\n"
                                                  : open + L">\n" + Indented(row.inside) + L"</CurveEval>\n");
  }
}

TEST(CurveEval, ReadsTheXmlThatItWrites) {
  for (const Row& row : Rows())
    EXPECT_EQ(FromXml<CurveEval>(ToXml(row.eval), CurveEval(SampleNoise())), row.eval) << row.type;
}

TEST(CurveEval, HasDefaultParametersIfItsElementLacksThem) {
  for (const Row& row : Rows())
    EXPECT_EQ(FromXml<CurveEval>(Attribute(row.text), row.eval), row.fresh) << row.type;
}

TEST(CurveEval, StaysAsItIsWithoutItsElement) {
  EXPECT_EQ(FromXml<CurveEval>(L"<Baseline/>", CurveEval(SampleNoise())), CurveEval(SampleNoise()));
}

TEST(CurveEval, IsEmptyWithoutAType) {
  EXPECT_EQ(FromXml<CurveEval>(L"<CurveEval><Baseline/></CurveEval>", CurveEval(SampleNoise())), CurveEval());
}

TEST(CurveEval, DumpsItsTextAndItsParameters) {
  for (const Row& row : Rows())
    EXPECT_EQ(DumpOf(row.eval), std::wstring(L"Cmd:\t") + row.text + L"\r\n" + row.dump) << row.type;
}

TEST(CurveEvalsText, AppendsTheTextsInTheirOrder) {
  std::wstring text = L"before|";
  CurveEvalsText({CurveEval(SampleThreshold()), CurveEval(CurveEval::AerosolFilter())}, text);
  EXPECT_EQ(text, L"before|Cmd:\tThreshold\r\n  Value:\t12.5\r\nCmd:\tAerosol Filter\r\n");
}

TEST(CurveEvalsText, AppendsNothingForAnEmptyChain) {
  std::wstring text = L"before";
  CurveEvalsText({}, text);
  EXPECT_EQ(text, L"before");
}

TEST(AddCurveEval, WritesTheCommand) {
  XMLBuilder builder;
  AddCurveEval(builder, CurveEval(SampleNoise()));
  EXPECT_EQ(builder.QXML(), ToXml(CurveEval(SampleNoise())));
}

TEST(LoadCurveEval, AppendsTheCommandsOfAListInTheirOrder) {
  XMLParser parser;
  ASSERT_TRUE(parser.LoadText(L"<L>" + ToXml(CurveEval(SampleNoise())) + Attribute(L"Smooth") + L"</L>"));
  int count = 0;
  ASSERT_TRUE(parser.StartList(L"L", count));
  std::vector<CurveEval> evals(1);
  for (; count > 0; --count) LoadCurveEval(parser, evals);
  EXPECT_EQ(evals,
            (std::vector<CurveEval>{CurveEval(), CurveEval(SampleNoise()), CurveEval(SmoothParams())}));
}

TEST(LoadCurveEval, AppendsAnEmptyCommandForAnAbsentElement) {
  XMLParser parser;
  std::vector<CurveEval> evals;
  LoadCurveEval(parser, evals);
  EXPECT_EQ(evals, std::vector<CurveEval>(1));
}

TEST(CurveEval, CopiesItsParametersIntoTheCurve) {
  TestCurve curve = CurveOf("0 1 5 9 5 1 0 0");
  for (const Row& row : Rows()) RunOn(row.eval, curve);
  EXPECT_EQ(curve.baselineParams, SampleBaseline());
  EXPECT_EQ(curve.noiseParams, SampleNoise());
  EXPECT_EQ(curve.peakDetectParams, SamplePeakDetect());
  EXPECT_EQ(curve.smoothParams, SampleSmooth());
}

TEST(CurveEval, CopiesItsParametersIntoTheCurveEvenIfTheStepFails) {
  TestCurve curve;
  TestCurve expected;
  expected.baselineParams = SampleBaseline();
  EXPECT_EQ(RunCommand(SampleBaseline(), curve), Failure(L"Unable to baseline."));
  EXPECT_TRUE(curve == expected);
}

TEST(CurveEval, EmptyDoesNothing) {
  TestCurve curve = CurveOf("0 1 5");
  const TestCurve before = curve;
  EXPECT_EQ(RunOn(CurveEval(), curve), Success(""));
  EXPECT_TRUE(curve == before);
}

TEST(CurveEval, RunsItsStepAlone) {
  TestCurve curve = CurveOf("0 1 5 9 5 1 0 0");
  EXPECT_EQ(RunCommand(SampleBaseline(), curve), Success("baseline"));
  EXPECT_EQ(RunCommand(SampleNoise(), curve), Success("noise"));
  EXPECT_EQ(RunCommand(SamplePeakDetect(), curve), Success("peaks"));
  EXPECT_EQ(RunCommand(SampleThreshold(), curve), Success("threshold"));
  EXPECT_EQ(RunCommand(SampleSmooth(), curve), Success("yAxis"));
  EXPECT_EQ(RunCommand(CurveEval::BaselineSubtract(), curve), Success("yAxis baseline"));
  EXPECT_EQ(RunCommand(CurveEval::ThresholdSubtract(), curve), Success("yAxis threshold"));
  EXPECT_EQ(RunCommand(CurveEval::AerosolFilter(), curve), Success("yAxis"));
  EXPECT_EQ(History(curve),
            "Baseline, Noise, Peak Detect, Threshold, Smooth, Baseline Subtract, Threshold Subtract, "
            "Aerosol Filter");
}

TEST(CurveEval, EntersTheHistoryWithItsParameters) {
  TestCurve curve = CurveOf("0 1 5 9 5 1 0 0");
  std::vector<CurveEval> expected;
  for (const Row& row : Rows()) {
    if (row.type == 0 || row.type == 3 || row.type == 6) continue;  // 3 comes too early, 6 is for spectra
    RunOn(row.eval, curve);
    expected.push_back(row.eval);
  }
  EXPECT_EQ(curve.evals, expected);
}

TEST(CurveEval, TwiceTheSameCommandIsTwoEntries) {
  TestCurve curve = CurveOf("0 1 5 9");
  RunCommand(SampleBaseline(), curve);
  RunCommand(SampleBaseline(), curve);
  EXPECT_EQ(History(curve), "Baseline, Baseline");
}

TEST(CurveEval, PeakDetectFailsOnAFreshCurveOnWhichExecutePeakDetectSucceeds) {
  TestCurve curve = CurveOf("0 1 5 9 5 1 0 0");
  EXPECT_EQ(RunCommand(PeakDetectParams(), curve), Failure(L"Unable to peak detect."));
  EXPECT_EQ(History(curve), "");
  EXPECT_EQ(RunOn(ExecutePeakDetect, curve), Success("baseline noise peaks"));
}

namespace {

// Runs a chain.
Outcome RunChain(const std::vector<CurveEval>& chain, Curve& curve) {
  return RunOn([&chain](Curve& c, Changed& changed,
                        std::wstring& error) { return ExecuteCurveEvals(c, chain, changed, error); },
               curve);
}

}  // namespace

TEST(ExecuteCurveEvals, AnEmptyChainChangesNothing) {
  TestCurve curve = CurveOf("0 1 5");
  const TestCurve before = curve;
  EXPECT_EQ(RunChain({}, curve), Success(""));
  EXPECT_TRUE(curve == before);
}

TEST(ExecuteCurveEvals, RunsTheCommandsInTheirOrder) {
  TestCurve curve = CurveOf("0 1 5 9 5 1 0 0");
  EXPECT_EQ(RunChain({CurveEval(SampleThreshold()), CurveEval(SampleBaseline()), CurveEval(),
                      CurveEval(CurveEval::BaselineSubtract()), CurveEval(SampleThreshold())},
                     curve),
            Success("yAxis baseline threshold"));
  EXPECT_EQ(History(curve), "Threshold, Baseline, Baseline Subtract, Threshold");
}

TEST(ExecuteCurveEvals, RunsTheCurvesOwnHistoryOnce) {
  TestCurve curve = CurveOf("0 1 5 9 5 1 0 0");
  const std::vector<CurveEval> chain = {CurveEval(SampleSmooth()), CurveEval(SampleBaseline()),
                                        CurveEval(SampleNoise()), CurveEval(SampleThreshold())};
  RunChain(chain, curve);
  TestCurve twice = curve;
  RunChain(chain, twice);
  const Outcome outcome =
      RunOn([](Curve& c, Changed& changed,
               std::wstring& error) { return ExecuteCurveEvals(c, c.evals, changed, error); },
            curve);
  EXPECT_EQ(outcome, Success("yAxis baseline noise threshold"));
  EXPECT_EQ(curve, twice);
}

TEST(ExecuteCurveEvals, StopsAtTheFirstFailureAndKeepsWhatRanBefore) {
  TestCurve curve = CurveOf("0 1 5 9 5 1 0 0");
  const Outcome outcome =
      RunChain({CurveEval(SampleBaseline()), CurveEval(PeakDetectParams()), CurveEval(NoiseParams())}, curve);
  EXPECT_EQ(outcome, (Outcome{false, "baseline", L"Unable to peak detect."}));
  EXPECT_EQ(History(curve), "Baseline");
}
