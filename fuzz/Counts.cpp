// From counts to a spectrum: any tune, read from bytes, with any counts. The spectrum has an m/z a
// count, or the tune is refused.

#include <fuzz/Records.h>
#include <tslbl/spectrum/CountRate.h>
#include <tslbl/spectrum/CreateSpectrum.h>
#include <tslbl/tune/Tune.h>
#include <memory>
#include <vector>

using namespace TslBL;
using namespace fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  RawSpectrum raw;
  raw.info.TimeStamp = input.Integer();
  raw.info.TIC = input.Real();
  raw.counts.resize(input.Take<std::uint16_t>() % 1000);
  const std::uint8_t scale = input.Take<std::uint8_t>();
  for (std::size_t i = 0; i < raw.counts.size(); ++i) raw.counts[i] = static_cast<double>(i % 17 * scale);
  Tune tune;
  if (!AcceptsBytes(input.Rest(), tune)) return 0;
  const std::size_t points = raw.counts.size();
  Accepts([&] {
    AssignCountRateAmpl(raw.counts, tune, &raw.info.TIC);
    Require(raw.counts.size() == points, "there is a rate for each count");
    std::unique_ptr<Spectrum> spectrum(CreateSpectrum(tune, raw, nullptr));
    Require(spectrum->xAxis.size() == points && spectrum->yAxis.size() == points,
            "there is an m/z for each count");
    MZAssign(*spectrum);
    Require(spectrum->xAxis.size() == points, "there is an m/z for each count");
  });
  Accepts([&] { tune.QScanSpeed(); });
  Tune other;
  Accepts([&] { other.Overwrite(tune); });
  Accepts([&] { tune.Overwrite(Tune(tune)); });
  return 0;
}
