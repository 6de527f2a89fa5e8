#include <tool/commands/calibrate/MassScale.h>

#include <tool/frame/InputError.h>
#include <tool/io/InputPath.h>
#include <tool/io/OpenScans.h>
#include <algorithm>
#include <cmath>

namespace TslTool {
namespace {

// The table in which the axis has a point for each of its own.
std::vector<TslBL::MZCalPt> PointByPoint(const std::vector<double>& mz) {
  std::vector<TslBL::MZCalPt> points;
  points.reserve(mz.size());
  for (std::size_t i = 0; i < mz.size(); ++i) points.emplace_back(L"", mz[i], static_cast<double>(i));
  return points;
}

}  // namespace

MassScale::MassScale(const std::string& input, Averaged& averaged)
    : isForeign_(!IsDatabase(input)), mz_(averaged.loaded.spectrum->xAxis) {
  TslBL::Spectrum& spectrum = *averaged.loaded.spectrum;
  if (isForeign_) {
    spectrum.tuneMZCalPts = spectrum.appliedMZCalPts = PointByPoint(mz_);
    spectrum.startMDAC = start_;
    spectrum.stepMDAC = step_;
  } else {
    if (!averaged.sum)
      throw InputError(InputName(input), "",
                       "these scans are of several tunes or lengths; --scan chooses those of one");
    start_ = spectrum.startMDAC;
    step_ = spectrum.stepMDAC;
  }
}

double MassScale::LibraryDac(double index) const { return start_ + index * step_; }

double MassScale::FileDac(double index) const { return isForeign_ ? MzBefore(index) : LibraryDac(index); }

double MassScale::MzBefore(double index) const {
  const auto last = static_cast<double>(mz_.size() - 2);
  const double left = std::clamp(std::floor(index), 0.0, last);
  const auto i = static_cast<std::size_t>(left);
  return mz_[i] + (index - left) * (mz_[i + 1] - mz_[i]);
}

double MassScale::IndexOf(double mz) const {
  const auto right = std::ranges::lower_bound(mz_, mz) - mz_.begin();
  const auto i = static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(right - 1, 0, std::ssize(mz_) - 2));
  return static_cast<double>(i) + (mz - mz_[i]) / (mz_[i + 1] - mz_[i]);
}

}  // namespace TslTool
