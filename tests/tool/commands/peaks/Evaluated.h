#pragma once
// A spectrum of the demonstration run with everything evaluated.

#include <tool/io/SpectrumSource.h>
#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <stdexcept>

namespace tests {

inline TslTool::LoadedSpectrum LoadScan(std::uint32_t number) {
  TslTool::SpectrumChoice choice;
  choice.filter.numbers = {{number, number}};
  return TslTool::OpenSpectra("", choice)->Next()();
}

inline TslTool::LoadedSpectrum EvaluatedScan(std::uint32_t number) {
  using TslBL::CurveEval;
  TslTool::LoadedSpectrum loaded = LoadScan(number);
  TslBL::Changed changed;
  std::wstring error;
  if (!TslBL::ExecuteCurveEvals(*loaded.spectrum,
                                {CurveEval(TslBL::BaselineParams()), CurveEval(TslBL::NoiseParams()),
                                 CurveEval(TslBL::PeakDetectParams::DefaultMS())},
                                changed, error))
    throw std::runtime_error("the demonstration cannot be evaluated");
  return loaded;
}

}  // namespace tests
