#pragma once
// Raw counts of which the truth is known.
//
// Compounds, with charge states and elution, appear with their true isotope patterns as the
// Gaussian lines of a quadrupole over a smooth chemical background. Each point of the tune's
// mass DAC grid holds a Poisson number of counts. A seed makes it repeatable, scan by scan in
// any order.

#include <tool/simulate/Instrument.h>
#include <tool/simulate/LineShape.h>
#include <tool/simulate/Sample.h>
#include <tslbl/spectrum/RawSpectrum.h>
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

class Simulator {
 public:
  static constexpr std::uint32_t kDefaultScans = 20;
  static constexpr std::uint64_t kDefaultSeed = 1;

  explicit Simulator(std::uint32_t scans = kDefaultScans, std::uint64_t seed = kDefaultSeed,
                     const Sample& sample = DemonstrationSample(), const Instrument& instrument = {});

  std::uint32_t Scans() const { return scans_; }
  const TslBL::Tune& Tune() const { return tune_; }

  // Scan `index`, counted from 0, and the milliseconds at which it begins.
  TslBL::RawSpectrum MakeScan(std::uint32_t index) const;
  std::uint32_t TimeStamp(std::uint32_t index) const;
  // What is in it, ascending by m/z: every line that stands apart at this resolution and is
  // at least 0.01 counts a point high.
  std::vector<TrueLine> Truth(std::uint32_t index) const;

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
  // Adds a line of this height.
  void Draw(double mz, double height, std::vector<double>& counts) const;
  double Elution(std::size_t compound, std::uint32_t index) const;
  std::vector<double> Expected(std::uint32_t index) const;

  std::uint32_t scans_;
  std::uint64_t seed_;
  std::vector<Compound> compounds_;
  LineShape shape_;
  TslBL::Tune tune_;
  std::vector<double> mz_;             // of each point
  std::vector<double> steady_;         // expected counts of each point: background and what is infused
  std::vector<CompoundLine> eluting_;  // every isotope line of the other compounds
  std::vector<CompoundLine> visible_;  // of all, those that stand apart at this resolution
};

}  // namespace TslTool
