#pragma once
// A run of one tune with raw counts of which the truth is known.
//
// Each point of the tune's mass DAC grid holds a Poisson number of the counts that are expected there. A seed
// makes it repeatable, scan by scan in any order. The instrument is at its best with this tune.

#include <tool/simulate/ExpectedCounts.h>
#include <tool/simulate/Instrument.h>
#include <tool/simulate/Sample.h>
#include <tslbl/spectrum/RawSpectrum.h>
#include <tslbl/tune/Tune.h>
#include <cstdint>
#include <vector>

namespace TslTool {

class Simulator {
 public:
  static constexpr std::uint32_t kDefaultScans = 20;
  static constexpr std::uint64_t kDefaultSeed = 1;
  static constexpr std::uint32_t kTuneId = 1;  // of its tune in a run

  explicit Simulator(std::uint32_t scans = kDefaultScans, std::uint64_t seed = kDefaultSeed,
                     const Sample& sample = DemonstrationSample(), const Instrument& instrument = {});

  std::uint32_t Scans() const { return scans_; }
  const TslBL::Tune& Tune() const { return tune_; }

  // Scan `index`, counted from 0, and the milliseconds at which it begins.
  TslBL::RawSpectrum MakeScan(std::uint32_t index) const;
  std::uint32_t TimeStamp(std::uint32_t index) const;
  // What is in it; see ExpectedCounts::Truth.
  std::vector<TrueLine> Truth(std::uint32_t index) const { return expected_.Truth(Fraction(index)); }

 private:
  // Where in the run the middle of a scan is.
  double Fraction(std::uint32_t index) const { return (index + 0.5) / scans_; }

  std::uint32_t scans_;
  std::uint64_t seed_;
  TslBL::Tune tune_;
  ExpectedCounts expected_;
};

}  // namespace TslTool
