#pragma once
// One peak over the axis of mass, and its share of each place of a lattice.
#include <tslbl/closed/math/chargestate/MassPlot.h>

#include <optional>
#include <vector>

namespace TslMath {

class MassProfile {
 public:
  // Nothing for a profile that SumOfPeaks leaves out.
  static std::optional<MassProfile> Of(const ChargedProfile& profile);

  double First() const { return origin_; }  // Da
  double Last() const { return origin_ + offset_.back(); }
  double MedianStep() const;

  // Adds the peak to the places `first`, first + 1, ... times `step`. Those that it touches must be among
  // them: from the one below First() to the one above Last().
  void AddTo(std::span<double> density, double first, double step) const;

 private:
  MassProfile() = default;
  void Integrate();
  double SecondIntegral(double offset, std::size_t& segment) const;

  double origin_ = 0;
  std::vector<double> offset_;  // Da from the first point; so that digits are kept
  std::vector<double> density_;
  std::vector<double> integral_;        // from the first point to each
  std::vector<double> secondIntegral_;  // of that
};

}  // namespace TslMath
