#include <tool/commands/calibrate/OneSpectrum.h>

namespace TslTool {
namespace {

LoadedSpectrum CopyOf(const LoadedSpectrum& loaded) {
  LoadedSpectrum copy{loaded.scan, loaded.rtSeconds, std::make_unique<TslBL::Spectrum>(*loaded.spectrum),
                      loaded.id};
  copy.countAmpl = loaded.countAmpl;
  copy.msLevel = loaded.msLevel;
  copy.polarity = loaded.polarity;
  return copy;
}

class OneSpectrum final : public SpectrumSource {
 public:
  explicit OneSpectrum(const LoadedSpectrum& loaded) : loaded_(loaded) {}

  std::function<LoadedSpectrum()> Next() override {
    if (std::exchange(isTaken_, true)) return {};
    return [this] { return CopyOf(loaded_); };
  }
  std::optional<std::uint64_t> Count() const override { return 1; }
  std::string Format() const override { return "spectrum"; }

 private:
  const LoadedSpectrum& loaded_;
  bool isTaken_ = false;
};

}  // namespace

std::unique_ptr<SpectrumSource> SourceOf(const LoadedSpectrum& loaded) {
  return std::make_unique<OneSpectrum>(loaded);
}

}  // namespace TslTool
