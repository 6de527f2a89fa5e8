#include <tool/commands/decon/DropSeries.h>

#include <tslbl/chargestate/CSDeconEdit.h>
#include <tslbl/closed/common/Text.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace TslTool {

void DropSeries(TslBL::DeconSpectrum& spectrum,
                const std::function<bool(const TslBL::CSSeriesInfo& series)>& isUnwanted) {
  std::vector<TslBL::CSSeries> unwanted;
  for (const TslBL::CSSeriesInfo& series : spectrum.Series)
    if (isUnwanted(series)) unwanted.push_back(series.Series);
  std::wstring error;
  if (!TslBL::CSDeconDeleteSeries(spectrum, unwanted, error) && !spectrum.Series.empty())
    throw std::runtime_error(TslCommon::ToUtf8(error));
}

}  // namespace TslTool
