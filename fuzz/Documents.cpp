// Everything that comes as text: each record as a document, the syringe catalogue, a chain file,
// the rows of limits, sum formulas, documents of results; and the rules of a tune that came so. The first
// byte picks the reader, the rest is the text. What is read must be written as a document that reads as the
// same.

#include <fuzz/AutoFindPrefs.h>
#include <fuzz/Records.h>
#include <fuzz/TuneRules.h>
#include <tool/chain/ChainFile.h>
#include <tool/commands/chrom/CurveChoice.h>
#include <tool/commands/chrom/CurvesFile.h>
#include <tool/commands/tune/TuneDifferences.h>
#include <tool/commands/tune/TuneFaults.h>
#include <tool/commands/tune/TuneFile.h>
#include <tool/commands/tune/TuneSheet.h>
#include <tool/frame/InputError.h>
#include <tslbl/chargestate/ChargeStateParams.h>
#include <tslbl/chromatogram/ICFilter.h>
#include <tslbl/chromatogram/ICRange.h>
#include <tslbl/closed/common/ModulePath.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/closed/engines/Formula.h>
#include <tslbl/curve/Curve.h>
#include <tslbl/detect/ThreadingParams.h>
#include <tslbl/method/Method.h>
#include <tslbl/records/MZPeakField.h>
#include <tslbl/records/MZRange.h>
#include <tslbl/records/OPDParams.h>
#include <tslbl/results/ResultCurve.h>
#include <tslbl/tune/LimitOverrides.h>
#include <tslbl/tune/SyringeList.h>
#include <tslbl/tune/Tune.h>
#include <cmath>
#include <map>
#include <utility>
#include <vector>

using namespace TslBL;
using namespace fuzz;

namespace {

template <class R>
void Check(std::string_view text) {
  R record;
  if (AcceptsXml(TslCommon::FromUtf8(text), record)) RequireDocumentStays<R>(ToXml(record));
}

// Commands hold parameters of charge state deconvolution, whose range a document does not keep.
template <class R>
void CheckSettling(std::string_view text) {
  R record;
  if (AcceptsXml(TslCommon::FromUtf8(text), record)) RequireDocumentSettles<R>(ToXml(record));
}

void CheckSyringeList(std::string_view text) {
  const std::wstring path = TslCommon::ModuleFolder(TslCommon::ModuleHandle()) + L"SyringeList.xml";
  std::ofstream(TslCommon::ToUtf8(path), std::ios::binary) << text;
  const SyringeList list = SyringeList::Load();
  RequireDocumentStays<SyringeList>(ToXml(list));
  Check<SyringeList>(text);
}

std::vector<CurveEval> LoadOrRefuse(const std::string& file) {
  try {
    return TslTool::LoadChain(file);
  } catch (const TslTool::InputError& error) {
    Require(error.File() == file && !error.Reason().empty(), "a refusal names the file and a reason");
    return {};
  }
}

void CheckChain(std::string_view text) {
  const std::vector<CurveEval> chain = LoadOrRefuse(FileWith("chain.xml", text));
  const auto hasRange = [](const CurveEval& eval) { return eval.Type() == EvalType::CSDecon; };
  if (std::ranges::any_of(chain, hasRange)) return;  // which a document does not keep
  const std::string written = TslTool::ChainToXml(chain);
  const std::vector<CurveEval> again = TslTool::LoadChain(FileWith("chain.xml", written));
  Require(TslTool::ChainToXml(again) == written, "a written chain is read as the same");
}

// A file that is no document is held for a binary tune.
void CheckTuneFile(std::string_view text) {
  const std::string file = FileWith("tune.xml", text);
  Tune tune;
  try {
    tune = TslTool::LoadTune(file).tune;
  } catch (const TslTool::InputError& error) {
    return Require(error.File() == file && !error.Reason().empty(), "a refusal names the file and a reason");
  }
  const Tune kept = TslTool::ThroughForm(tune, TslTool::TuneForm::Xml);
  const std::string written = TslTool::RecordBytes(kept, TslTool::TuneForm::Xml);
  const Tune again = TslTool::LoadTune(FileWith("tune.xml", written)).tune;
  Require(TslTool::RecordBytes(again, TslTool::TuneForm::Xml) == written,
          "a written tune is read as the same");
  TslTool::TuneDifferences(tune, kept);
  Require(!TslTool::TuneSheet(tune).empty() && TslTool::TuneFaults(again) == TslTool::TuneFaults(kept),
          "equal tunes have equal faults");
}

void CheckLimits(std::string_view text) {
  std::istringstream in{std::string(text)};
  std::ostringstream rows;
  rows.precision(17);
  const LimitRows read = ReadLimitRows(in);
  for (const auto& [field, row] : read) {
    Require(std::isfinite(row.Min) && row.Min <= row.Max && row.Step <= row.Max - row.Min,
            "limits are sound");
    rows << field << ' ' << row.Min << ' ' << row.Max << ' ' << row.Step << '\n';
  }
  std::istringstream again(rows.str());
  Require(ReadLimitRows(again) == read, "limits that were written are read as the same");
}

void CheckFormula(std::string_view text) {
  Accepts([&] {
    const TslMath::Composition composition = TslMath::ParseFormula(text);
    Require(TslMath::MonoMass(composition) >= 0.0, "a formula has a mass");
  });
}

void CheckPrefs(std::string_view text) { CheckPrefsDocument(TslCommon::FromUtf8(text)); }

// A short document is a sound tune: what it lacks stands as in a new one.
void CheckRules(std::string_view text) {
  Tune tune = DevTuneRules(Probes::ESI);
  if (AcceptsXml(TslCommon::FromUtf8(text), tune)) CheckTuneRules(tune);
}

// The elements of a document of results, each by its reader, which leaves the parser where it was.
struct Results {
  std::map<std::uint32_t, std::wstring> definitions;
  std::map<std::uint32_t, std::pair<wchar_t, MZPeakField>> basePeaks;
  std::vector<MZRange> mzRanges;
  std::vector<ICRange> icRanges;
  std::vector<CurveEval> evals;
  std::map<std::uint32_t, Tune> tunes;

