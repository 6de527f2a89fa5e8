#include <tool/commands/peaks/MzMLWriter.h>

#include <fmt/format.h>

#include <tool/commands/peaks/MzMLSpectrum.h>
#include <tool/commands/peaks/PeaksInput.h>
#include <tool/frame/InputError.h>
#include <tool/io/MzMLHead.h>
#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace TslTool {
namespace {

// Ids of one number each; the last row stands for all others.
struct IdKind {
  std::string_view key;
  std::optional<CvTerm> term;
};
constexpr IdKind kIdKinds[] = {{"scan=", Cv::kScanNumberOnly},
                               {"index=", Cv::kIndexOnly},
                               {"spectrum=", Cv::kSpectrumOnly},
                               {"", std::nullopt}};

bool IsOfKind(std::string_view id, const IdKind& kind) {
  return kind.key.empty() ||
         (id.starts_with(kind.key) && ToNumber<std::uint64_t>(id.substr(kind.key.size())).has_value());
}

unsigned IdBit(std::string_view id) {
  const auto* kind = std::ranges::find_if(kIdKinds, [&](const IdKind& known) { return IsOfKind(id, known); });
  return 1U << (kind - std::begin(kIdKinds));
}

// Spectra of this level and of all above it are of one type.
constexpr int kMsnLevel = 2;

}  // namespace

// Multiplied counts per second are none.
const CvTerm& MzMLWriter::UnitOf(const LoadedSpectrum& loaded) const {
  return loaded.countAmpl > 0.0 && !origin_.scale ? Cv::kCountsPerSecond : Cv::kCounts;
}

std::string MzMLWriter::Part(const LoadedSpectrum& loaded, const std::vector<ReportedPeak>& peaks) const {
  types_ |= 1U << std::min(loaded.msLevel, kMsnLevel);
  ids_ |= IdBit(IdFor(loaded));
  try {
    return SpectrumElement(loaded, peaks, UnitOf(loaded), IndexedMzML::kSpectrumDepth);
  } catch (const std::runtime_error& error) {
    throw InputError(InputName(origin_.input), fmt::format("scan {}", loaded.scan), error.what());
  }
}

void MzMLWriter::Write(Output& output, const std::string& part, bool isFirst) {
  if (isFirst) document_.emplace(output.Folder());
  document_->Add(part);
}

MzMLContent MzMLWriter::Content() const {
  MzMLContent content{document_->Count(), {}};
  for (const int level : {1, kMsnLevel, 0})
    if ((types_ & 1U << level) != 0) content.types.push_back(SpectrumType(level));
  for (std::size_t i = 0; i < std::size(kIdKinds); ++i)
    if (ids_ == 1U << i) content.ids = kIdKinds[i].term;
  return content;
}

void MzMLWriter::Finish(Output& output) { document_->WriteTo(output, MzMLHeader(origin_, Content())); }

}  // namespace TslTool
