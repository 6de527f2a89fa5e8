#include <tool/commands/overlap/Deconvolution.h>

#include <fmt/format.h>

#include <tool/commands/overlap/EditGroups.h>
#include <tool/commands/overlap/FittedPoints.h>
#include <tool/commands/overlap/GroupFits.h>
#include <tool/commands/overlap/TouchingPeaks.h>
#include <tool/frame/Failure.h>
#include <tool/frame/InputError.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/overlap/OPD.h>
#include <algorithm>
#include <exception>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace TslTool {
namespace {

constexpr double kPoor = 3.0;                                                 // reduced chi-square
constexpr std::string_view kBelowBaseline = "Amplitude less than baseline.";  // the library's words

// False if the library cannot group the peaks, as one lies below the baseline of its neighbour.
bool Deconvolve(TslBL::Spectrum& spectrum) {
  TslBL::Changed changed;
  std::wstring error;
  try {
    if (!TslBL::DoOPD(spectrum, changed, error)) throw std::runtime_error(TslCommon::ToUtf8(error));
  } catch (const std::logic_error& failure) {
    if (failure.what() != kBelowBaseline) throw;
    return false;
  }
  return true;
}

}  // namespace

void Deconvolution::DeconvolveAndEdit(LoadedSpectrum& loaded, const std::vector<GroupEdit>& edits) {
  const WithFittedPoints points(loaded);
  if (!Deconvolve(*loaded.spectrum)) notGrouped_.Add(loaded.scan);
  FitTouchingPeaks(*loaded.spectrum);
  for (const GroupEdit& edit : edits) EditGroup(*loaded.spectrum, edit);
}

Deconvolution::Deconvolution(std::string input, const OverlapOptions& options, EditsByScan edits,
                             std::vector<GroupEdit> editsOfOne, bool isResumed)
    : input_(std::move(input)),
      options_(options),
      edits_(input_, std::move(edits), std::move(editsOfOne), "--refit-add and --refit-remove", isResumed) {}

void Deconvolution::Run(LoadedSpectrum& loaded) {
  const std::vector<GroupEdit>& edits = edits_.Of(loaded.scan);
  try {
    loaded.spectrum->opdParams = options_.Params(loaded.countAmpl > 0.0);
    DeconvolveAndEdit(loaded, edits);
    FitWithKnownNoise(loaded);
  } catch (...) {
    // An engine's failure is no std::exception.
    throw InputError(input_, fmt::format("scan {}", loaded.scan), FailureText(std::current_exception()));
  }
  Count(loaded);
}

void Deconvolution::Count(const LoadedSpectrum& loaded) {
  groups_ += loaded.spectrum->QNumGroups();
  peaks_ += loaded.spectrum->QNumOverlappedPeaks();
  const auto poor =
      std::ranges::find_if(loaded.spectrum->overlapPeaks, [](const auto& peak) { return peak.Fit4 > kPoor; });
  if (poor != loaded.spectrum->overlapPeaks.end())
    poor_.Add(loaded.scan,
              fmt::format("m/z {:.1f}", loaded.spectrum->FractionalIndexToXAxisVal(poor->Position)));
  const std::lock_guard lock(mutex_);
  widths_.Add(*loaded.spectrum);
}

std::string Deconvolution::Note() const {
  return fmt::format("{} group{} of {} fitted peak{}", groups_.load(), groups_ == 1 ? "" : "s", peaks_.load(),
                     peaks_ == 1 ? "" : "s");
}

std::vector<std::string> Deconvolution::Warnings() const {
  std::vector<std::string> warnings;
  const std::string poor =
      poor_.Text(fmt::format("with a group whose fit leaves more than noise, chi2 above {}", kPoor),
                 "; --scan N --plot FILE shows it");
  if (!poor.empty()) warnings.push_back(poor);
  const std::string notGrouped = notGrouped_.Text(
      "where a peak lies below the baseline of its neighbour, in which only data peaks that "
      "touch were fitted together",
      "; a --baseline that bends less may help");
  if (!notGrouped.empty()) warnings.push_back(notGrouped);
  if (const std::string widths = widths_.Warning(); !widths.empty()) warnings.push_back(widths);
  for (std::string& unused : edits_.Unused()) warnings.push_back(std::move(unused));
  return warnings;
}

}  // namespace TslTool
