// tslbl simulate: a run of the demonstration instrument.

#include <fmt/format.h>

#include <tool/commands/Commands.h>
#include <tool/commands/simulate/InstrumentOptions.h>
#include <tool/commands/simulate/SampleOptions.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Output.h>
#include <tool/frame/Progress.h>
#include <tool/io/RunFile.h>
#include <tool/simulate/Simulator.h>
#include <memory>

namespace TslTool {
namespace {

struct SimulateArguments {
  std::string output;
  std::optional<std::uint32_t> scans;
  std::optional<std::uint64_t> seed;
  std::string truth;
  SampleOptions sample;
  InstrumentOptions instrument;
};

void WriteTruth(const Simulator& simulator, std::uint32_t index, Output& output) {
  std::string text;
  for (const TrueLine& line : simulator.Truth(index))
    text += fmt::format("{}\t{:.6f}\t{:.6g}\t{}\t{}\n", index + 1, line.mz, line.height, line.compound,
                        line.charge);
  output.Write(text);
}

void WriteScans(const Simulator& simulator, RunWriter& run, Output* truth) {
  run.AddTune(simulator.MakeScan(0).info.TuneId, simulator.Tune());
  Progress progress(simulator.Scans(), "scans");
  for (std::uint32_t i = 0; i < simulator.Scans(); ++i) {
    ThrowIfInterrupted();
    run.AddScan(simulator.MakeScan(i));
    if (truth != nullptr) WriteTruth(simulator, i, *truth);
    progress.Step();
  }
  run.Finish();
  if (truth != nullptr) truth->Commit();
}

int RunSimulate(const SimulateArguments& arguments) {
  if (arguments.output.empty()) throw UsageError("--output FILE is required");
  if (!arguments.truth.empty() && SameFile(arguments.truth, arguments.output))
    throw UsageError("--truth: " + arguments.truth + " is the --output as well");
  const std::uint32_t scans = arguments.scans.value_or(Simulator::kDefaultScans);
  if (scans == 0) throw UsageError("--scans: there must be at least one");
  const Instrument instrument = arguments.instrument.Get();
  const Simulator simulator(scans, arguments.seed.value_or(Simulator::kDefaultSeed),
                            arguments.sample.Get(instrument), instrument);

  std::unique_ptr<Output> truth;
  if (!arguments.truth.empty()) {
    truth = std::make_unique<Output>(arguments.truth);
    truth->Write("scan\tmz\theight\tcompound\tcharge\n");
  }
  auto run = std::make_unique<RunWriter>(arguments.output, "Demonstration");
  try {
    WriteScans(simulator, *run, truth.get());
  } catch (...) {
    // A measured run would be kept up to its last scan; this one can be made again from its seed.
    run.reset();
    RemoveRun(arguments.output);
    throw;
  }
  return kDone;
}

}  // namespace

Command SimulateCommand() {
  auto arguments = std::make_shared<SimulateArguments>();
  return {
      .name = "simulate",
      .summary = "Simulates a run of the demonstration instrument, of which the truth is known",
      .examples =
          "The run holds raw counts of known compounds over a chemical background. Equal\n"
          "seeds make equal runs. The truth is a table of the columns scan, mz, height\n"
          "(counts per second above the background), compound and charge.\n\n"
          "Proteins have the isotope pattern of an average protein at each charge, and their\n"
          "heights follow a Gaussian over the charges, a tenth of the highest at both ends.\n"
          "With --protein these are all that the run holds.\n\n"
          "Examples:\n"
          "  tslbl simulate --output demo.run\n"
          "  tslbl simulate --output demo.run --scans 1000 --seed 7 --truth truth.tsv\n"
          "  tslbl simulate --output proteins.run --mz 600-1800 --truth truth.tsv \\\n"
          "      --protein myoglobin=16951.5:10-20 --protein lysozyme=14305.1:8-14:1000\n"
          "  tslbl peaks demo.run --format tsv\n",
      .declare =
          [arguments](Options& options) {
            options.Value("-o,--output RUN", arguments->output, "The run to write; it must not exist");
            options.Value("--scans N", arguments->scans,
                          fmt::format("Number of scans [{}]", Simulator::kDefaultScans));
            options.Value("--seed S", arguments->seed,
                          fmt::format("Seed of the noise [{}]", Simulator::kDefaultSeed));
            options.Value("--truth FILE", arguments->truth, "Write what is in the run to this file");
            arguments->sample.Declare(options);
            arguments->instrument.Declare(options);
          },
      .run = [arguments](const Options&) { return RunSimulate(*arguments); },
  };
}

}  // namespace TslTool
