#pragma once
// What the instrument counts of a sample with one tune, on the average.
//
// Compounds, with charge states and elution, appear with their true isotope patterns as the Gaussian lines of
// a quadrupole over a smooth chemical background: with protons added for positive ions, with protons taken
// for negative ones. A SIM has one point, its centre, with the sum of what is counted over its span.

#include <tool/simulate/LensModel.h>
#include <tool/simulate/LineShape.h>
#include <tool/simulate/Sample.h>
#include <tslbl/tune/Tune.h>
#include <cstdint>
#include <string>
#include <vector>

namespace TslTool {

// A line that a spectrum of this resolution can show.
struct TrueLine {
  double mz;
  double height;  // counts per second, above the background
  std::string compound;
  std::uint32_t charge;
};

class ExpectedCounts {
 public:
  // `width`: of a line at half its height, in m/z. Throws as DevTuneRules::QNumPulses and LensCurve::At do.
  ExpectedCounts(const Sample& sample, const TslBL::Tune& tune, double width, LensModel lenses = {});

  // Of each point, at a fraction of the run.
  std::vector<double> At(double fraction) const;
  // While the sample does not reach the source.
  std::vector<double> OfBackground() const { return OfPoints(background_); }
  // What is in a scan, ascending by m/z: every line that stands apart at this resolution and is at least
  // 0.01 counts a point high. Nothing of a SIM.
  std::vector<TrueLine> Truth(double fraction) const;

 private:
  // A line at the top of its compound's elution, in counts a point.
  struct CompoundLine {
    double mz;
    double height;
    std::size_t compound;
    std::uint32_t charge;
  };

  void AddCompound(std::size_t compound);
  // Whether any of a charge state can be seen.
  bool IsScanned(const std::vector<Line>& lines) const;
  LineShape ShapeAt(double mz) const { return LineShape(width_ * lenses_.Width(mz)); }
  // Adds a line of this height.
  void Draw(double mz, double height, std::vector<double>& counts) const;
  double Elution(std::size_t compound, double fraction) const;
  std::vector<double> OfPoints(std::vector<double> steps) const;

  std::vector<Compound> compounds_;
  double width_;
  LensModel lenses_;
  int polarity_;
  bool isSim_;
  double dwell_;                       // as a multiple of that of the demonstration's tune
  double countsToRate_;                // 1 / s
  std::vector<double> mz_;             // of each step
  std::vector<double> background_;     // expected counts of each step
  std::vector<double> steady_;         // the same with what is infused
  std::vector<CompoundLine> eluting_;  // every isotope line of the other compounds
  std::vector<CompoundLine> visible_;  // of all, those that stand apart at this resolution
};

}  // namespace TslTool
