// tslbl info: what is in a file.

#include <fmt/format.h>

#include <tool/commands/Commands.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Output.h>
#include <tool/frame/Progress.h>
#include <tool/frame/Warning.h>
#include <tool/io/OpenScans.h>
#include <tool/io/Preview.h>
#include <tool/io/RunFile.h>
#include <tool/io/ScanOptions.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/MassRange.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <algorithm>
#include <cmath>
#include <limits>

namespace TslTool {
namespace {

// What all spectra of a file have in common, gathered while they are read.
struct Summary {
  std::uint64_t spectra = 0;
  std::uint64_t empty = 0;
  std::uint64_t kinds[3] = {};  // by Scan::Representation
  std::uint64_t fewest = std::numeric_limits<std::uint64_t>::max();
  std::uint64_t most = 0;
  double mzFrom = std::numeric_limits<double>::infinity();
  double mzTo = -std::numeric_limits<double>::infinity();
  double rtFrom = std::numeric_limits<double>::infinity();
  double rtTo = -std::numeric_limits<double>::infinity();
  double highest = -std::numeric_limits<double>::infinity();

  void AddPoints(const std::vector<double>& amplitude, double rtSeconds) {
    ++spectra;
    fewest = std::min<std::uint64_t>(fewest, amplitude.size());
    most = std::max<std::uint64_t>(most, amplitude.size());
    if (amplitude.empty()) ++empty;
    for (const double a : amplitude) highest = std::max(highest, a);
    if (std::isnan(rtSeconds)) return;
    rtFrom = std::min(rtFrom, rtSeconds);
    rtTo = std::max(rtTo, rtSeconds);
  }
  void AddRange(double from, double to) {
    mzFrom = std::min(mzFrom, from);
    mzTo = std::max(mzTo, to);
  }
};

std::string Row(const std::string& label, const std::string& value) {
  return fmt::format("{:<13} {}\n", label, value);
}

std::string Rows(const Summary& s, const std::string& unit) {
  std::string text = Row("spectra", fmt::format("{}", s.spectra));
  if (s.spectra == 0) return text;
  if (s.empty > 0) text += Row("empty", fmt::format("{} of them", s.empty));
  text += Row("points", s.fewest == s.most ? fmt::format("{} each", s.most)
                                           : fmt::format("{} to {}", s.fewest, s.most));
  if (s.mzFrom <= s.mzTo) text += Row("m/z", fmt::format("{:.4f} to {:.4f}", s.mzFrom, s.mzTo));
  if (s.rtFrom <= s.rtTo) text += Row("time", fmt::format("{:.3f} to {:.3f} s", s.rtFrom, s.rtTo));
  if (s.highest >= 0.0) text += Row("highest", fmt::format("{:.6g}{}", s.highest, unit));
  return text;
}

// Of the first spectra, since it takes the whole of each.
std::string PeakWidthRow(const std::string& file, const ScanFilter& filter) {
  auto source = OpenSpectra(file, {.filter = filter});
  const Preview preview = LookAhead(source);
  return Row("peak width",
             preview.pointsAcross > 0.0 ? fmt::format("{:.1f} points", preview.pointsAcross) : "unknown");
}

std::string TuneRows(std::uint32_t id, const TslBL::Tune& tune) {
  const TslBL::Control& c = tune.ControlData;
  const auto [from, to] = TslBL::QMassRange(tune);
  return Row("tune", fmt::format("{}: {}", id, TslCommon::ToUtf8(tune.Info.Name))) +
         Row("  probe", TslCommon::ToUtf8(TslCommon::Probes::GetNameNoId(tune.Source.Type))) +
         Row("  polarity", TslCommon::ToUtf8(TslCommon::PolarityToWStr(c.PolarityType, L"unknown"))) +
         Row("  function", c.Type == TslBL::Control::Scan ? "scan" : "SIM") +
         Row("  m/z", fmt::format("{} to {}, step {}", from, to, c.MZStepSize)) +
         Row("  dwell", fmt::format("{} us, {} scans a spectrum", c.PulseCountDelay, c.ScansPerSpec)) +
         Row("  duration",
             fmt::format("{:.6g} ms a spectrum", TslBL::DevTuneRules::QDuration(tune) / 1000.0)) +
         Row("  calibration", fmt::format("{} points", tune.MZCalPts.size()));
}

std::string DescribeRun(const std::string& file) {
  RunReader reader(file);
  Summary summary;
  Progress progress(reader.Count(), "scans");
  TslBL::RawSpectrum raw;
  for (std::uint32_t number = 0; reader.Next(number, raw);) {
    ThrowIfInterrupted();
    const auto [from, to] = TslBL::QMassRange(reader.TuneOf(number, raw));
    summary.AddPoints(raw.counts, raw.info.TimeStamp / 1000.0);
    summary.AddRange(from, to);
    progress.Step();
  }
  std::string text = Row("file", file) + Row("format", "run of raw counts") + Row("title", reader.Title()) +
                     Rows(summary, " counts") + Row("kind", "profile") + PeakWidthRow(file, {});
  for (const auto& [id, tune] : reader.Tunes()) text += TuneRows(id, tune);
  return text;
}

std::string Kinds(const Summary& s) {
  std::string text;
  const auto add = [&](Scan::Representation kind, const char* name) {
    if (s.kinds[kind] > 0) text += fmt::format("{}{} {}", text.empty() ? "" : ", ", s.kinds[kind], name);
  };
  add(Scan::Profile, "profile");
  add(Scan::Centroid, "centroid");
  add(Scan::Unknown, "unknown");
  return text;
}

// What is told of a file beside its description.
struct Remarks {
  std::vector<std::string> notes;
  std::vector<std::string> warnings;
};

std::string DescribeScans(const std::string& file, const ScanFilter& filter, Remarks& remarks) {
  const auto source = OpenScans(file);
  source->SetFilter(filter);
  Summary summary;
  Progress progress(source->Count(), "scans");
  for (Scan scan; source->Next(scan);) {
    ThrowIfInterrupted();
    summary.AddPoints(scan.amplitude, scan.rtSeconds);
    ++summary.kinds[scan.representation];
    if (!scan.mz.empty()) summary.AddRange(scan.mz.front(), scan.mz.back());
    progress.Step();
  }
  remarks = {source->Notes(), source->Warnings()};
  std::string text = Row("file", file) + Row("format", source->Format()) + Rows(summary, "");
  if (summary.spectra > 0) text += Row("kind", Kinds(summary)) + PeakWidthRow(file, filter);
  return text;
}

struct InfoArguments {
  std::string input;
  ScanOptions scans;
};

int RunInfo(const InfoArguments& arguments) {
  const std::string& input = arguments.input;
  if (input.empty()) throw UsageError("INPUT is required");
  const ScanFilter filter = arguments.scans.Choice().filter;
  const bool isRun = IsDatabase(input);
  if (isRun && filter.columns.IsGiven()) ScanSource::RefuseColumns("a run");
  Remarks remarks;
  Output output("");
  output.Write(isRun ? DescribeRun(input) : DescribeScans(input, filter, remarks));
  output.Commit();
  Tell(input, remarks.notes);
  Warn(input, remarks.warnings);
  return kDone;
}

}  // namespace

Command InfoCommand() {
  auto arguments = std::make_shared<InfoArguments>();
  return {
      .name = "info",
      .summary = "Shows what is in a file",
      .examples =
          "INPUT is a run of raw counts, an mzML file or text with columns of m/z and amplitude.\n\n"
          "Examples:\n"
          "  tslbl info demo.run\n"
          "  tslbl info sample.mzML.gz\n"
          "  tslbl info table.csv --columns 2,3\n",
      .declare =
          [arguments](Options& options) {
            options.Value("INPUT", arguments->input, "The file to describe");
            arguments->scans.DeclareColumns(options);
          },
      .run = [arguments](const Options&) { return RunInfo(*arguments); },
  };
}

}  // namespace TslTool
