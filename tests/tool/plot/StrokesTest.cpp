#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <set>
#include <string>

#include <tool/plot/Strokes.h>

using TslTool::kStrokes;
using TslTool::StrokeOf;

namespace {

using Colour = std::array<double, 3>;
using Matrix = std::array<Colour, 3>;

// Red, green and blue as light, not as a screen codes them.
Colour LightOf(std::string_view hex) {
  Colour light{};
  for (std::size_t i = 0; i < 3; ++i) {
    const double coded = std::stoi(std::string(hex.substr(1 + 2 * i, 2)), nullptr, 16) / 255.0;
    light[i] = coded <= 0.04045 ? coded / 12.92 : std::pow((coded + 0.055) / 1.055, 2.4);
  }
  return light;
}

Colour Times(const Matrix& matrix, const Colour& colour) {
  Colour product{};
  for (std::size_t row = 0; row < 3; ++row)
    for (std::size_t i = 0; i < 3; ++i) product[row] += matrix[row][i] * colour[i];
  return product;
}

// CIE L*a*b* under daylight D65.
Colour LabOf(const Colour& light) {
  constexpr Matrix kXyz = {{{0.4339, 0.3762, 0.1899}, {0.2126, 0.7152, 0.0722}, {0.0177, 0.1095, 0.8727}}};
  Colour f = Times(kXyz, light);
  for (double& part : f) part = part > 0.008856 ? std::cbrt(part) : 7.787 * part + 16.0 / 116.0;
  return {116 * f[1] - 16, 500 * (f[0] - f[1]), 200 * (f[1] - f[2])};
}

double Distance(const Colour& a, const Colour& b) {
  return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

double ContrastToWhite(const Colour& light) {
  return 1.05 / (0.2126 * light[0] + 0.7152 * light[1] + 0.0722 * light[2] + 0.05);
}

// Machado, Oliveira and Fernandes, IEEE Trans. Visual. Comput. Graphics 15 (2009) 1291, full severity.
constexpr Matrix kEyes[] = {
    {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
    {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}},
    {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}},
    {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}},
};

TEST(Strokes, HaveColoursThatAreApartForAllEyes) {
  constexpr double kClearlyApart = 25;  // 2 is just seen
  for (const Matrix& eye : kEyes)
    for (std::size_t a = 0; a < kStrokes; ++a)
      for (std::size_t b = 0; b < a; ++b)
        EXPECT_GT(Distance(LabOf(Times(eye, LightOf(StrokeOf(a).colour))),
                           LabOf(Times(eye, LightOf(StrokeOf(b).colour)))),
                  kClearlyApart)
            << StrokeOf(a).colour << " and " << StrokeOf(b).colour;
}

TEST(Strokes, StandOutFromWhite) {
  for (std::size_t i = 0; i < kStrokes; ++i)
    EXPECT_GE(ContrastToWhite(LightOf(StrokeOf(i).colour)), 3.0) << StrokeOf(i).colour;
}

TEST(Strokes, NoTwoHaveTheSameDashes) {
  std::set<std::string_view> dashes;
  for (std::size_t i = 0; i < kStrokes; ++i) dashes.insert(StrokeOf(i).dashes);
  EXPECT_EQ(dashes.size(), kStrokes);
}

TEST(Strokes, BeginAgainAfterTheLast) {
  EXPECT_EQ(StrokeOf(kStrokes + 1).colour, StrokeOf(1).colour);
  EXPECT_EQ(StrokeOf(0, 3.5).width, 3.5);
}

}  // namespace
