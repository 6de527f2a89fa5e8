#pragma once
// What each of several series has of a peak that they share.

#include <tslbl/chargestate/DeconSpectrum.h>
#include <cstdint>
#include <vector>

namespace TslTool {

// A molecule and its dimer have every second charge of the latter in one peak. What a series has there lies
// between what it has at its nearest charges of its own, straight on a logarithmic scale; beyond them it
// follows the nearest two, but never rises. A series without two charges of its own has what the others
// leave. Of unresolved series; the isotopes of resolved ones are not shared out.
class PeakShares {
 public:
  // `intensities` by spectrum peak ids. `spectrum` must outlive it.
  PeakShares(const TslBL::DeconSpectrum& spectrum, std::vector<double> intensities);

  // Of the peak that is this series' member, 0 to 1.
  double Of(std::uint32_t series, std::uint32_t member) const { return shares_[series][member]; }
  // Whether another unresolved series has it, too.
  bool IsShared(std::uint32_t peakId) const { return owners_[peakId] > 1; }

 private:
  struct Expectation {
    double intensity;  // NaN if the series has not two charges of its own
    bool isBetween;    // near charges of its own
  };
  struct Owner {
    double* share;
    Expectation expectation;
  };
  // What the series would have at that charge.
  Expectation Expected(const TslBL::CSSeriesInfo& series, std::uint32_t charge) const;
  std::vector<Owner> OwnersOf(std::uint32_t peakId);
  void Divide(std::uint32_t peakId);

  const TslBL::DeconSpectrum& spectrum_;
  std::vector<double> intensities_;
  std::vector<std::uint32_t> owners_;        // unresolved series that have it, by peak id
  std::vector<std::vector<double>> shares_;  // by series and member
};

}  // namespace TslTool
