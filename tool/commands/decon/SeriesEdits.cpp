#include <tool/commands/decon/SeriesEdits.h>

#include <fmt/format.h>

#include <tool/frame/Printable.h>
#include <tool/frame/UsageError.h>
#include <tool/io/EditLines.h>
#include <tool/io/Fields.h>
#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace TslTool {
namespace {

struct NamedKind {
  std::string_view name;
  SeriesEdit::Kind kind;
};
constexpr NamedKind kKinds[] = {{"add-series", SeriesEdit::AddSeries},
                                {"remove-series", SeriesEdit::RemoveSeries},
                                {"add-peaks", SeriesEdit::AddPeaks},
                                {"remove-peaks", SeriesEdit::RemovePeaks}};

SeriesEdit::Kind KindOf(std::string_view text) {
  for (const auto& [name, kind] : kKinds)
    if (text == name) return kind;
  throw std::runtime_error(fmt::format(
      "\"{}\" is none of add-series, remove-series, add-peaks and remove-peaks", Printable(text)));
}

// R or U, and behind it capital letters.
void RequireLabel(std::string_view text) {
  const bool isLabel = text.size() > 1 && (text.front() == 'R' || text.front() == 'U') &&
                       std::ranges::all_of(text, [](char c) { return c >= 'A' && c <= 'Z'; });
  if (!isLabel)
    throw std::runtime_error(
        fmt::format("\"{}\" is no label of a series, such as RA or UB", Printable(text)));
}

void RequireType(std::string_view text) {
  if (text != "resolved" && text != "unresolved")
    throw std::runtime_error(fmt::format("\"{}\" is neither resolved nor unresolved", Printable(text)));
}

SeriesEdit MakeEdit(SeriesEdit::Kind kind, std::string_view series,
                    const std::vector<std::string_view>& mzs) {
  kind == SeriesEdit::AddSeries ? RequireType(series) : RequireLabel(series);
  if (kind == SeriesEdit::RemoveSeries && !mzs.empty())
    throw std::runtime_error("a series is removed by its label alone");
  if (kind != SeriesEdit::RemoveSeries && mzs.empty()) throw std::runtime_error("no m/z of a peak is given");
  SeriesEdit edit{kind, std::string(series), {}};
  for (const std::string_view mz : mzs) edit.mz.push_back(EditMz(mz));
  return edit;
}

std::vector<std::string_view> CommaParts(std::string_view text) {
  std::vector<std::string_view> parts;
  while (!text.empty()) {
    const std::size_t comma = std::min(text.find(','), text.size());
    parts.push_back(text.substr(0, comma));
    text.remove_prefix(std::min(comma + 1, text.size()));
  }
  return parts;
}

}  // namespace

SeriesEditsByScan ReadSeriesEdits(const std::string& file) {
  SeriesEditsByScan edits;
  ReadEditLines(file, [&](std::uint32_t scan, const EditFields& fields) {
    if (fields.size() < 2) throw std::runtime_error("has no edit and series behind the scan");
    edits[scan].push_back(MakeEdit(KindOf(fields[0]), fields[1], {fields.begin() + 2, fields.end()}));
  });
  return edits;
}

SeriesEdit ParseSeriesEdit(const std::string& option, SeriesEdit::Kind kind, const std::string& text) {
  const std::string_view all = text;
  const std::size_t colon = std::min(all.find(':'), all.size());
  try {
    return MakeEdit(kind, all.substr(0, colon), CommaParts(all.substr(std::min(colon + 1, all.size()))));
  } catch (const std::runtime_error& e) {
    throw UsageError(option + ": " + e.what());
  }
}

}  // namespace TslTool
