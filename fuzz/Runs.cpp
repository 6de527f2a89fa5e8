// Runs: the bytes of the database, and the packed counts of a scan. The first byte picks.

#include <fuzz/Input.h>
#include <tool/frame/InputError.h>
#include <tool/io/Counts.h>
#include <tool/io/OpenScans.h>
#include <tool/io/RunMaker.h>
#include <cmath>
#include <cstring>
#include <vector>

using namespace fuzz;

namespace {

void CheckDatabase(std::string_view bytes) {
  const std::string file = FileWith("in.run", bytes);
  if (!TslTool::IsDatabase(file)) return;
  try {
    for (const TslBL::RawSpectrum& raw : tests::ReadRun(file))
      Require(std::ranges::all_of(raw.counts, [](double c) { return std::isfinite(c); }),
              "counts are finite");
  } catch (const TslTool::InputError& error) {
    Require(error.File() == file && !error.Reason().empty(), "a refusal names the file and a reason");
  }
}

void CheckUnpack(std::string_view bytes) {
  Input input(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
  const char* encoding = input.Below(2) == 0 ? "u32-zlib" : "f64-zlib";
  const std::uint32_t points = input.Take<std::uint32_t>();
  std::vector<double> counts = {1.0, 2.0};
  if (Accepts([&] { TslTool::UnpackCounts(encoding, input.Rest(), points, counts); }))
    Require(counts.size() == points, "there are as many counts as points");
}

void CheckPack(std::string_view bytes) {
  std::vector<double> counts(bytes.size() / sizeof(double));
  if (!counts.empty()) std::memcpy(counts.data(), bytes.data(), counts.size() * sizeof(double));
  const TslTool::PackedCounts packed = TslTool::PackCounts(counts);
  std::vector<double> again;
  TslTool::UnpackCounts(packed.encoding, packed.bytes, counts.size(), again);
  Require(
      again.size() == counts.size() &&
          (counts.empty() || std::memcmp(again.data(), counts.data(), counts.size() * sizeof(double)) == 0),
      "packed counts come back to the bit");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr void (*kChecks[])(std::string_view) = {CheckDatabase, CheckUnpack, CheckPack};
  Input input(data, size);
  kChecks[input.Below(std::size(kChecks))](input.Rest());
  return 0;
}
