#pragma once
// The engine of charge state deconvolution that draws: it lays the profiles of the peaks of all series, each
// taken from m/z to mass by its charge, together to one curve over mass. An exchangeable component:
//
//   TslCommon::ComponentRegistry::Instance().Register(
//       TslMath::MassPlotEngine::kClassId, [] { return std::make_unique<MyEngine>(); });
//
// The library makes one for each run and each edit, uses it on the calling thread alone, one call after the
// other, and gives it up at the end. For each series that has peaks it calls AddPeakPlot for each peak, then
// GetSeriesPlot, then AddSeriesPlot with what it was given; after the last series GetResultPlot once. Without
// a series that has peaks it calls nothing.
//
// A call that fails throws ComError; the library then asks the same engine for GetLastError and shows that
// text to the user. A std::exception goes to the user with its own text.
//
// What goes in and out is an XML document with the root CSDecon, with values as SeriesEngine.h tells:
//
//   <CSDecon>
//     <Plot adductMass="1.007276" charge="4">
//       <Point x="500.45" y="12" />
//       <Point x="500.5" y="120" />
//     </Plot>
//   </CSDecon>
//
//   Plot   adductMass  real: mass of the ion that carries the charge, the monoisotopic one for a resolved
//                      series and the average one for any other
//          charge      integer: the charge of the peak; 0 or less is a fault of whoever found the series
//   Point  x           real: m/z in what AddPeakPlot is given, mass in everything else
//          y           real: amplitude
//
// adductMass and charge stand in documents for AddPeakPlot only. A Plot may be without points: a peak that
// was fitted to overlapping ones has none.

#include <tslbl/Export.h>
#include <tslbl/closed/common/ComponentRegistry.h>
#include <string>

namespace TslMath {

class TSLBL_API MassPlotEngine : public TslCommon::IComponent {
 public:
  static constexpr const char* kClassId = "TslBL.MassPlotEngine";

  // What was wrong with the last call that failed, for the user.
  virtual std::wstring GetLastError() = 0;

  // Adds the profile of one peak at a charge: the points of the spectrum that it covers, ascending by m/z.
  virtual void AddPeakPlot(const std::wstring& document) = 0;
  // The curve over mass of the peaks that were added since the last call.
  virtual std::wstring GetSeriesPlot() = 0;
  // Adds the curve over mass of a series.
  virtual void AddSeriesPlot(const std::wstring& document) = 0;
  // The curve over mass of all series, ascending by mass.
  virtual std::wstring GetResultPlot() = 0;
};

// Puts the library's own engine, that of SumOfPeaks and SumOfCurves, back in the place of another.
TSLBL_API void RegisterOwnMassPlotEngine();

}  // namespace TslMath
