#include <tool/commands/results/ResultWriter.h>

#include <tool/chain/ChainFile.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/curve/Curve.h>

namespace TslTool {

std::string ResultWriter::Head() const {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Results>\n" + sections_ +
         (content_ == ResultContent::Header ? "" : ChainToXml(chain_)) + "<Spectra>\n";
}

// AddRawSpectrum would find the peaks anew by the parameters of a new spectrum, and put them on the tune's
// own calibration where the run has another.
std::string ResultWriter::PartOf(const LoadedSpectrum& loaded) const {
  const TslBL::Spectrum& spectrum = *loaded.spectrum;
  TslCommon::XMLBuilder builder;
  builder.StartNode(L"RawSpec");
  builder.WAttribute(L"Id", TslCommon::ToText(spectrum.sourceListA.front()));
  builder.WAttribute(L"TimeStamp", TslCommon::ToText(TslCommon::Truncate<std::uint32_t>(spectrum.timeStamp)));
  builder.WAttribute(L"TIC", TslCommon::ToText(spectrum.tic));
  builder.WAttribute(L"TuneId", TslCommon::ToText(spectrum.tuneId));
  if (content_ == ResultContent::PeaksAndProfile) builder.WProfileNode(spectrum.xAxis, loaded.measured);
  if (content_ != ResultContent::Header) TslBL::AddCurvePeaks(spectrum, builder);
  builder.EndNode();
  return TslCommon::ToUtf8(builder.QXML());
}

}  // namespace TslTool
