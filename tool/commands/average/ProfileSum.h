#pragma once
// The sum of profiles that bring m/z axes of their own, one after the other.

#include <cstdint>
#include <vector>

namespace TslTool {

// Profiles on one axis are added point by point. Where axes differ, the sum's axis takes in what of another
// one lies in its gaps, or beyond its ends, or more finely than its own, and each profile is read there on
// straight lines between its points. So memory grows with the points of the axis and not with the number of
// profiles.
class ProfileSum {
 public:
  // m/z ascends; both arrays have the same length, of two points at least. O(points of the sum).
  void Add(const std::vector<double>& mz, const std::vector<double>& amplitude);

  std::uint32_t Count() const { return count_; }
  // Whether all profiles had one axis.
  bool IsOneAxis() const { return isOneAxis_; }
  const std::vector<double>& Mz() const { return mz_; }
  // At each point over the profiles that reach it or, if amplitudes are 0 beyond the ends of a profile, over
  // all.
  std::vector<double> Mean(bool isZeroOutside) const;

 private:
  void TakeIn(const std::vector<double>& mz);
  void AddOnLines(const std::vector<double>& mz, const std::vector<double>& amplitude);

  std::vector<double> mz_;
  std::vector<double> sum_;
  std::vector<std::uint32_t> reaching_;  // profiles, for each point
  std::uint32_t count_ = 0;
  bool isOneAxis_ = true;
};

}  // namespace TslTool
