#include <tool/commands/chrom/ChromWriter.h>

#include <fmt/format.h>

#include <tool/frame/Numbers.h>
#include <tool/frame/Printable.h>
#include <cmath>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace TslTool {
namespace {

struct Column {
  const char* name;
  double ChromPeak::*value;
  int width;  // in the table for reading, with `digits` significant digits or decimals
  const char* form;
};

// In the order that scripts rely on.
constexpr Column kColumns[] = {
    {"rt_s", &ChromPeak::rtSeconds, 11, "{:.3f}"},
    {"height", &ChromPeak::height, 12, "{:.6g}"},
    {"area", &ChromPeak::area, 12, "{:.6g}"},
    {"area_se", &ChromPeak::areaError, 10, "{:.3g}"},
    {"start_s", &ChromPeak::startSeconds, 11, "{:.3f}"},
    {"end_s", &ChromPeak::endSeconds, 11, "{:.3f}"},
    {"width_s", &ChromPeak::widthSeconds, 9, "{:.3f}"},
    {"sn", &ChromPeak::signalToNoise, 10, "{:.4g}"},
};

std::string Plain(const std::string& text) { return Printable(text, text.size()); }

std::string TableOf(const EvaluatedCurve& curve) {
  std::string text = Plain(curve.measured.name);
  if (!curve.measured.title.empty()) text += ": " + Plain(curve.measured.title);
  text += fmt::format(", {} peak{}\n", curve.peaks.size(), curve.peaks.size() == 1 ? "" : "s");
  if (curve.peaks.empty()) return text;
  text += " peak";
  for (const Column& column : kColumns) text += fmt::format(" {:>{}}", column.name, column.width);
  text += '\n';
  std::size_t number = 0;
  for (const ChromPeak& peak : curve.peaks) {
    text += fmt::format("{:>5}", ++number);
    for (const Column& column : kColumns) {
      const std::string value = fmt::format(fmt::runtime(column.form), WithoutNaNSign(peak.*column.value));
      text += fmt::format(" {:>{}}", value, column.width);
    }
    text += '\n';
  }
  return text;
}

std::string Table(const std::vector<EvaluatedCurve>& curves) {
  std::string text;
  for (const EvaluatedCurve& curve : curves) text += (text.empty() ? "" : "\n") + TableOf(curve);
  return text;
}

// As RFC 4180 has it.
std::string Quoted(const std::string& text) {
  if (text.find_first_of(",\"") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) quoted += c == '"' ? "\"\"" : std::string(1, c);
  return quoted + '"';
}

template <char separator>
std::string Rows(const std::vector<EvaluatedCurve>& curves) {
  std::string text = fmt::format("curve{}peak", separator);
  for (const Column& column : kColumns) text += separator + std::string(column.name);
  text += '\n';
  for (const EvaluatedCurve& curve : curves) {
    const std::string name = Plain(curve.measured.name);
    std::size_t number = 0;
    for (const ChromPeak& peak : curve.peaks) {
      text += fmt::format("{}{}{}", separator == ',' ? Quoted(name) : name, separator, ++number);
      for (const Column& column : kColumns)
        text += fmt::format("{}{}", separator, WithoutNaNSign(peak.*column.value));
      text += '\n';
    }
  }
  return text;
}

// An array of curves, a line each. What is no number in JSON is null.
std::string Json(const std::vector<EvaluatedCurve>& curves) {
  std::string text = "[\n";
  for (const EvaluatedCurve& curve : curves) {
    nlohmann::ordered_json entry;
    entry["curve"] = curve.measured.name;
    entry["title"] = curve.measured.title;
    entry["points"] = curve.measured.values.size();
    auto& rows = entry["peaks"] = nlohmann::ordered_json::array();
    for (const ChromPeak& peak : curve.peaks) {
      nlohmann::ordered_json row;
      row["peak"] = rows.size() + 1;
      for (const Column& column : kColumns) row[column.name] = peak.*column.value;
      rows.push_back(std::move(row));
    }
    text += (text.size() > 2 ? ",\n" : "") + entry.dump();
  }
  return text + "\n]\n";
}

struct Format {
  const char* name;
  std::string (*text)(const std::vector<EvaluatedCurve>& curves);
};
constexpr Format kFormats[] = {{"table", Table}, {"tsv", Rows<'\t'>}, {"csv", Rows<','>}, {"json", Json}};

}  // namespace

const std::vector<std::string>& ChromFormats() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> all;
    for (const Format& format : kFormats) all.emplace_back(format.name);
    return all;
  }();
  return names;
}

std::string PeaksText(const std::string& format, const std::vector<EvaluatedCurve>& curves) {
  for (const Format& known : kFormats)
    if (format == known.name) return known.text(curves);
  throw std::logic_error("unknown format " + format);
}

}  // namespace TslTool
