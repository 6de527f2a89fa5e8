#pragma once
// Random curves for the finding of features: small ones with few distinct amplitudes, so
// that ties, plateaus and curves wholly above the baseline abound. The same seed gives the
// same curves on every machine.

#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace tests {

struct RandomCurve {
  std::vector<double> y;
  std::vector<double> baseline;
  double maxValley = 25.0;

  std::string Text() const {
    std::string text = "MaxValley " + std::to_string(maxValley) + ", amplitude/baseline:";
    for (std::size_t i = 0; i < y.size(); ++i)
      text += " " + std::to_string(y[i]) + "/" + std::to_string(baseline[i]);
    return text;
  }
};

class RandomCurves {
 public:
  explicit RandomCurves(std::uint32_t seed) : random_(seed) {}

  // A whole number from 0 to below.
  int Below(int below) { return static_cast<int>(random_() % static_cast<std::uint32_t>(below)); }

  // One of the kinds, with up to `most` points.
  RandomCurve Next(int most) {
    RandomCurve c;
    c.maxValley = std::vector<double>{0.0, 10.0, 25.0, 50.0, 90.0, 100.0}[Pick(6)];
    const int n = 1 + Below(most);
    switch (Below(5)) {
      case 0:
        return Levels(c, n);
      case 1:
        return Walk(c, n);
      case 2:
        return Hump(c, n);
      case 3:
        return Ripples(c, n);
      default:
        return Pulses(c, n);
    }
  }

  // One with numbers missing or beyond all bounds.
  RandomCurve NextBroken(int most) {
    RandomCurve c = Next(most);
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const double odd[] = {std::numeric_limits<double>::quiet_NaN(), kInfinity, -kInfinity};
    for (int k = 1 + Below(3); k > 0; --k) {
      c.y[Pick(c.y.size())] = odd[Pick(3)];
      if (Below(4) == 0) c.baseline[Pick(c.y.size())] = odd[Pick(3)];
    }
    return c;
  }

 private:
  std::size_t Pick(std::size_t below) { return static_cast<std::size_t>(Below(static_cast<int>(below))); }

  void Add(RandomCurve& c, double y, double baseline) {
    c.y.push_back(y);
    c.baseline.push_back(baseline);
  }

  // Few levels at random, over a flat baseline: below all, on the lowest, or inside.
  RandomCurve Levels(RandomCurve c, int n) {
    const int levels = 2 + Below(8);
    const int baseline = Below(levels) - 1;
    for (int i = 0; i < n; ++i) Add(c, Below(levels), baseline);
    return c;
  }

  // A wandering curve over a wandering baseline.
  RandomCurve Walk(RandomCurve c, int n) {
    double y = 0.0;
    double baseline = -4.0;
    for (int i = 0; i < n; ++i) Add(c, y += Below(7) - 3, baseline += Below(3) - 1);
    return c;
  }

  // Noise on a broad hump that stands on the baseline.
  RandomCurve Hump(RandomCurve c, int n) {
    for (int i = 0; i < n; ++i) {
      const double t = (i - n / 2.0) / (n / 5.0 + 1.0);
      Add(c, std::floor(30.0 * std::exp(-0.5 * t * t)) + Below(6), 2.0);
    }
    return c;
  }

  // Ripples four points wide that grow: features that reach far back over their shorter
  // neighbours.
  RandomCurve Ripples(RandomCurve c, int n) {
    double height = 10.0;
    for (int i = 0; i < n; ++i) {
      constexpr double kShape[] = {1.0, 0.97, 0.94, 0.98};
      if (i % 4 == 0) height *= Below(5) == 0 ? 0.7 : 1.0 + 0.08 * Below(7);
      Add(c, height * (kShape[i % 4] - 0.01 * Below(12)), i % 60 == 0 ? 1e9 : -1.0);
    }
    return c;
  }

  // Separate pulses with flat tails.
  RandomCurve Pulses(RandomCurve c, int n) {
    while (static_cast<int>(c.y.size()) < n) {
      for (int k = Below(6); k > 0; --k) Add(c, 0.0, 0.0);
      for (int k = Below(8); k > 0; --k) Add(c, Below(5), 0.0);
    }
    c.y.resize(static_cast<std::size_t>(n));
    c.baseline.resize(static_cast<std::size_t>(n));
    return c;
  }

  std::mt19937 random_;
};

}  // namespace tests
