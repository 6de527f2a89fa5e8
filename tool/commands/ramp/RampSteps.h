#pragma once
// The steps of a ramp, found in the tunes of its run.

#include <tslbl/tune/Tune.h>
#include <tslbl/tune/TuneField.h>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace TslTool {

using Tunes = std::map<std::uint32_t, TslBL::Tune>;

struct RampSteps {
  std::vector<TslBL::TuneField::Id> lenses;     // one or two
  std::vector<std::vector<double>> values;      // of each step, one for each lens
  std::map<std::uint32_t, std::size_t> ofTune;  // the step that a tune belongs to
  std::vector<std::string> beside;              // lenses that differ too, and were not asked for

  // Whether a step lies where the ramp of this lens ends on either side.
  bool IsAtEnd(std::size_t step, std::size_t lens) const;
};

// Steps in the order of the tunes' ids; tunes of equal values are one step. The lenses are those of these
// names, or, without one, those in which the tunes differ. Throws UsageError for a name that is no lens of a
// ramp, RampError if the tunes make no ramp of one lens or two.
RampSteps FindRampSteps(const Tunes& tunes, const std::vector<std::string>& names);

// As users name it.
std::string LensName(const TslBL::Tune& tune, TslBL::TuneField::Id field);
// With its unit, as "CapExit, V".
std::string LensTitle(const TslBL::Tune& tune, TslBL::TuneField::Id field);

}  // namespace TslTool
