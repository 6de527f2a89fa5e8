#pragma once
// How the best step of a ramp is chosen.

#include <tslbl/Export.h>
#include <tslbl/records/Record.h>
#include <cstdint>

namespace TslBL {

struct TSLBL_API RampAlgorithmParams : SerialRecord<RampAlgorithmParams> {
  // What Type stands for: the best of one thing, or of those steps that come close to the best of the other.
  enum Types : std::uint32_t {
    Amplitude = 0,
    Resolution = 1,
    AmplitudeAtResolution = 2,
    ResolutionAtAmplitude = 3,
  };

  std::uint32_t Type = ResolutionAtAmplitude;
  std::uint32_t Percent = 1;  // how far below the best a step may lie and still come close
};
TSLBL_API void Describe(Archive& ar, RampAlgorithmParams& params);

}  // namespace TslBL
