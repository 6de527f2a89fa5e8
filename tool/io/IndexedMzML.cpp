#include <tool/io/IndexedMzML.h>

#include <fmt/format.h>

#include <tool/frame/Interrupt.h>
#include <tool/frame/Numbers.h>
#include <tool/io/MzMLHead.h>
#include <tool/io/SummedOutput.h>

namespace TslTool {
namespace {

constexpr std::string_view kBegin = "<spectrum ";
constexpr std::string_view kId = "id=\"";

std::string IndexLine(std::string_view line, std::uint64_t offset) {
  const std::size_t tab = line.find('\t');
  const auto inside = ToNumber<std::uint64_t>(line.substr(0, tab)).value_or(0);
  const std::string_view id = line.substr(tab + 1, line.size() - tab - 2);
  return fmt::format("      <offset idRef=\"{}\">{}</offset>\n", id, offset + inside);
}

}  // namespace

void IndexedMzML::Add(std::string_view spectrum) {
  const std::size_t begin = spectrum.find(kBegin);
  const std::size_t id = begin + kBegin.size() + kId.size();
  index_.Write(
      fmt::format("{}\t{}\n", spectra_.Size() + begin, spectrum.substr(id, spectrum.find('"', id) - id)));
  const std::size_t attributes = begin + kBegin.size();
  spectra_.Write(fmt::format("{}index=\"{}\" {}", spectrum.substr(0, attributes), count_++,
                             spectrum.substr(attributes)));
}

void IndexedMzML::WriteTo(Output& output, const std::string& head) {
  SummedOutput summed(output);
  summed.Write(head);
  const std::uint64_t spectra = summed.Size();
  spectra_.ForEachLine([&](std::string_view line) {
    ThrowIfInterrupted();
    summed.Write(line);
  });
  summed.Write("      </spectrumList>\n    </run>\n  </mzML>\n");
  const std::uint64_t list = summed.Size() + 2;
  summed.Write("  <indexList count=\"1\">\n    <index name=\"spectrum\">\n");
  index_.ForEachLine([&](std::string_view line) { summed.Write(IndexLine(line, spectra)); });
  summed.Write("    </index>\n  </indexList>\n");
  summed.Write(fmt::format("  <indexListOffset>{}</indexListOffset>\n  <fileChecksum>", list));
  output.Write(summed.Sum() + "</fileChecksum>\n</indexedmzML>\n");
}

}  // namespace TslTool
