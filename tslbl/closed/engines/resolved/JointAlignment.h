#pragma once
// Counts the isotopes of large species by all their charges together, and by what others in the same
// spectrum leave of their peaks.
#include <tslbl/closed/engines/resolved/IsotopeAlignment.h>
#include <tslbl/closed/engines/resolved/PatternMatch.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

namespace TslMath {

class JointAlignment {
 public:
  using Family = std::vector<Envelope>;  // of one mass, each of another charge, none empty

  static constexpr double kIsotopeStep = 1.00235;  // Da, of large molecules

  // All are referred to; `families` come strongest first. `remaining` is what `match` looks at; it goes back
  // to what it was with this object.
  JointAlignment(const IsotopeList& list, const ResolvedPrefs& prefs, PatternMatch& match,
                 std::vector<double>& remaining, std::vector<Family>& families);
  ~JointAlignment() { remaining_ = before_; }
  JointAlignment(const JointAlignment&) = delete;
  JointAlignment& operator=(const JointAlignment&) = delete;

  // Lays those families anew that fit better some isotopes further on, if all their charges reach the least
  // score there. Whether there was one.
  bool Align();

  // Of each family as it is counted, Da: how far that is off, root mean square. 0 where the lightest isotopes
  // can be seen.
  std::vector<double> Errors();

 private:
  struct Claim {
    std::size_t peak;
    double expected;
  };
  // What is seen of one charge, and in which peaks.
  struct View {
    SeenState seen;
    std::vector<std::optional<std::size_t>> peaks;
  };
  struct Fit {
    double mass;
    const VisiblePattern& pattern;
    std::vector<View> views;
    PatternPlace place;
  };
  // A family that has been looked at.
  struct Counted {
    double mass = 0;
    PatternPlace place = {0, std::numeric_limits<double>::infinity()};
    double error = 0;  // of the count, isotopes
  };

  const VisiblePattern& PatternOf(const Family& family);
  bool IsLarge(const Family& family);
  double RestOf(std::size_t peak) const;
  void Enter(std::size_t family, std::vector<Claim> claims);
  void Release(std::size_t family);
  View ViewOf(const Envelope& envelope, double mass, const VisiblePattern& pattern) const;
  Fit FitOf(std::size_t family);
  const Counted* KinOf(std::size_t family, double mass) const;
  CountChances ChancesOf(std::size_t family, const Fit& fit) const;
  void Keep(std::size_t family, const Fit& fit, std::int32_t shift);
  bool MoveTo(Family& family, double mass);
  bool AlignOne(std::size_t family);

  const IsotopeList& list_;
  const ResolvedPrefs& prefs_;
  PatternMatch& match_;
  std::vector<double>& remaining_;
  std::vector<double> before_;
  std::vector<Family>& families_;
  std::vector<double> expected_;            // of each peak, by all families
  std::vector<std::vector<Claim>> claims_;  // of each family
  std::vector<Counted> counted_;            // of each family
};

}  // namespace TslMath
