#include <tool/chain/EvaluateInOrder.h>

#include <tool/chain/InOrder.h>

namespace TslTool {

std::uint64_t EvaluateInOrder(SpectrumSource& source,
                              const std::function<SpectrumTexts(LoadedSpectrum&)>& evaluate,
                              const std::function<void(const SpectrumTexts&)>& write) {
  const auto next = [&]() -> std::function<SpectrumTexts()> {
    const std::function<LoadedSpectrum()> load = source.Next();
    if (!load) return {};
    return [load, &evaluate] {
      LoadedSpectrum loaded = load();
      return evaluate(loaded);
    };
  };
  return WorkInOrder<SpectrumTexts>(next, [&](SpectrumTexts& texts) { write(texts); });
}

}  // namespace TslTool
