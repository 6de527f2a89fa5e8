#include <tslbl/arithmetic/CurveSpectra.h>

#include <tslbl/arithmetic/Composite.h>
#include <tslbl/arithmetic/SpectrumSums.h>
#include <tslbl/chromatogram/CurveDefinition.h>
#include <memory>
#include <numeric>
#include <optional>
#include <set>

namespace TslBL {
namespace {

// What a definition adds up and takes away.
struct Formula {
  std::vector<StateSpectrum> plus;
  std::vector<StateSpectrum> minus;
  std::wstring title;
};

std::optional<MessageId> Read(const std::wstring& definition, const std::vector<Spectrum*>& ranges,
                              const std::vector<Spectrum*>& curves, Formula& formula) {
  bool isMinus = false;
  const auto onSign = [&](bool minus) {
    isMinus = minus;
    formula.title += minus ? L" - " : L" + ";
  };
  const auto onOperand = [&](const CurveOperand& operand) {
    Spectrum* spectrum = (operand.isRange ? ranges : curves)[operand.index];
    formula.title += spectrum->name;
    (isMinus ? formula.minus : formula.plus).push_back({1, spectrum});
  };
  return WalkDefinition(definition, {ranges.size(), curves.size()}, onSign, onOperand);
}

std::unique_ptr<Spectrum> Average(const std::vector<StateSpectrum>& spectra) {
  return std::unique_ptr<Spectrum>(AverageMultiStateSpectra(spectra));
}

// Null if nothing is added up.
std::unique_ptr<Spectrum> Calculate(const Formula& formula) {
  auto plus = Average(formula.plus);
  if (!plus || formula.minus.empty()) return plus;
  return CompositeDifference(*plus, *Average(formula.minus));
}

// Each id of a source that is not there yet, with what stands beside it.
void MergeSources(const std::vector<StateSpectrum>& sources, Spectrum& result) {
  std::set<std::uint32_t> known(result.sourceListA.begin(), result.sourceListA.end());
  for (const StateSpectrum& source : sources) {
    const std::vector<std::uint32_t>& beside = source.spectrum->sourceListB;
    for (std::size_t j = 0; j < source.spectrum->sourceListA.size(); ++j) {
      const std::uint32_t id = source.spectrum->sourceListA[j];
      if (!known.insert(id).second) continue;
      result.sourceListA.push_back(id);
      result.sourceListB.push_back(j < beside.size() ? beside[j] : 0);
    }
  }
}

}  // namespace

bool GenerateCurveSpectra(const std::vector<Spectrum*>& ranges, const std::vector<std::wstring>& curveDefs,
                          std::vector<Spectrum*>& curves, std::wstring& error) {
  for (std::size_t k = 0; k < curveDefs.size(); ++k) {
    Formula formula;
    if (const auto fault = Read(curveDefs[k], ranges, curves, formula)) {
      error = DefinitionError(k, *fault);
      return false;
    }
    auto result = Calculate(formula);
    if (!result) {
      error = EmptyDefinitionError(k);
      return false;
    }
    MergeSources(formula.plus, *result);
    MergeSources(formula.minus, *result);
    result->name = formula.title;
    result->tic = std::accumulate(result->yAxis.begin(), result->yAxis.end(), 0.0);
    curves.push_back(result.get());
    static_cast<void>(result.release());
  }
  return true;
}

}  // namespace TslBL
