#include <tslbl/closed/math/baseline/SegmentLoader.h>

#include <tslbl/closed/math/Lanes.h>

#include <algorithm>
#include <limits>

namespace TslMath {
namespace {

constexpr std::size_t kLeastSamples = 10;

void FillLastGroup(double* array, std::size_t length) {
  std::fill(array + length, array + WholeGroups(length), std::numeric_limits<double>::quiet_NaN());
}

TSLBL_WIDE void Subtract(const double* __restrict y, const double* __restrict shape, std::size_t n,
                         double* __restrict out) {
  for (std::size_t i = 0; i < n; ++i) out[i] = y[i] - shape[i];
}

// Up to this window each mean is summed anew: neighbouring means are summed side by side.
constexpr std::size_t kMaxDirectWindow = 16;

// out[i] = mean of y[i .. i+window-1] for i < count.
TSLBL_WIDE void NarrowMeans(const double* y, std::size_t count, std::size_t window, double* out) {
  const double share = 1 / static_cast<double>(window);
  for (std::size_t i = 0; i < WholeGroups(count); i += kLaneCount) {
    Lanes sum, next;
    Load(y + i, sum);
    for (std::size_t j = 1; j < window; ++j) {
      Load(y + i + j, next);
      sum += next;
    }
    Store(sum * share, out + i);
  }
}

// The same from sums over 1, 2, 4, ... points: few passes whatever the window, and no rounding error that a
// tall peak would leave behind.
TSLBL_WIDE void WideMeans(const double* y, std::size_t count, std::size_t window, double* sums, double* out) {
  const std::size_t all = count + window - 1;
  for (std::size_t i = 0; i < all; ++i) sums[i] = y[i];
  for (std::size_t i = 0; i < count; ++i) out[i] = y[i];
  std::size_t done = 1;
  for (std::size_t power = 1; 2 * power <= window; power *= 2) {
    for (std::size_t i = 0; i + 2 * power <= all; ++i) sums[i] += sums[i + power];
    if ((window & (2 * power)) == 0) continue;
    for (std::size_t i = 0; i < count; ++i) out[i] += sums[i + done];
    done += 2 * power;
  }
  const double share = 1 / static_cast<double>(window);
  for (std::size_t i = 0; i < count; ++i) out[i] *= share;
}

// The first `half` points from an end of the curve; `toInside` is the step away from it.
void EndMeans(const double* y, std::size_t half, std::ptrdiff_t toInside, double* out) {
  double sum = 0;
  const double* next = y;
  for (std::size_t i = 0; i < half; ++i) {
    sum += *next;
    next += toInside;
    *out = sum / static_cast<double>(2 * i + 1);
    out += toInside;
    sum += *next;
    next += toInside;
  }
}

}  // namespace

SegmentLoader::SegmentLoader(const double* y, const double* shape, std::size_t n, std::size_t longest,
                             std::size_t points)
    : y_(y), shape_(shape), n_(n), half_(points / 2) {
  // The last group of means reads on to the end of its own window.
  const std::size_t room = WholeGroups(longest) + 2 * half_;
  values_.resize(room);
  sums_.resize(room);
  means_.resize(WholeGroups(longest));
  samples_.resize(WholeGroups(longest));
}

SegmentData SegmentLoader::Load(std::size_t begin, std::size_t end) {
  const std::size_t length = end - begin;
  LoadValues(begin, end);
  LoadMeans(begin, end);
  FillLastGroup(values_.data() + half_, length);
  const std::size_t stride = std::clamp<std::size_t>(length / kLeastSamples, 1, 2 * half_ + 1);
  const std::size_t samples = LoadSamples(length, stride);
  return {values_.data() + half_, means_.data(), length, samples_.data(), samples, stride};
}

void SegmentLoader::LoadValues(std::size_t begin, std::size_t end) {
  const std::size_t first = begin - std::min(begin, half_);
  const std::size_t last = std::min(n_, end + half_);
  double* to = values_.data() + (first + half_ - begin);
  if (shape_ == nullptr) {
    std::copy(y_ + first, y_ + last, to);
  } else {
    Subtract(y_ + first, shape_ + first, last - first, to);
  }
}

void SegmentLoader::LoadMeans(std::size_t begin, std::size_t end) {
  const std::size_t length = end - begin;
  const std::size_t window = 2 * half_ + 1;
  if (window <= kMaxDirectWindow) {
    NarrowMeans(values_.data(), length, window, means_.data());
  } else {
    WideMeans(values_.data(), length, window, sums_.data(), means_.data());
  }
  const double* first = values_.data() + half_;
  if (begin == 0) EndMeans(first, half_, 1, means_.data());
  if (end == n_) EndMeans(first + length - 1, half_, -1, means_.data() + length - 1);
  FillLastGroup(means_.data(), length);
}

std::size_t SegmentLoader::LoadSamples(std::size_t length, std::size_t stride) {
  const std::size_t samples = length / stride;
  for (std::size_t j = 0; j < samples; ++j) samples_[j] = means_[j * stride + stride / 2];
  FillLastGroup(samples_.data(), samples);
  return samples;
}

}  // namespace TslMath
