#include <tool/commands/overlap/GroupEdits.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Printable.h>
#include <tool/io/ByteSource.h>
#include <tool/io/Fields.h>
#include <tool/io/LineReader.h>
#include <tool/io/TextNumber.h>
#include <charconv>
#include <stdexcept>
#include <string_view>

namespace TslTool {
namespace {

std::uint32_t ScanOf(std::string_view text) {
  std::uint32_t scan = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), scan);
  if (error != std::errc() || end != text.data() + text.size())
    throw std::runtime_error(fmt::format("\"{}\" is no scan number", Printable(text)));
  return scan;
}

GroupEdit::Kind KindOf(std::string_view text) {
  if (text == "add") return GroupEdit::Add;
  if (text == "remove") return GroupEdit::Remove;
  throw std::runtime_error(fmt::format("\"{}\" is neither \"add\" nor \"remove\"", Printable(text)));
}

void ReadEdit(const std::vector<std::string_view>& fields, EditsByScan& edits) {
  if (fields.size() != 3)
    throw std::runtime_error(fmt::format("has {} fields, not the three SCAN add|remove MZ", fields.size()));
  const double mz = ToNumber(fields[2], '.');
  if (!(mz > 0.0)) throw std::runtime_error(fmt::format("the m/z {} is not above 0", mz));
  edits[ScanOf(fields[0])].push_back({KindOf(fields[1]), mz});
}

bool IsHead(const std::vector<std::string_view>& fields) { return fields.front() == "scan"; }

}  // namespace

EditsByScan ReadEdits(const std::string& file) {
  ByteSource source(file);
  LineReader lines(source);
  EditsByScan edits;
  std::vector<std::string_view> fields;
  for (std::string_view line; lines.Next(line);) {
    if (Trim(line).empty() || Trim(line).front() == '#') continue;
    SplitFields(line, ' ', fields);
    if (edits.empty() && IsHead(fields)) continue;
    try {
      ReadEdit(fields, edits);
    } catch (const std::runtime_error& e) {
      throw InputError(lines.File(), lines.Place(), e.what());
    }
  }
  return edits;
}

}  // namespace TslTool
