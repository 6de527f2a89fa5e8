#include <tool/mzml/MzMLDocument.h>

#include <tool/io/MzMLHead.h>
#include <algorithm>
#include <iterator>
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

constexpr CvTerm kRepresentations[] = {Cv::kCentroidSpectrum, Cv::kProfileSpectrum};

unsigned RepresentationBit(const CvTerm& term) {
  const auto* kind = std::ranges::find(kRepresentations, term.accession, &CvTerm::accession);
  return 1U << (kind - std::begin(kRepresentations));
}

// Spectra of this level and of all above it are of one type.
constexpr int kMsnLevel = 2;

}  // namespace

std::string MzMLDocument::Element(const LoadedSpectrum& loaded, const SpectrumArrays& arrays) {
  types_ |= 1U << std::min(loaded.msLevel, kMsnLevel);
  representations_ |= RepresentationBit(arrays.representation);
  ids_ |= IdBit(IdFor(loaded));
  return SpectrumElement(loaded, arrays, IndexedMzML::kSpectrumDepth);
}

void MzMLDocument::Add(const Output& output, const std::string& element) {
  if (!spectra_) spectra_.emplace(output.Folder());
  spectra_->Add(element);
}

MzMLContent MzMLDocument::Content() const {
  MzMLContent content{spectra_->Count(), {}};
  for (const int level : {1, kMsnLevel, 0})
    if ((types_ & 1U << level) != 0) content.types.push_back(SpectrumType(level));
  for (const CvTerm& term : kRepresentations)
    if ((representations_ & RepresentationBit(term)) != 0) content.types.push_back(term);
  for (std::size_t i = 0; i < std::size(kIdKinds); ++i)
    if (ids_ == 1U << i) content.ids = kIdKinds[i].term;
  return content;
}

void MzMLDocument::WriteTo(Output& output, const MzMLOrigin& origin) {
  if (!spectra_) spectra_.emplace(output.Folder());
  spectra_->WriteTo(output, MzMLHeader(origin, Content()));
}

}  // namespace TslTool
