// tslbl info: what is in a file.

#include <tool/commands/Commands.h>
#include <tool/commands/info/InfoWriter.h>
#include <tool/commands/info/RunScans.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Output.h>
#include <tool/frame/Progress.h>
#include <tool/frame/Warning.h>
#include <tool/io/InputPath.h>
#include <tool/io/OpenScans.h>
#include <tool/io/Preview.h>
#include <tool/io/ScanOptions.h>
#include <tool/io/SkipCounts.h>

namespace TslTool {
namespace {

struct InfoArguments {
  std::string input;
  std::string format = "table";
  ScanOptions scans;
};

// The source and what is known of it at once.
std::unique_ptr<ScanSource> Open(const std::string& file, FileHead& head) {
  if (!IsDatabase(file)) {
    auto scans = OpenScans(file);
    head = {InputName(file), scans->Format()};
    return scans;
  }
  auto scans = std::make_unique<RunScans>(file);
  const RunReader& run = scans->Reader();
  head = {file, scans->Format(), true, run.Title(), run.Tunes()};
  for (const auto& [id, tune] : run.Tunes())
    if (const auto* points = run.CalibrationOf(id)) head.axes[id] = points->size();
  if (const auto* method = run.AcquiredBy()) head.method = *method;
  return scans;
}

// Writes a row for each spectrum as it is read, so that memory does not grow with the file.
FileFacts WriteRows(ScanSource& source, const InfoWriter& writer, Output& output, SkipCounts& unread) {
  FileFacts facts;
  Progress progress(source.Count(), "scans");
  for (Scan scan; source.Next(scan); progress.Step()) {
    ThrowIfInterrupted();
    if (scan.defect) {
      unread.Skip(*scan.defect);
      continue;
    }
    unread.CountTaken();
    const ScanFacts row = FactsOf(scan);
    if (facts.spectra > 0) output.Write(writer.Between());
    output.Write(writer.Part(row));
    facts.Add(row);
  }
  return facts;
}

// As `peaks` finds it. 0 for a pipe, which is spent.
double PointsAcross(const std::string& file, const ScanFilter& filter) {
  if (!CanBeReadAgain(file)) return 0.0;
  return LookThrough(*OpenSpectra(file, {.filter = filter})).pointsAcross;
}

void Describe(const std::string& input, const InfoArguments& arguments) {
  const ScanFilter filter = arguments.scans.Choice().filter;
  FileHead head;
  const auto source = Open(input, head);
  if (head.isRun && filter.columns.IsGiven()) ScanSource::RefuseColumns("a run");
  source->SetFilter(filter);
  const auto writer = MakeInfoWriter(arguments.format, head);
  Output output("");
  output.Write(writer->Head());
  SkipCounts unread(input, false);
  const FileFacts facts = WriteRows(*source, *writer, output, unread);
  const double pointsAcross = facts.spectra > 0 ? PointsAcross(input, filter) : 0.0;
  output.Write(writer->Tail({facts, source->PassedOver(), pointsAcross}));
  output.Commit();
  Tell(InputName(input), source->Notes());
  if (const std::string skipped = unread.Text(); !skipped.empty()) Warn(InputName(input) + ": " + skipped);
  Warn(InputName(input), source->Warnings());
}

int RunInfo(const InfoArguments& arguments) {
  if (arguments.input.empty()) throw UsageError("INPUT is required");
  const std::string input = InputPath(arguments.input);
  NamingStandardInput([&] { Describe(input, arguments); });
  return kDone;
}

}  // namespace

Command InfoCommand() {
  auto arguments = std::make_shared<InfoArguments>();
  return {
      .name = "info",
      .summary = "Shows what is in a file",
      .examples =
          "INPUT is a run of raw counts, an mzML file or text with columns of m/z and amplitude;\n"
          "- is standard input, from which no run can be read.\n\n"
          "Examples:\n"
          "  tslbl info demo.run\n"
          "  tslbl info sample.mzML.gz\n"
          "  tslbl info sample.mzML --format tsv           a row for each spectrum\n"
          "  tslbl info table.csv --columns 2,3\n",
      .declare =
          [arguments](Options& options) {
            options.Value("INPUT", arguments->input, "The file to describe");
            options.Choice("--format FORM", arguments->format, InfoFormats(), "Form of the result");
            arguments->scans.DeclareColumns(options);
          },
      .run = [arguments](const Options&) { return RunInfo(*arguments); },
  };
}

}  // namespace TslTool
