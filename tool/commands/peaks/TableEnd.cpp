#include <tool/commands/peaks/TableEnd.h>

#include <tool/frame/InputError.h>
#include <charconv>
#include <fstream>

namespace TslTool {
namespace {

// The scan of a row.
std::optional<std::uint32_t> ScanOf(const std::string& row) {
  std::uint32_t scan = 0;
  const auto [end, error] = std::from_chars(row.data(), row.data() + row.size(), scan);
  const bool number = error == std::errc() && end != row.data() + row.size() && *end == '\t';
  return number ? std::optional(scan) : std::nullopt;
}

}  // namespace

std::optional<TableEnd> FindTableEnd(const std::string& file, const std::string& head) {
  std::ifstream in(file, std::ios::binary);
  std::string line(head.size(), '\0');
  in.read(line.data(), static_cast<std::streamsize>(line.size()));
  line.resize(static_cast<std::size_t>(in.gcount()));
  if (!head.starts_with(line)) throw InputError(file, "line 1", "is not the head of a peak table");

  std::optional<TableEnd> whole;
  TableEnd open;
  std::uint32_t first = 0;
  std::uint64_t at = line.size();
  // A line without its end was cut.
  for (std::uint64_t number = 2; std::getline(in, line) && !in.eof(); ++number) {
    const std::optional<std::uint32_t> scan = ScanOf(line);
    if (!scan) throw InputError(file, "line " + std::to_string(number), "is no row of a peak table");
    if (*scan != open.scan || open.rows.empty()) {
      if (number == 2) first = *scan;
      if (!open.rows.empty()) whole = std::move(open);
      open = {*scan, first, at, ""};
    }
    open.rows += line + '\n';
    at += line.size() + 1;
  }
  return whole;
}

}  // namespace TslTool
