#include <tool/PeakWriter.h>

#include <fmt/format.h>
#include <tool/PeakColumns.h>

#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/curve/Curve.h>
#include <cmath>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace TslTool {
namespace {

using Peaks = std::vector<TslBL::MZPeak>;

class TableWriter final : public PeakWriter {
 public:
  explicit TableWriter(Output& output) : output_(output) {}

  void Write(const LoadedSpectrum& loaded, const Peaks& peaks) override {
    std::string text = fmt::format("{}scan {}", first_ ? "" : "\n", loaded.scan);
    first_ = false;
    if (!std::isnan(loaded.rtSeconds)) text += fmt::format(", {:.3f} s", loaded.rtSeconds);
    text += fmt::format(", {} peak{}\n", peaks.size(), peaks.size() == 1 ? "" : "s");
    if (!peaks.empty())
      text += fmt::format("{:>5} {:>11} {:>12} {:>12} {:>9} {:>10} {:>9}\n", "peak", "m/z", "amplitude",
                          "area", "width", "resolution", "S/N");
    std::size_t number = 0;
    for (const TslBL::MZPeak& p : peaks)
      text += fmt::format("{:>5} {:>11.4f} {:>12.6g} {:>12.6g} {:>9.4f} {:>10.1f} {:>9.4g}\n", ++number,
                          p.Mass, p.Ampl, p.Area, p.Width, p.Resolution, p.Signal2Noise);
    output_.Write(text);
  }

 private:
  Output& output_;
  bool first_ = true;
};

class TsvWriter final : public PeakWriter {
 public:
  explicit TsvWriter(Output& output) : output_(output) {}

  void Begin() override {
    std::string header = "scan\trt_s\tpeak";
    for (const PeakColumn& column : PeakColumns()) header += fmt::format("\t{}", column.name);
    output_.Write(header + '\n');
  }
  void Write(const LoadedSpectrum& loaded, const Peaks& peaks) override {
    const std::string time = std::isnan(loaded.rtSeconds) ? "" : fmt::format("{}", loaded.rtSeconds);
    std::string text;
    std::size_t number = 0;
    for (const TslBL::MZPeak& peak : peaks) {
      text += fmt::format("{}\t{}\t{}", loaded.scan, time, ++number);
      for (const PeakColumn& column : PeakColumns())
        std::visit([&text](auto value) { text += fmt::format("\t{}", value); }, column.value(peak));
      text += '\n';
    }
    output_.Write(text);
  }

 private:
  Output& output_;
};

// One array of spectra, a line each. What is no number in JSON is null.
class JsonWriter final : public PeakWriter {
 public:
  explicit JsonWriter(Output& output) : output_(output) {}

  void Begin() override { output_.Write("["); }
  void Write(const LoadedSpectrum& loaded, const Peaks& peaks) override {
    nlohmann::ordered_json spectrum;
    spectrum["scan"] = loaded.scan;
    spectrum["rt_s"] = loaded.rtSeconds;
    auto& rows = spectrum["peaks"] = nlohmann::ordered_json::array();
    std::size_t number = 0;
    for (const TslBL::MZPeak& peak : peaks) {
      nlohmann::ordered_json row;
      row["peak"] = ++number;
      for (const PeakColumn& column : PeakColumns())
        std::visit([&](auto value) { row[column.name] = value; }, column.value(peak));
      rows.push_back(std::move(row));
    }
    output_.Write((first_ ? "\n" : ",\n") + spectrum.dump());
    first_ = false;
  }
  void End() override { output_.Write("\n]\n"); }

 private:
  Output& output_;
  bool first_ = true;
};

// An element "Scan" for each spectrum, with the library's own peak elements.
class XmlWriter final : public PeakWriter {
 public:
  explicit XmlWriter(Output& output) : output_(output) {}

  void Begin() override { output_.Write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Scans>\n"); }
  void Write(const LoadedSpectrum& loaded, const Peaks&) override {
    TslCommon::XMLBuilder builder;
    builder.StartNode(L"Scan");
    builder.WAttribute(L"Number", TslCommon::ToText(loaded.scan));
    if (!std::isnan(loaded.rtSeconds)) builder.WAttribute(L"RetentionTime", Wide(loaded.rtSeconds));
    TslBL::AddCurvePeaks(*loaded.spectrum, builder);
    builder.EndNode();
    output_.Write(TslCommon::ToUtf8(builder.QXML()));
  }
  void End() override { output_.Write("</Scans>\n"); }

 private:
  static std::wstring Wide(double value) { return TslCommon::FromUtf8(fmt::format("{}", value)); }

  Output& output_;
};

template <class Writer>
std::unique_ptr<PeakWriter> Make(Output& output) {
  return std::make_unique<Writer>(output);
}

struct Format {
  const char* name;
  std::unique_ptr<PeakWriter> (*make)(Output& output);
};
constexpr Format kFormats[] = {{"table", Make<TableWriter>},
                               {"tsv", Make<TsvWriter>},
                               {"json", Make<JsonWriter>},
                               {"xml", Make<XmlWriter>}};

}  // namespace

const std::vector<std::string>& PeakFormats() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> all;
    for (const Format& format : kFormats) all.emplace_back(format.name);
    return all;
  }();
  return names;
}

std::unique_ptr<PeakWriter> MakePeakWriter(const std::string& format, Output& output) {
  for (const Format& known : kFormats)
    if (format == known.name) return known.make(output);
  throw std::logic_error("unknown format " + format);
}

}  // namespace TslTool
