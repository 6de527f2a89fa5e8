// tslbl simulate: a run of the demonstration instrument.

#include <fmt/format.h>

#include <tool/commands/Commands.h>
#include <tool/commands/method/SwitchTime.h>
#include <tool/commands/simulate/InstrumentOptions.h>
#include <tool/commands/simulate/MeasureMethod.h>
#include <tool/commands/simulate/SampleOptions.h>
#include <tool/frame/Interrupt.h>
#include <tool/frame/Output.h>
#include <tool/frame/Progress.h>
#include <tool/simulate/Simulator.h>
#include <memory>

namespace TslTool {
namespace {

struct SimulateArguments {
  std::string output;
  std::optional<std::uint32_t> scans;
  std::optional<std::uint64_t> seed;
  std::string truth;
  std::string method;
  SwitchTime switchTime;
  SampleOptions sample;
  InstrumentOptions instrument;
};

void WriteTruth(std::uint32_t number, const std::vector<TrueLine>& truth, Output& output) {
  std::string text;
  for (const TrueLine& line : truth)
    text +=
        fmt::format("{}\t{:.6f}\t{:.6g}\t{}\t{}\n", number, line.mz, line.height, line.compound, line.charge);
  output.Write(text);
}

void WriteScans(const Measurement& measurement, RunWriter& run, Output* output) {
  measurement.writeHead(run);
  Progress progress(measurement.spectra, "scans");
  TslBL::RawSpectrum raw;
  std::vector<TrueLine> truth;
  for (std::uint32_t number = 1; measurement.next(raw, truth); ++number) {
    ThrowIfInterrupted();
    run.AddScan(raw);
    if (output != nullptr) WriteTruth(number, truth, *output);
    progress.Step();
  }
  run.Finish();
  if (output != nullptr) output->Commit();
}

Measurement MeasureDemonstration(const SimulateArguments& arguments) {
  const std::uint32_t scans = arguments.scans.value_or(Simulator::kDefaultScans);
  if (scans == 0) throw UsageError("--scans: there must be at least one");
  const Instrument instrument = arguments.instrument.Get();
  const auto simulator = std::make_shared<Simulator>(scans, arguments.seed.value_or(Simulator::kDefaultSeed),
                                                     arguments.sample.Get(instrument), instrument);
  return {scans, [simulator](RunWriter& run) { run.AddTune(Simulator::kTuneId, simulator->Tune()); },
          [simulator, index = 0U](TslBL::RawSpectrum& raw, std::vector<TrueLine>& truth) mutable {
            if (index == simulator->Scans()) return false;
            raw = simulator->MakeScan(index);
            truth = simulator->Truth(index++);
            return true;
          }};
}

Measurement Measure(const SimulateArguments& arguments, const Options& options) {
  if (arguments.method.empty()) {
    if (options.Given("--switch-time")) throw UsageError("--switch-time: is for a --method");
    return MeasureDemonstration(arguments);
  }
  for (const char* option : {"--scans", "--mz", "--mz-step"})
    if (options.Given(option)) throw UsageError(std::string(option) + ": the --method says this");
  return MeasureMethod({arguments.method, arguments.switchTime.Get(), arguments.instrument.Get().width,
                        arguments.seed.value_or(Simulator::kDefaultSeed)},
                       arguments.sample);
}

int RunSimulate(const SimulateArguments& arguments, const Options& options) {
  if (arguments.output.empty()) throw UsageError("--output FILE is required");
  for (const std::string& other : {arguments.truth, arguments.method})
    if (!other.empty() && SameFile(other, arguments.output))
      throw UsageError((other == arguments.truth ? "--truth: " : "--method: ") + other +
                       " is the --output as well");
  if (!arguments.truth.empty() && !arguments.method.empty() && SameFile(arguments.truth, arguments.method))
    throw UsageError("--truth: " + arguments.truth + " is the --method as well");
  const Measurement measurement = Measure(arguments, options);

  std::unique_ptr<Output> truth;
  if (!arguments.truth.empty()) {
    truth = std::make_unique<Output>(arguments.truth);
    truth->Write("scan\tmz\theight\tcompound\tcharge\n");
  }
  auto run = std::make_unique<RunWriter>(arguments.output, "Demonstration");
  try {
    WriteScans(measurement, *run, truth.get());
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
          "With --method the run is what the method acquires: its time periods in their order,\n"
          "each spectrum with its own tune, and the lenses let through what they do at the\n"
          "values of the tune. While the valve leads to waste there is background only. The run\n"
          "holds the method.\n\n"
          "Examples:\n"
          "  tslbl simulate --output demo.run\n"
          "  tslbl simulate --output demo.run --scans 1000 --seed 7 --truth truth.tsv\n"
          "  tslbl simulate --output proteins.run --mz 600-1800 --truth truth.tsv \\\n"
          "      --protein myoglobin=16951.5:10-20 --protein lysozyme=14305.1:8-14:1000\n"
          "  tslbl peaks demo.run --format tsv\n"
          "  tslbl simulate --method ramp.method --sample calibrants --output ramp.run\n",
      .declare =
          [arguments](Options& options) {
            options.Value("-o,--output RUN", arguments->output, "The run to write; it must not exist");
            options.Value("--scans N", arguments->scans,
                          fmt::format("Number of scans [{}]", Simulator::kDefaultScans));
            options.Value("--seed S", arguments->seed,
                          fmt::format("Seed of the noise [{}]", Simulator::kDefaultSeed));
            options.Value("--truth FILE", arguments->truth, "Write what is in the run to this file");
            options.Value("--method FILE", arguments->method, "Acquire as this method says");
            arguments->switchTime.Declare(options);
            arguments->sample.Declare(options);
            arguments->instrument.Declare(options);
          },
      .run = [arguments](const Options& options) { return RunSimulate(*arguments, options); },
  };
}

}  // namespace TslTool
