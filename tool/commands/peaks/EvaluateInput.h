#pragma once
// One input of a command that makes a table of spectra, such as peaks, from its spectra to its table.

#include <tool/commands/peaks/CurveWriter.h>
#include <tool/commands/peaks/PeakFile.h>
#include <tool/commands/peaks/PeaksArguments.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/Options.h>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace TslTool {

// What a command makes of evaluated spectra. Any number of threads may call these.
struct SpectrumProduct {
  std::function<std::unique_ptr<SpectrumWriter>(const std::string& format)> makeWriter;
  // An SVG document of a spectrum; `view` is the range of m/z, all without one.
  std::string (*plot)(const LoadedSpectrum& loaded, const std::string& title,
                      const std::optional<RealRange>& view);
  // What is done behind the chain, if there is something.
  std::function<void(LoadedSpectrum&)> finish = {};
  // Whether it takes lists of peaks, to which no chain is applied.
  bool takesPeakLists = false;
  // The file of --curve: its head, and what it has of a spectrum.
  std::string (*curveHead)() = CurveHead;
  std::string (*curvePart)(const LoadedSpectrum& loaded) = CurvePart;
};

// That of the command peaks.
SpectrumProduct PeakTables();

// Evaluates all that is asked for and writes it to the --output, and to the file of --curve. Throws
// InputError.
void EvaluateInput(const PeaksArguments& arguments, const Options& options,
                   const SpectrumProduct& product = PeakTables());

// Writes the chain that the input would be evaluated with.
void ShowChain(const PeaksArguments& arguments, const Options& options);

}  // namespace TslTool
