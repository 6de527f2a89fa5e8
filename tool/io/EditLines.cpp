#include <tool/io/EditLines.h>

#include <fmt/format.h>

#include <tool/frame/InputError.h>
#include <tool/frame/Printable.h>
#include <tool/io/ByteSource.h>
#include <tool/io/Fields.h>
#include <tool/io/LineReader.h>
#include <tool/io/TextNumber.h>
#include <charconv>
#include <stdexcept>
#include <utility>

namespace TslTool {
namespace {

std::uint32_t ScanOf(std::string_view text) {
  std::uint32_t scan = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), scan);
  if (error != std::errc() || end != text.data() + text.size())
    throw std::runtime_error(fmt::format("\"{}\" is no scan number", Printable(text)));
  return scan;
}

}  // namespace

void ReadEditLines(const std::string& file,
                   const std::function<void(std::uint32_t scan, const EditFields& fields)>& take) {
  ByteSource source(file);
  LineReader lines(source);
  EditFields fields;
  bool isFirst = true;
  for (std::string_view line; lines.Next(line);) {
    if (Trim(line).empty() || Trim(line).front() == '#') continue;
    SplitFields(line, ' ', fields);
    const bool isHead = std::exchange(isFirst, false) && fields.front() == "scan";
    if (isHead) continue;
    try {
      const std::uint32_t scan = ScanOf(fields.front());
      fields.erase(fields.begin());
      take(scan, fields);
    } catch (const std::runtime_error& e) {
      throw InputError(lines.File(), lines.Place(), e.what());
    }
  }
}

double EditMz(std::string_view text) {
  const double mz = ToNumber(text, '.');
  if (!(mz > 0.0)) throw std::runtime_error(fmt::format("the m/z {} is not above 0", mz));
  return mz;
}

}  // namespace TslTool
