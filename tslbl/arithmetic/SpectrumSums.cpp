#include <tslbl/arithmetic/SpectrumSums.h>

#include <tslbl/arithmetic/Composite.h>
#include <memory>
#include <stdexcept>

namespace TslBL {
namespace {

constexpr const char* kNoAmplitudes = "Y axis not assigned";

void Require(bool isTrue, const char* otherwise) {
  if (!isTrue) throw std::runtime_error(otherwise);
}

}  // namespace

void AddSingleStateSpectra(Spectrum* sum, const Spectrum* other) {
  Require(sum->startMDAC == other->startMDAC, "Different startMDAC");
  Require(sum->stepMDAC == other->stepMDAC, "Different stepMDAC");
  Require(sum->yAxis.size() == other->yAxis.size(), "Different numPoints");
  Require(sum->CheckAllStatus(Curve::STATUS_Y) && other->CheckAllStatus(Curve::STATUS_Y), kNoAmplitudes);
  for (std::size_t i = 0; i < sum->yAxis.size(); ++i) sum->yAxis[i] += other->yAxis[i];
}

void DivideSpectrum(Spectrum* spectrum, std::uint32_t divisor) {
  if (divisor == 1) return;
  Require(spectrum->CheckAllStatus(Curve::STATUS_Y), kNoAmplitudes);
  Require(divisor != 0, "Divide by zero");
  for (double& y : spectrum->yAxis) y /= divisor;
}

Spectrum* AverageMultiStateSpectra(const std::vector<StateSpectrum>& spectra) {
  if (spectra.empty()) return nullptr;
  if (spectra.size() > 1) return CompositeAverage(spectra).release();
  const StateSpectrum& only = spectra.front();
  std::unique_ptr<Spectrum> average(static_cast<Spectrum*>(only.spectrum->Clone()));
  DivideSpectrum(average.get(), only.state);
  return average.release();
}

}  // namespace TslBL