  void Load(XMLParser& parser) {
    LoadCurveDefs(parser, definitions);
    LoadBICCurve(parser, basePeaks);
    LoadMZRange(parser, mzRanges);
    LoadICRange(parser, icRanges);
    LoadCurveEval(parser, evals);
    LoadTune(parser, tunes);
  }
  std::wstring Written() const {
    XMLBuilder builder;
    builder.StartNode(L"Results");
    for (const auto& [id, definition] : definitions) {
      builder.StartNode(L"Curve");
      builder.WAttribute(L"Id", TslCommon::ToText(id));
      builder.WNode(L"CurveDef", definition);
      builder.EndNode();
    }
    for (const auto& pair : tunes) TslBL::AddTune(builder, pair);
    builder.EndNode();
    return builder.QXML();
  }
};

void CheckResults(std::string_view text) {
  XMLParser parser;
  if (!parser.LoadText(TslCommon::FromUtf8(text)) || !parser.StartNode(L"Results")) return;
  std::wstring here;
  const bool isMarked = parser.QAttribute(L"Here", here);
  Results read;
  for (int i = 0; i < 3; ++i) {
    if (!Accepts([&] { read.Load(parser); })) return;
    std::wstring still;
    Require(parser.QAttribute(L"Here", still) == isMarked && still == here, "a reader leaves the parser");
  }
  XMLParser second;
  Require(second.LoadText(read.Written()) && second.StartNode(L"Results"), "written results are read");
  Results again;
  for (std::size_t i = 0; i < read.definitions.size(); ++i) LoadCurveDefs(second, again.definitions);
  for (std::size_t i = 0; i < read.tunes.size(); ++i) TslBL::LoadTune(second, again.tunes);
  Require(again.Written() == read.Written(), "written results are read as the same");
}

void CheckCurvesFile(std::string_view text) {
  const std::string file = FileWith("curves.xml", text);
  try {
    const TslTool::CurveDefinitions read = TslTool::LoadCurvesFile(file);
    const TslTool::CurveChoice choice(read.ranges, read.definitions);
    Require(choice.Count() == read.definitions.size() && choice.Count() > 0, "what is read are curves");
  } catch (const TslTool::InputError& error) {
    Require(error.File() == file && !error.Reason().empty(), "a refusal names the file and a reason");
  }
}

struct Row {
  const char* name;
  void (*check)(std::string_view text);
};

// The corpus knows the rows by their numbers: new ones come last.
constexpr Row kRows[] = {
    {"AppThreadingParams", Check<AppThreadingParams>},
    {"BaselineParams", Check<BaselineParams>},
    {"Control", Check<Control>},
    {"CurveEval", CheckSettling<CurveEval>},
    {"CurvePeak", Check<CurvePeak>},
    {"EvalThreadingParams", Check<EvalThreadingParams>},
    {"IOPoint", Check<IOPoint>},
    {"IonSource", Check<IonSource>},
    {"MZCalPt", Check<MZCalPt>},
    {"MZPeakField", Check<MZPeakField>},
    {"MZRange", Check<MZRange>},
    {"NoiseParams", Check<NoiseParams>},
    {"OPDParams", Check<OPDParams>},
    {"PeakDetectParams", Check<PeakDetectParams>},
    {"Q1CalPt", Check<Q1CalPt>},
    {"SmoothParams", Check<SmoothParams>},
    {"Syringe", Check<Syringe>},
    {"SyringeManufacturer", Check<SyringeManufacturer>},
    {"SyringeModel", Check<SyringeModel>},
    {"ThresholdParams", Check<ThresholdParams>},
    {"Tune", Check<Tune>},
    {"TuneInfo", Check<TuneInfo>},
    {"SyringeList.xml", CheckSyringeList},
    {"Chain file", CheckChain},
    {"overrides.txt", CheckLimits},
    {"Formula", CheckFormula},
    {"ICFilter", Check<ICFilter>},
    {"ICRange", Check<ICRange>},
    {"PLAutoFindPrefs", CheckPrefs},
    {"Tune rules", CheckRules},
    {"Tune file", CheckTuneFile},
    {"AdductIonInfo", Check<AdductIonInfo>},
    {"AvgMoleculeInfo", Check<AvgMoleculeInfo>},
    {"ChargeStateParams", CheckSettling<ChargeStateParams>},
    {"ResolvedParams", Check<ResolvedParams>},
    {"UnresolvedParams", Check<UnresolvedParams>},
    {"DDFilter", Check<DDFilter>},
    {"DDInfo", CheckSettling<DDInfo>},
    {"DiverterValveMethod", Check<DiverterValveMethod>},
    {"Method", CheckSettling<Method>},
    {"TimePeriod", Check<TimePeriod>},
    {"TuneRun", CheckSettling<TuneRun>},
    {"Result documents", CheckResults},
    {"Curves file", CheckCurvesFile},
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  kRows[input.Below(std::size(kRows))].check(input.Rest());
  return 0;
}
