#pragma once
// A spectrum and the number that goes with it where spectra of several acquisition states
// are averaged: how many spectra were summed into it.

#include <cstdint>

namespace TslBL {

class Spectrum;

struct StateSpectrum {
  std::uint32_t state = 0;
  Spectrum* spectrum = nullptr;  // not owned
};

}  // namespace TslBL
