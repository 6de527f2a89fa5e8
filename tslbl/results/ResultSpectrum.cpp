#include <tslbl/results/ResultSpectrum.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/curve/Execute.h>
#include <tslbl/spectrum/CreateSpectrum.h>
#include <tslbl/tune/Tune.h>
#include <memory>
#include <string>

namespace TslBL {

void AddRawSpectrum(XMLBuilder& builder, std::uint32_t tuneId, const Tune& tune, const RawSpectrum& raw,
                    bool writeProfile, bool writeCentroid) {
  builder.StartNode(L"RawSpec");
  builder.WAttribute(L"Id", ToText(raw.info.Id));
  builder.WAttribute(L"TimeStamp", ToText(raw.info.TimeStamp));
  builder.WAttribute(L"TIC", ToText(raw.info.TIC));
  builder.WAttribute(L"TuneId", ToText(tuneId));
  if (writeProfile || writeCentroid) {
    const std::unique_ptr<Spectrum> spectrum(CreateSpectrum(tune, raw, nullptr));
    if (writeProfile) builder.WProfileNode(spectrum->xAxis, spectrum->yAxis);
    if (writeCentroid) FormatPartialCentroid(*spectrum, builder);
  }
  builder.EndNode();
}

void FormatPartialCentroid(Spectrum& spectrum, XMLBuilder& builder) {
  Changed changed;
  std::wstring error;
  // A failure shows in the status, which decides what is written.
  ExecutePeakDetect(spectrum, changed, error);
  AddCurvePeaks(spectrum, builder);
}

}  // namespace TslBL
