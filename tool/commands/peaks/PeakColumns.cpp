#include <tool/commands/peaks/PeakColumns.h>

#include <tool/frame/Numbers.h>

namespace TslTool {
namespace {

using TslBL::MZPeak;

template <auto field>
ColumnValue Get(const ReportedPeak& peak) {
  const auto value = peak.row.*field;
  if constexpr (std::is_same_v<decltype(value), const double>) {
    return WithoutNaNSign(value);
  } else if constexpr (std::is_same_v<decltype(value), const bool>) {
    return value;
  } else {
    return static_cast<std::int64_t>(value);
  }
}

constexpr PeakColumn kColumns[] = {
    {"mz", Get<&MZPeak::Mass>},
    {"amplitude", Get<&MZPeak::Ampl>},
    {"area", [](const ReportedPeak& p) { return ColumnValue(WithoutNaNSign(p.area)); }},
    {"width", [](const ReportedPeak& p) { return ColumnValue(WithoutNaNSign(p.Width())); }},
    {"resolution", [](const ReportedPeak& p) { return ColumnValue(WithoutNaNSign(p.Resolution())); }},
    {"sn", Get<&MZPeak::Signal2Noise>},
    {"height", [](const ReportedPeak& p) { return ColumnValue(WithoutNaNSign(p.errors.height)); }},
    {"mz_se", [](const ReportedPeak& p) { return ColumnValue(WithoutNaNSign(p.errors.mz)); }},
    {"amplitude_se", [](const ReportedPeak& p) { return ColumnValue(WithoutNaNSign(p.errors.amplitude)); }},
    {"area_se", [](const ReportedPeak& p) { return ColumnValue(WithoutNaNSign(p.errors.area)); }},
    {"counted", [](const ReportedPeak& p) { return ColumnValue(p.errors.isCounted); }},
    {"Kind", Get<&MZPeak::Kind>},
    {"CurveId", Get<&MZPeak::CurveId>},
    {"PeakId", Get<&MZPeak::PeakId>},
    {"CentroidX", Get<&MZPeak::CentroidX>},
    {"CentroidAmpl", Get<&MZPeak::CentroidAmpl>},
    {"RelCentroidAmpl", Get<&MZPeak::RelCentroidAmpl>},
    {"MaxX", Get<&MZPeak::MaxX>},
    {"MaxAmpl", Get<&MZPeak::MaxAmpl>},
    {"RelMaxAmpl", Get<&MZPeak::RelMaxAmpl>},
    {"Area", Get<&MZPeak::Area>},
    {"Baseline", Get<&MZPeak::Baseline>},
    {"Noise", Get<&MZPeak::Noise>},
    {"PkStartX", Get<&MZPeak::PkStartX>},
    {"PkStartAmpl", Get<&MZPeak::PkStartAmpl>},
    {"PkEndX", Get<&MZPeak::PkEndX>},
    {"PkEndAmpl", Get<&MZPeak::PkEndAmpl>},
    {"PkAreaStartX", Get<&MZPeak::PkAreaStartX>},
    {"PkAreaEndX", Get<&MZPeak::PkAreaEndX>},
    {"PkAreaIntercept", Get<&MZPeak::PkAreaIntercept>},
    {"CSSeriesType", [](const ReportedPeak& p) { return ColumnValue(std::int64_t{p.row.CSSeriesRef.Type}); }},
    {"CSSeriesId", [](const ReportedPeak& p) { return ColumnValue(std::int64_t{p.row.CSSeriesRef.Id}); }},
    {"CSValue1", Get<&MZPeak::CSValue1>},
    {"CSValue2", Get<&MZPeak::CSValue2>},
    {"CSValue3", Get<&MZPeak::CSValue3>},
    {"CSCharge", Get<&MZPeak::CSCharge>},
    {"IsOverlapped", Get<&MZPeak::IsOverlapped>},
    {"GroupId", Get<&MZPeak::GroupId>},
    {"Width", Get<&MZPeak::Width>},
    {"Resolution", Get<&MZPeak::Resolution>},
};

}  // namespace

std::span<const PeakColumn> PeakColumns() { return kColumns; }

}  // namespace TslTool
