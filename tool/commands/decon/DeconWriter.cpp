#include <tool/commands/decon/DeconWriter.h>

#include <fmt/format.h>

#include <tool/commands/decon/SeriesRows.h>
#include <tool/commands/peaks/WriterFormats.h>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

namespace TslTool {
namespace {

const char* KindOf(const SeriesRow& row) { return row.isResolved ? "resolved" : "unresolved"; }

// What is not known is left empty.
std::string TextOf(double value, const char* form = "{}") {
  return std::isnan(value) ? "" : fmt::format(fmt::runtime(form), value);
}

class TableWriter final : public SpectrumWriter {
 public:
  std::string PartOf(const LoadedSpectrum& loaded) const override {
    const std::vector<SeriesRow> rows = SeriesRows(loaded);
    std::string text = fmt::format("scan {}", loaded.scan);
    if (!std::isnan(loaded.rtSeconds)) text += fmt::format(", {:.3f} s", loaded.rtSeconds);
    text += fmt::format(", {} peaks, {} series\n", loaded.spectrum->QNumPeaks(), rows.size());
    if (rows.empty()) return text;
    text += fmt::format("{:>6} {:<10} {:>13} {:>9} {:>9} {:>9} {:>6} {:>12}\n", "series", "kind", "mass",
                        "mass_se", "deviation", "charges", "peaks", "intensity");
    for (const SeriesRow& row : rows)
      text +=
          fmt::format("{:>6} {:<10} {:>13.4f} {:>9} {:>9} {:>9} {:>6} {:>12.6g}\n", row.label, KindOf(row),
                      row.mass, TextOf(row.massError, "{:.2g}"), TextOf(row.deviation, "{:.3g}"),
                      fmt::format("{}-{}", row.lowCharge, row.highCharge), row.peaks.size(), row.intensity);
    return text;
  }
  std::string Between() const override { return "\n"; }
};

template <char separator>
class RowWriter final : public SpectrumWriter {
 public:
  std::string Head() const override {
    return fmt::format(
        "scan{0}rt_s{0}series{0}kind{0}mass{0}mass_se{0}deviation{0}charge_low{0}charge_high{0}peaks{0}"
        "intensity\n",
        separator);
  }
  std::string PartOf(const LoadedSpectrum& loaded) const override {
    const std::string time = TextOf(loaded.rtSeconds);
    std::string text;
    for (const SeriesRow& row : SeriesRows(loaded))
      text +=
          fmt::format("{1}{0}{2}{0}{3}{0}{4}{0}{5}{0}{6}{0}{7}{0}{8}{0}{9}{0}{10}{0}{11}\n", separator,
                      loaded.scan, time, row.label, KindOf(row), row.mass, TextOf(row.massError),
                      TextOf(row.deviation), row.lowCharge, row.highCharge, row.peaks.size(), row.intensity);
    return text;
  }
};

nlohmann::ordered_json PeaksOf(const SeriesRow& row) {
  auto peaks = nlohmann::ordered_json::array();
  for (const MemberRow& member : row.peaks)
    peaks.push_back({{"charge", member.charge},
                     {"peak", member.peak},
                     {"mz", member.mz},
                     {"intensity", member.intensity}});
  return peaks;
}

nlohmann::ordered_json SeriesOf(const SeriesRow& row) {
  return {{"series", row.label},           {"kind", KindOf(row)},        {"mass", row.mass},
          {"mass_se", row.massError},      {"deviation", row.deviation}, {"charge_low", row.lowCharge},
          {"charge_high", row.highCharge}, {"intensity", row.intensity}, {"peaks", PeaksOf(row)}};
}

// One array of spectra, a line each. What is not known is null.
class JsonWriter final : public SpectrumWriter {
 public:
  std::string Head() const override { return "[\n"; }
  std::string PartOf(const LoadedSpectrum& loaded) const override {
    nlohmann::ordered_json spectrum;
    spectrum["scan"] = loaded.scan;
    spectrum["rt_s"] = loaded.rtSeconds;
    auto& series = spectrum["series"] = nlohmann::ordered_json::array();
    for (const SeriesRow& row : SeriesRows(loaded)) series.push_back(SeriesOf(row));
    return spectrum.dump();
  }
  std::string Between() const override { return ",\n"; }
  std::string Tail() const override { return "\n]\n"; }
};

const WriterFormats<SpectrumWriter>& Formats() {
  static const auto formats = WriterFormats<SpectrumWriter>()
                                  .With<TableWriter>("table")
                                  .With<RowWriter<'\t'>>("tsv")
                                  .With<RowWriter<','>>("csv")
                                  .With<JsonWriter>("json");
  return formats;
}

}  // namespace

const std::vector<std::string>& DeconFormats() { return Formats().Names(); }

std::unique_ptr<SpectrumWriter> MakeDeconWriter(const std::string& format) { return Formats().Make(format); }

}  // namespace TslTool
