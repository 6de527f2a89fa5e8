#pragma once
// A run that a method acquires, with raw counts of which the truth is known: each spectrum with its own tune,
// through the lenses as they stand in it (LensModel.h), when the program has it (MethodProgram.h).

#include <tool/simulate/ExpectedCounts.h>
#include <tool/simulate/MethodProgram.h>
#include <tool/simulate/Sample.h>
#include <tslbl/method/MethodRules.h>
#include <tslbl/spectrum/RawSpectrum.h>
#include <cstdint>
#include <map>
#include <vector>

namespace TslTool {

class Acquisition {
 public:
  // Of a method that the rules hold valid. `width`: of a line at half its height where Q1's resolution has it
  // as usual, in m/z. Throws as MethodProgram does.
  Acquisition(const TslBL::MethodRules& rules, const Sample& sample, double width, std::uint64_t seed);

  const MethodProgram& Program() const { return program_; }

  // The next spectrum that is kept, and what is in it; false behind the last one.
  bool Next(TslBL::RawSpectrum& raw, std::vector<TrueLine>& truth);

 private:
  const ExpectedCounts& ExpectedOf(const ProgrammedSpectrum& spectrum);

  std::map<std::uint32_t, TslBL::Tune> tunes_;
  Sample sample_;
  double width_;
  std::uint64_t seed_;
  MethodProgram program_;
  // Of the tunes of one time period: those of a whole method may be more than memory holds.
  std::uint32_t period_ = 0;
  std::map<std::uint32_t, ExpectedCounts> expected_;
};

}  // namespace TslTool
