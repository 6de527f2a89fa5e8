#include <tool/commands/peaks/PeakColumns.h>

#include <tool/frame/Numbers.h>

namespace TslTool {
namespace {

using TslBL::MZPeak;

template <auto field>
ColumnValue Get(const MZPeak& peak) {
  using T = std::remove_cvref_t<decltype(peak.*field)>;
  if constexpr (std::is_same_v<T, double>) {
    return WithoutNaNSign(peak.*field);
  } else if constexpr (std::is_same_v<T, bool>) {
    return peak.*field;
  } else {
    return static_cast<std::int64_t>(peak.*field);
  }
}

constexpr PeakColumn kColumns[] = {
    {"mz", Get<&MZPeak::Mass>},
    {"amplitude", Get<&MZPeak::Ampl>},
    {"area", Get<&MZPeak::Area>},
    {"width", Get<&MZPeak::Width>},
    {"resolution", Get<&MZPeak::Resolution>},
    {"sn", Get<&MZPeak::Signal2Noise>},
    {"Kind", Get<&MZPeak::Kind>},
    {"CurveId", Get<&MZPeak::CurveId>},
    {"PeakId", Get<&MZPeak::PeakId>},
    {"CentroidX", Get<&MZPeak::CentroidX>},
    {"CentroidAmpl", Get<&MZPeak::CentroidAmpl>},
    {"RelCentroidAmpl", Get<&MZPeak::RelCentroidAmpl>},
    {"MaxX", Get<&MZPeak::MaxX>},
    {"MaxAmpl", Get<&MZPeak::MaxAmpl>},
    {"RelMaxAmpl", Get<&MZPeak::RelMaxAmpl>},
    {"Baseline", Get<&MZPeak::Baseline>},
    {"Noise", Get<&MZPeak::Noise>},
    {"PkStartX", Get<&MZPeak::PkStartX>},
    {"PkStartAmpl", Get<&MZPeak::PkStartAmpl>},
    {"PkEndX", Get<&MZPeak::PkEndX>},
    {"PkEndAmpl", Get<&MZPeak::PkEndAmpl>},
    {"PkAreaStartX", Get<&MZPeak::PkAreaStartX>},
    {"PkAreaEndX", Get<&MZPeak::PkAreaEndX>},
    {"PkAreaIntercept", Get<&MZPeak::PkAreaIntercept>},
    {"CSSeriesType", [](const MZPeak& p) { return ColumnValue(std::int64_t{p.CSSeriesRef.Type}); }},
    {"CSSeriesId", [](const MZPeak& p) { return ColumnValue(std::int64_t{p.CSSeriesRef.Id}); }},
    {"CSValue1", Get<&MZPeak::CSValue1>},
    {"CSValue2", Get<&MZPeak::CSValue2>},
    {"CSValue3", Get<&MZPeak::CSValue3>},
    {"CSCharge", Get<&MZPeak::CSCharge>},
    {"IsOverlapped", Get<&MZPeak::IsOverlapped>},
    {"GroupId", Get<&MZPeak::GroupId>},
};

}  // namespace

std::span<const PeakColumn> PeakColumns() { return kColumns; }

}  // namespace TslTool
