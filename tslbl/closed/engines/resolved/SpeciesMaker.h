#pragma once
// Makes species of envelopes: those of one mass at several charges.
#include <tslbl/closed/engines/resolved/PatternMatch.h>

namespace TslMath {

class SpeciesMaker {
 public:
  // All are referred to. `remaining` is given back as it was.
  SpeciesMaker(const IsotopeList& list, const ResolvedPrefs& prefs, PatternMatch& match,
               std::vector<double>& remaining);

  // The strongest envelope first, with those of its mass at the charges next to it; where isotopes were
  // counted differently, the count that most evidence speaks for holds for all.
  std::vector<Species> Group(std::vector<Envelope> envelopes);
  // One species of these, at most one envelope for each charge.
  Species Make(std::vector<Envelope> envelopes);

 private:
  using Family = std::vector<Envelope>;

  // How far two masses of one isotope may differ, Da.
  double SameIsotope(double mass) const;
  bool IsWholeIsotopesOff(double a, double b) const;
  std::vector<Family> Families(std::vector<Envelope> envelopes) const;
  bool Refit(const Envelope& envelope, double mass, Envelope& refitted);
  double SupportOf(const Family& family, double mass);
  double BestSupported(const Family& family);
  void Agree(Family& family, std::vector<Family>& others);
  void JoinShifted(std::vector<Family>& families);
  bool MoveInto(Family& family, const Family& other);
  void SetMass(Species& species) const;
  double IntensityOf(const IsotopeState& state) const;

  const IsotopeList& list_;
  const ResolvedPrefs& prefs_;
  PatternMatch& match_;
  std::vector<double>& remaining_;
};

}  // namespace TslMath
