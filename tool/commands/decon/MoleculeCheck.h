#pragma once
// Whether resolved isotopes are those of the average molecule that was asked for.

#include <tslbl/chargestate/DeconSpectrum.h>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace TslTool {

// Nucleic acids have less carbon and more oxygen than proteins of the same mass. Their patterns are so much
// alike that either is found with the average molecule of the other, but isotopes of large ones are counted
// wrongly then, by one or two, and nothing in the mass tells. The widths of the patterns do.
class MoleculeCheck {
 public:
  // Resolved series of 3000 Da and more, of five isotopes and more at a charge. On any number of threads.
  void Look(const TslBL::DeconSpectrum& spectrum, std::uint32_t scan);
  // One, if the other kind fits twice as well for most of them by intensity. Nothing of a molecule with
  // a formula of its own.
  std::vector<std::string> Warnings() const;

 private:
  mutable std::mutex mutex_;
  bool areNucleic_ = false;    // what was asked for
  std::size_t molecules_ = 0;  // that were looked at
  std::size_t others_ = 0;     // of the other kind
  double intensity_ = 0.0;
  double intensityOfOthers_ = 0.0;
  std::uint32_t firstScan_ = 0;  // with one of the other kind
};

}  // namespace TslTool
