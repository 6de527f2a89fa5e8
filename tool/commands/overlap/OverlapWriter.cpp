#include <tool/commands/overlap/OverlapWriter.h>

#include <fmt/format.h>

#include <tool/commands/overlap/OverlapRows.h>
#include <tool/commands/peaks/WriterFormats.h>
#include <cmath>
#include <nlohmann/json.hpp>

namespace TslTool {
namespace {

struct Column {
  const char* name;
  double OverlapRow::*value;
  int width;  // in the table for reading
  const char* form;
};

// In the order that scripts rely on, behind scan, rt_s, group and peak.
constexpr Column kColumns[] = {
    {"mz", &OverlapRow::mz, 11, "{:.4f}"},
    {"mz_se", &OverlapRow::mzError, 9, "{:.2g}"},
    {"amplitude", &OverlapRow::amplitude, 12, "{:.6g}"},
    {"area", &OverlapRow::area, 12, "{:.6g}"},
    {"area_se", &OverlapRow::areaError, 10, "{:.3g}"},
    {"width", &OverlapRow::width, 9, "{:.4f}"},
    {"chi2", &OverlapRow::chiSquare, 9, "{:.3g}"},
};

// What is not known is left empty.
std::string TextOf(double value, const char* form) {
  return std::isnan(value) ? "" : fmt::format(fmt::runtime(form), value);
}

std::string GroupText(const OverlapRow& row) { return row.group == 0 ? "" : fmt::format("{}", row.group); }

class TableWriter final : public SpectrumWriter {
 public:
  std::string PartOf(const LoadedSpectrum& loaded) const override {
    const std::vector<OverlapRow> rows = OverlapRows(loaded);
    std::string text = fmt::format("scan {}", loaded.scan);
    if (!std::isnan(loaded.rtSeconds)) text += fmt::format(", {:.3f} s", loaded.rtSeconds);
    text += fmt::format(", {} peaks, {} groups of {} fitted\n", loaded.spectrum->QNumPeaks(),
                        loaded.spectrum->QNumGroups(), loaded.spectrum->QNumOverlappedPeaks());
    if (rows.empty()) return text;
    text += fmt::format("{:>5} {:>5}  ", "group", "peak");
    for (const Column& column : kColumns) text += fmt::format(" {:>{}}", column.name, column.width);
    text += '\n';
    for (const OverlapRow& row : rows) {
      text += fmt::format("{:>5} {:>5} {}", GroupText(row), row.peak, MarkOf(row));
      for (const Column& column : kColumns)
        text += fmt::format(" {:>{}}", TextOf(row.*column.value, column.form), column.width);
      text += '\n';
    }
    return text;
  }
  std::string Between() const override { return "\n"; }

 private:
  // A data peak that fitted ones stand for, and these.
  static char MarkOf(const OverlapRow& row) { return row.isFitted ? '+' : row.group != 0 ? '-' : ' '; }
};

template <char separator>
class RowWriter final : public SpectrumWriter {
 public:
  std::string Head() const override {
    std::string head = fmt::format("scan{0}rt_s{0}group{0}peak", separator);
    for (const Column& column : kColumns) head += separator + std::string(column.name);
    return head + '\n';
  }
  std::string PartOf(const LoadedSpectrum& loaded) const override {
    const std::string time = TextOf(loaded.rtSeconds, "{}");
    std::string text;
    for (const OverlapRow& row : OverlapRows(loaded)) {
      text += fmt::format("{0}{4}{1}{4}{2}{4}{3}", loaded.scan, time, GroupText(row), row.peak, separator);
      for (const Column& column : kColumns) text += separator + TextOf(row.*column.value, "{}");
      text += '\n';
    }
    return text;
  }
};

// One array of spectra, a line each. What is not known is null.
class JsonWriter final : public SpectrumWriter {
 public:
  std::string Head() const override { return "[\n"; }
  std::string PartOf(const LoadedSpectrum& loaded) const override {
    nlohmann::ordered_json spectrum;
    spectrum["scan"] = loaded.scan;
    spectrum["rt_s"] = loaded.rtSeconds;
    auto& rows = spectrum["peaks"] = nlohmann::ordered_json::array();
    for (const OverlapRow& row : OverlapRows(loaded)) {
      nlohmann::ordered_json entry;
      entry["group"] = row.group == 0 ? nlohmann::ordered_json() : nlohmann::ordered_json(row.group);
      entry["peak"] = row.peak;
      entry["fitted"] = row.isFitted;
      for (const Column& column : kColumns) entry[column.name] = row.*column.value;
      rows.push_back(std::move(entry));
    }
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

const std::vector<std::string>& OverlapFormats() { return Formats().Names(); }

std::unique_ptr<SpectrumWriter> MakeOverlapWriter(const std::string& format) {
  return Formats().Make(format);
}

}  // namespace TslTool
