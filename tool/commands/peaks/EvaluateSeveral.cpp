#include <tool/commands/peaks/EvaluateSeveral.h>

#include <fmt/ranges.h>

#include <tool/chain/ChainDefaults.h>
#include <tool/commands/peaks/EvaluateInput.h>
#include <tool/commands/peaks/InputList.h>
#include <tool/commands/peaks/TableNames.h>
#include <tool/frame/CommandLine.h>
#include <tool/frame/Failure.h>
#include <tool/frame/InputError.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Warning.h>

namespace TslTool {
namespace {

struct Tally {
  std::size_t all = 0;
  std::size_t earlier = 0;
  std::vector<std::string> failed;
};

void RequireConsistent(const PeaksArguments& arguments) {
  if (arguments.outputDir.empty())
    throw UsageError("several inputs have a table each: name a folder for them with --output-dir");
  if (!arguments.output.empty()) throw UsageError("--output and --output-dir exclude each other");
  if (!arguments.curve.empty()) throw UsageError("--curve and --output-dir exclude each other");
  if (!arguments.plot.empty()) throw UsageError("--plot and --output-dir exclude each other");
  if (arguments.showChain) throw UsageError("--show-chain and --output-dir exclude each other");
  if (arguments.inputs.empty() && arguments.list.empty()) throw UsageError("--output-dir: INPUT is missing");
  if (arguments.resume && !arguments.plotDir.empty())
    throw UsageError("--resume and --plot-dir exclude each other");
  if (arguments.resume && arguments.format != "tsv")
    throw UsageError("--resume: only tables of --format tsv can be resumed");
}

std::vector<std::string> InputsOf(const PeaksArguments& arguments) {
  std::vector<std::string> inputs = arguments.inputs;
  if (arguments.list.empty()) return inputs;
  const std::vector<std::string> listed = ReadInputList(arguments.list);
  inputs.insert(inputs.end(), listed.begin(), listed.end());
  return inputs;
}

std::vector<std::string> FilesRead(const PeaksArguments& arguments, const std::vector<std::string>& inputs) {
  std::vector<std::string> files = inputs;
  for (const std::string& file : {arguments.list, arguments.chain.File()})
    if (!file.empty()) files.push_back(file);
  return files;
}

// What is wrong for every input is told once.
void RequireGoodChain(const PeaksArguments& arguments, const Options& options) {
  arguments.scans.Choice();
  arguments.chain.Chain(options, DefaultsFor(Preview(), std::nullopt));
}

void TellFailure(const std::string& input) {
  try {
    throw;
  } catch (const InputError& e) {
    Tell(e.what());
  } catch (...) {
    Tell(input + ": " + FailureText(std::current_exception()));
  }
}

void EvaluateOne(const NamedTable& table, PeaksArguments arguments, const Options& options, Tally& tally) {
  arguments.input = table.input;
  arguments.output = table.table;
  ++tally.all;
  if (arguments.resume && PeakFile::IsWhole(arguments.format, table.table)) {
    ++tally.earlier;
    return;
  }
  try {
    EvaluateInput(arguments, options);
  } catch (...) {
    if (WasInterrupted()) throw;
    TellFailure(table.input);
    tally.failed.push_back(table.input);
  }
}

std::string Summary(const Tally& tally) {
  std::string text = fmt::format("{} of {} files evaluated", tally.all - tally.failed.size(), tally.all);
  if (tally.earlier > 0) text += fmt::format(", {} of them earlier", tally.earlier);
  if (tally.failed.empty()) return text;
  return text + fmt::format("; {} failed: {}", tally.failed.size(), fmt::join(tally.failed, ", "));
}

}  // namespace

bool AsksForSeveral(const PeaksArguments& arguments) {
  return arguments.inputs.size() > 1 || !arguments.list.empty() || !arguments.outputDir.empty();
}

int EvaluateSeveral(const PeaksArguments& arguments, const Options& options) {
  RequireConsistent(arguments);
  const std::vector<std::string> inputs = InputsOf(arguments);
  const std::vector<NamedTable> tables = NameTables(inputs, arguments.outputDir, arguments.format);
  RequireGoodChain(arguments, options);
  RequireNoneRead(tables, FilesRead(arguments, inputs));
  MakeFolder(arguments.outputDir);
  Tally tally;
  for (const NamedTable& table : tables) {
    ThrowIfInterrupted();
    EvaluateOne(table, arguments, options, tally);
  }
  if (!tally.failed.empty() || !arguments.quiet) Tell(Summary(tally));
  return tally.failed.empty() ? kDone : kFailed;
}

}  // namespace TslTool
