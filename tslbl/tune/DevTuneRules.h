#pragma once
// The rules of the instrument for a tune: its limits and its timing. All delays are in
// microseconds.

#include <tslbl/Export.h>
#include <tslbl/tune/Tune.h>
#include <cstdint>

namespace TslBL {

class TSLBL_API DevTuneRules : public Tune {
 public:
  // What a change or a check came to.
  enum ErrTypes : std::uint32_t {
    NoError = 0,  // accepted
    Warning = 1,  // accepted, with a text to be read
    Error = 2,    // refused; the tune is unchanged
  };

  // The limits of a field under a probe; see FieldLimits.h.
  static void QLimits(TuneField::Id field, double& min, double& max, double& step, Probes::ProbeTypes probe);
  // The m/z that the instrument reaches.
  static double QMinMz();
  static double QMaxMz();

  // The limits of the span of a SIM, and the step of its scan, in m/z. The site cannot
  // change them.
  static void QLimitsSimWithSpan(double& min, double& max, double& step);
  static double QSimWithSpanStepSize();

  // A value in units of the instrument: divided by the field's step and rounded, halves
  // away from zero; beyond 32 bits the nearest end. The first form takes the ESI limits.
  static std::int32_t TranslateField(TuneField::Id field, double value);
  static std::int32_t TranslateField(Probes::ProbeTypes probe, TuneField::Id field, double value);

  // The number of mass steps of one scan: at least 1 for a tune whose mass DAC values rise
  // with m/z. A step below 0.05 m/z counts as 0.05. Throws std::runtime_error if the step
  // is less than one unit of the instrument.
  static std::uint32_t QNumPulses(const Tune& tune);

  // The microseconds that a spectrum takes. Counted in 32 bits: a tune beyond them, which
  // the limits of its fields allow, wraps around.
  static double QDuration(const Tune& tune);
};

}  // namespace TslBL
