#include <tool/commands/peaks/PeakWriter.h>

#include <fmt/format.h>
#include <tool/commands/peaks/MzMLWriter.h>
#include <tool/commands/peaks/PeakColumns.h>
#include <tool/commands/peaks/WriterFormats.h>
#include <tool/frame/Numbers.h>
#include <tool/frame/Printable.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/curve/Curve.h>
#include <cmath>
#include <nlohmann/json.hpp>

namespace TslTool {
namespace {

using Peaks = std::vector<ReportedPeak>;

std::string PrintableId(const LoadedSpectrum& loaded) { return Printable(loaded.id, loaded.id.size()); }

// Where several functions of an instrument count from 1, the number alone is no name.
std::string NameOf(const LoadedSpectrum& loaded) {
  const bool isNumber = loaded.id.empty() || loaded.id == fmt::format("scan={}", loaded.scan);
  return fmt::format("scan {}", loaded.scan) + (isNumber ? "" : fmt::format(" ({})", PrintableId(loaded)));
}

class TableWriter final : public PeakWriter {
 public:
  std::string Part(const LoadedSpectrum& loaded, const Peaks& peaks) const override {
    std::string text = NameOf(loaded);
    if (!std::isnan(loaded.rtSeconds)) text += fmt::format(", {:.3f} s", loaded.rtSeconds);
    text += fmt::format(", {} peak{}\n", peaks.size(), peaks.size() == 1 ? "" : "s");
    if (!peaks.empty())
      text += fmt::format("{:>5} {:>11} {:>12} {:>12} {:>9} {:>10} {:>9}\n", "peak", "m/z", "amplitude",
                          "area", "width", "resolution", "S/N");
    std::size_t number = 0;
    for (const ReportedPeak& peak : peaks)
      text += fmt::format("{:>5} {:>11.4f} {:>12.6g} {:>12.6g} {:>9.4f} {:>10.1f} {:>9.4g}\n", ++number,
                          WithoutNaNSign(peak.row.Mass), WithoutNaNSign(peak.row.Ampl),
                          WithoutNaNSign(peak.area), WithoutNaNSign(peak.Width()),
                          WithoutNaNSign(peak.Resolution()), WithoutNaNSign(peak.row.Signal2Noise));
    return text;
  }
  std::string Between() const override { return "\n"; }
};

// As RFC 4180 has it: in quotes if the separator or a quote is in it.
std::string Quoted(const std::string& text) {
  if (text.find_first_of(",\"") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? "\"\"" : std::string(1, c);
  return quoted + '"';
}

// A header line, then a row for each peak.
template <char separator>
class RowWriter final : public PeakWriter {
 public:
  std::string Head() const override {
    std::string header = fmt::format("scan{0}rt_s{0}peak", separator);
    for (const PeakColumn& column : PeakColumns()) header += separator + std::string(column.name);
    return header + separator + "id\n";
  }
  std::string Part(const LoadedSpectrum& loaded, const Peaks& peaks) const override {
    const std::string time = std::isnan(loaded.rtSeconds) ? "" : fmt::format("{}", loaded.rtSeconds);
    const std::string id = separator == ',' ? Quoted(PrintableId(loaded)) : PrintableId(loaded);
    std::string text;
    std::size_t number = 0;
    for (const ReportedPeak& peak : peaks) {
      text += fmt::format("{0}{3}{1}{3}{2}", loaded.scan, time, ++number, separator);
      for (const PeakColumn& column : PeakColumns())
        std::visit([&text](auto value) { text += fmt::format("{}{}", separator, value); },
                   column.value(peak));
      text += separator + id + '\n';
    }
    return text;
  }
};

// One array of spectra, a line each. What is no number in JSON is null.
class JsonWriter final : public PeakWriter {
 public:
  std::string Head() const override { return "[\n"; }
  std::string Part(const LoadedSpectrum& loaded, const Peaks& peaks) const override {
    nlohmann::ordered_json spectrum;
    spectrum["scan"] = loaded.scan;
    spectrum["rt_s"] = loaded.rtSeconds;
    spectrum["id"] = loaded.id;
    auto& rows = spectrum["peaks"] = nlohmann::ordered_json::array();
    std::size_t number = 0;
    for (const ReportedPeak& peak : peaks) {
      nlohmann::ordered_json row;
      row["peak"] = ++number;
      for (const PeakColumn& column : PeakColumns())
        std::visit([&](auto value) { row[column.name] = value; }, column.value(peak));
      rows.push_back(std::move(row));
    }
    return spectrum.dump();
  }
  std::string Between() const override { return ",\n"; }
  std::string Tail() const override { return "\n]\n"; }
};

// An element "Scan" for each spectrum, with the library's own peak elements.
class XmlWriter final : public PeakWriter {
 public:
  std::string Head() const override { return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Scans>\n"; }
  std::string Part(const LoadedSpectrum& loaded, const Peaks&) const override {
    TslCommon::XMLBuilder builder;
    builder.StartNode(L"Scan");
    builder.WAttribute(L"Number", TslCommon::ToText(loaded.scan));
    if (!std::isnan(loaded.rtSeconds)) builder.WAttribute(L"RetentionTime", Wide(loaded.rtSeconds));
    TslBL::AddCurvePeaks(*loaded.spectrum, builder);
    builder.EndNode();
    return TslCommon::ToUtf8(builder.QXML());
  }
  std::string Tail() const override { return "</Scans>\n"; }

 private:
  static std::wstring Wide(double value) { return TslCommon::FromUtf8(fmt::format("{}", value)); }
};

const WriterFormats<PeakWriter>& Formats() {
  static const auto formats = WriterFormats<PeakWriter>()
                                  .With<TableWriter>("table")
                                  .With<RowWriter<'\t'>>("tsv")
                                  .With<RowWriter<','>>("csv")
                                  .With<JsonWriter>("json")
                                  .With<XmlWriter>("xml")
                                  .With<MzMLWriter>("mzml");
  return formats;
}

}  // namespace

const std::vector<std::string>& PeakFormats() { return Formats().Names(); }

std::unique_ptr<PeakWriter> MakePeakWriter(const std::string& format) { return Formats().Make(format); }

}  // namespace TslTool
