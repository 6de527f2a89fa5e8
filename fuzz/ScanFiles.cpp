// Foreign spectra: mzML and text with columns, plain and gzip. The first byte says under which name
// the rest stands in a file, which columns are asked for, and whether it is packed before, in which
// case it must read as the plain bytes do: the same scans or the same refusal.

#include <zlib.h>

#include <fuzz/Input.h>
#include <tool/frame/InputError.h>
#include <tool/io/OpenScans.h>
#include <cmath>
#include <functional>
#include <vector>

using namespace fuzz;
using TslTool::Scan;

namespace {

struct Outcome {
  std::vector<Scan> scans;
  std::vector<std::string> warnings;
  std::vector<std::string> notes;
  std::uint64_t chromatograms = 0;
  std::string refusal;  // without the file's name
};

void CheckScan(const Scan& scan) {
  const auto isFinite = [](double value) { return std::isfinite(value); };
  Require(scan.mz.size() == scan.amplitude.size(), "both arrays have one length");
  Require(std::ranges::all_of(scan.mz, isFinite) && std::ranges::all_of(scan.amplitude, isFinite),
          "both arrays are finite");
  const auto falls = scan.representation == Scan::Centroid
                         ? std::ranges::adjacent_find(scan.mz, std::greater())
                         : std::ranges::adjacent_find(scan.mz, std::greater_equal());
  Require(falls == scan.mz.end(), "m/z ascends");
}

Outcome ReadAll(const std::string& file, const TslTool::ScanFilter& filter) {
  Outcome outcome;
  try {
    const auto source = TslTool::OpenScans(file);
    if (source->Format() != "mzML") source->SetFilter(filter);
    for (Scan scan; source->Next(scan);) {
      CheckScan(scan);
      outcome.scans.push_back(scan);
    }
    outcome.warnings = source->Warnings();
    outcome.notes = source->Notes();
    outcome.chromatograms = source->PassedOver().count;
    Require(outcome.notes.size() <= 1, "one note a file");
  } catch (const TslTool::InputError& error) {
    Require(error.File() == file && !error.Reason().empty(), "a refusal names the file and a reason");
    outcome.refusal = error.Place() + ": " + error.Reason();
  }
  return outcome;
}

bool SameScan(const Scan& a, const Scan& b) {
  const bool sameTime = a.rtSeconds == b.rtSeconds || (std::isnan(a.rtSeconds) && std::isnan(b.rtSeconds));
  return a.number == b.number && a.id == b.id && sameTime && a.msLevel == b.msLevel &&
         a.polarity == b.polarity && a.representation == b.representation && a.mz == b.mz &&
         a.amplitude == b.amplitude;
}

std::string Packed(std::string_view bytes) {
  const std::string file = FileWith("packed", "");
  gzFile out = gzopen(file.c_str(), "wb1");
  gzwrite(out, bytes.data(), static_cast<unsigned>(bytes.size()));
  gzclose(out);
  std::ifstream in(file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr const char* kNames[] = {"in.mzML", "in.txt", "in.dta"};
  Input input(data, size);
  const std::uint8_t first = input.Take<std::uint8_t>();
  const std::string name = kNames[first / 2 % std::size(kNames)];
  constexpr const char* kColumns[] = {"", "1,2", "3,2", "mass,b"};
  TslTool::ScanFilter filter;
  filter.columns = TslTool::ParseColumnChoice("--columns", kColumns[first / 6 % std::size(kColumns)]);
  const Outcome plain = ReadAll(FileWith(name, input.Rest()), filter);
  if (first % 2 == 0) return 0;
  const Outcome packed = ReadAll(FileWith(name, Packed(input.Rest())), filter);
  // What is packed twice is unpacked once.
  if (input.Rest().starts_with("\x1f\x8b")) return 0;
  Require(packed.refusal == plain.refusal, "packed bytes are refused as the plain ones are");
  Require(packed.warnings == plain.warnings, "packed bytes give the warnings of the plain ones");
  Require(packed.chromatograms == plain.chromatograms,
          "packed bytes hold the chromatograms of the plain ones");
  Require(packed.notes == plain.notes, "packed bytes are told of as the plain ones are");
  Require(std::ranges::equal(packed.scans, plain.scans, SameScan),
          "packed bytes give the scans of the plain ones");
  return 0;
}
