#include <tool/simulate/LineShape.h>

#include <algorithm>
#include <cmath>

namespace TslTool {
namespace {

constexpr double kIsotopeDistance = 1.0;  // of two isotopes, times their charge, m/z
constexpr double kStep = 0.001;           // m/z
// Steps at once in the search for maxima, of which lines cannot have two so near to each other.
constexpr int kStride = 20;

// The sum of lines at even steps.
class Profile {
 public:
  Profile(const std::vector<Line>& lines, const LineShape& shape)
      : lines_(lines), shape_(shape), from_(lines.front().mz - shape.Width()) {}

  double MzOf(int step) const { return from_ + step * kStep; }
  int Steps() const { return static_cast<int>((lines_.back().mz + shape_.Width() - from_) / kStep); }
  double At(double mz) const {
    double sum = 0.0;
    for (const Line& line : lines_) sum += line.height * shape_.At(mz - line.mz);
    return sum;
  }

  // The highest of the steps in between.
  Line Highest(int after, int before) const {
    Line top{0.0, 0.0};
    for (int i = after + 1; i < before; ++i) {
      const double height = At(MzOf(i));
      if (height > top.height) top = {MzOf(i), height};
    }
    return top;
  }

  double TopCentroid(const Line& top) const {
    const double level = 0.75 * top.height;
    double sum = top.height;
    double moment = 0.0;
    for (const double direction : {-kStep, kStep}) {
      double height = top.height;
      for (int i = 1; height >= level; ++i) {
        height = At(top.mz + i * direction);
        if (height < level) break;
        sum += height;
        moment += height * i * direction;
      }
    }
    return top.mz + moment / sum;
  }

 private:
  const std::vector<Line>& lines_;
  const LineShape& shape_;
  double from_;
};

std::vector<Line> Maxima(const Profile& profile) {
  std::vector<Line> maxima;
  double before = 0.0;
  double here = profile.At(profile.MzOf(0));
  for (int i = 0; i <= profile.Steps(); i += kStride) {
    const double next = profile.At(profile.MzOf(i + kStride));
    if (here > before && here >= next) maxima.push_back(profile.Highest(i - kStride, i + kStride));
    before = here;
    here = next;
  }
  return maxima;
}

double Nearest(const std::vector<Line>& lines, double mz) {
  return std::ranges::min(lines, {}, [=](const Line& line) { return std::abs(line.mz - mz); }).mz;
}

}  // namespace

LineShape::LineShape(double width) : width_(width), sigma_(width / 2.3548200450309493) {}

double LineShape::At(double distance) const {
  return std::exp(-0.5 * distance * distance / (sigma_ * sigma_));
}

std::vector<Line> VisibleLines(const std::vector<Line>& lines, std::uint32_t charge, const LineShape& shape) {
  const Profile profile(lines, shape);
  std::vector<Line> maxima = Maxima(profile);
  if (charge * shape.Width() < kIsotopeDistance) {
    for (Line& line : maxima) line.mz = Nearest(lines, line.mz);
    return maxima;
  }
  const Line top = std::ranges::max(maxima, {}, &Line::height);
  return {{profile.TopCentroid(top), top.height}};
}

}  // namespace TslTool
