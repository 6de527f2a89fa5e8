#include <tool/commands/overlap/GroupEdits.h>

#include <fmt/format.h>

#include <tool/frame/Printable.h>
#include <tool/io/EditLines.h>
#include <stdexcept>
#include <string_view>

namespace TslTool {
namespace {

GroupEdit::Kind KindOf(std::string_view text) {
  if (text == "add") return GroupEdit::Add;
  if (text == "remove") return GroupEdit::Remove;
  throw std::runtime_error(fmt::format("\"{}\" is neither \"add\" nor \"remove\"", Printable(text)));
}

}  // namespace

EditsByScan ReadEdits(const std::string& file) {
  EditsByScan edits;
  ReadEditLines(file, [&](std::uint32_t scan, const EditFields& fields) {
    if (fields.size() != 2)
      throw std::runtime_error(
          fmt::format("has {} fields, not the three SCAN add|remove MZ", fields.size() + 1));
    edits[scan].push_back({KindOf(fields[0]), EditMz(fields[1])});
  });
  return edits;
}

}  // namespace TslTool
