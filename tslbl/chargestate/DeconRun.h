#pragma once
// One run or edit of charge state deconvolution, with its engines.
//
// What an engine could not do throws std::runtime_error with the text of its GetLastError.
//
// For the sources of the library; not part of its interface.

#include <tslbl/chargestate/DeconSpectrum.h>
#include <tslbl/closed/engines/MassPlotEngine.h>
#include <tslbl/closed/engines/SeriesEngine.h>
#include <memory>
#include <string>

namespace TslBL {

using TslMath::MassPlotEngine;
using TslMath::SeriesEngine;

// The engines are given up from the last member to the first.
struct DeconRun {
  DeconSpectrum& spectrum;
  std::unique_ptr<SeriesEngine> resolved = nullptr;
  std::unique_ptr<SeriesEngine> unresolved = nullptr;
  std::unique_ptr<MassPlotEngine> plot = nullptr;
};

// Makes the engines that are wanted, with the parameters of the spectrum, and that for the plot. Throws
// std::runtime_error with the message kNoSeriesEngine for one that there is not.
void SetUpEngines(DeconRun& run, bool wantResolved, bool wantUnresolved);

enum class SeriesCall { Auto, Find, Recalc };

// Whether the engine of a type is set up.
bool HasEngine(const DeconRun& run, CSSeries::Types type);

// The answer of the engine of a type, which is set up.
std::wstring AskForSeries(const DeconRun& run, CSSeries::Types type, SeriesCall call,
                          const std::wstring& document);

// Draws the mass curve of all series that have peaks. Throws std::runtime_error with the message
// kNoSeriesFound if none has; there is no curve then.
void DrawMassCurve(const DeconRun& run);

}  // namespace TslBL
