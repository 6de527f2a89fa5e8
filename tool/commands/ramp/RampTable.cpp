#include <tool/commands/ramp/RampTable.h>

#include <fmt/format.h>

#include <tslbl/records/MZPeak.h>
#include <nlohmann/json.hpp>

namespace TslTool {
namespace {

using Json = nlohmann::ordered_json;
using TslBL::MZPeak;

double ResolutionOf(const MZPeak& peak) { return TslBL::QMZPeakField(peak, TslBL::MZPeakField::Res); }

std::string Names(const RampReport& report, const char* format) {
  std::string text;
  for (const auto field : report.response.steps.lenses)
    text += fmt::format(fmt::runtime(format), LensName(report.tune, field));
  return text;
}

std::string Values(const RampReport& report, std::size_t step, const char* format) {
  std::string text;
  for (const double value : report.response.steps.values[step])
    text += fmt::format(fmt::runtime(format), value);
  return text;
}

std::string BestRow(const RampReport& report, std::size_t i) {
  const RampResponse& r = report.response;
  const MZPeak& peak = r.peaks[i][r.best[i]].Peak;
  return fmt::format("{:<10}{} {:>11.4f} {:>11.5g} {:>11.5g}\n", r.mz[i],
                     Values(report, r.best[i], " {:>12g}"), peak.Mass, peak.Ampl, ResolutionOf(peak));
}

std::string CurveRows(const RampReport& report, const LensResult& lens) {
  if (lens.curve.empty()) return "";
  std::string text = fmt::format("\n{} over m/z\n", LensTitle(report.tune, lens.field));
  for (const auto& [mz, value] : lens.curve)
    text += fmt::format("{:<10} {:>12g}\n", fmt::format("{:g}", mz), value);
  return text;
}

std::string TsvRow(const RampResponse& r, std::size_t i, std::size_t step) {
  const MZPeak& peak = r.peaks[i][step].Peak;
  std::string row = fmt::format("{}\t{}", r.mz[i], step);
  for (const double value : r.steps.values[step]) row += fmt::format("\t{}", value);
  row += fmt::format("\t{}", r.spectra[step]);
  row += peak.Ampl > 0.0 ? fmt::format("\t{}\t{}\t{}", peak.Mass, peak.Ampl, ResolutionOf(peak)) : "\t\t\t";
  return row + fmt::format("\t{}\t{}\n", r.best[i] == step ? 1 : 0, r.overall == step ? 1 : 0);
}

Json JsonOf(const MZPeak& peak) {
  if (!(peak.Ampl > 0.0)) return {{"mz", nullptr}, {"amplitude", nullptr}, {"resolution", nullptr}};
  return {{"mz", peak.Mass}, {"amplitude", peak.Ampl}, {"resolution", ResolutionOf(peak)}};
}

}  // namespace

std::string RampTable(const RampReport& report) {
  const RampResponse& r = report.response;
  std::string text = fmt::format("{} steps, chosen by {}\n\n", r.steps.values.size(), report.choice) +
                     fmt::format("{:<10}{} {:>11} {:>11} {:>11}\n", "m/z", Names(report, " {:>12}"),
                                 "m/z found", "amplitude", "resolution");
  for (std::size_t i = 0; i < r.mz.size(); ++i) text += BestRow(report, i);
  text += fmt::format("{:<10}{}\n", "overall", Values(report, r.overall, " {:>12g}"));
  for (const LensResult& lens : report.lenses) text += CurveRows(report, lens);
  return text;
}

std::string RampTsv(const RampReport& report) {
  const RampResponse& r = report.response;
  std::string text =
      "mz\tstep" + Names(report, "\t{}") + "\tspectra\tmz_found\tamplitude\tresolution\tbest\toverall\n";
  for (std::size_t i = 0; i < r.mz.size(); ++i)
    for (std::size_t step = 0; step < r.steps.values.size(); ++step) text += TsvRow(r, i, step);
  return text;
}

std::string RampJson(const RampReport& report) {
  const RampResponse& r = report.response;
  Json json = {
      {"by", report.choice}, {"lenses", Json::array()}, {"steps", Json::array()}, {"mz", Json::array()}};
  for (const LensResult& lens : report.lenses)
    json["lenses"].push_back(
        {{"lens", LensName(report.tune, lens.field)}, {"best", lens.value}, {"curve", lens.curve}});
  for (std::size_t step = 0; step < r.steps.values.size(); ++step)
    json["steps"].push_back({{"values", r.steps.values[step]}, {"spectra", r.spectra[step]}});
  for (std::size_t i = 0; i < r.mz.size(); ++i) {
    Json row = {{"mz", r.mz[i]}, {"best", r.best[i]}, {"peaks", Json::array()}};
    for (const auto& peak : r.peaks[i]) row["peaks"].push_back(JsonOf(peak.Peak));
    json["mz"].push_back(std::move(row));
  }
  json["overall"] = r.overall;
  json["unseen"] = r.unseen;
  return json.dump() + '\n';
}

}  // namespace TslTool
