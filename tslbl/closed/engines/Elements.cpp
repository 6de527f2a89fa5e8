#include <tslbl/closed/engines/Elements.h>

#include <algorithm>

namespace TslMath {

namespace {

constexpr Isotope kH[] = {{1, 1.00782503223, 0.999885}, {2, 2.01410177812, 0.000115}};
constexpr Isotope kLi[] = {{6, 6.0151228874, 0.0759}, {7, 7.0160034366, 0.9241}};
constexpr Isotope kC[] = {{12, 12.0, 0.9893}, {13, 13.00335483507, 0.0107}};
constexpr Isotope kN[] = {{14, 14.00307400443, 0.99636}, {15, 15.00010889888, 0.00364}};
constexpr Isotope kO[] = {
    {16, 15.99491461957, 0.99757}, {17, 16.99913175650, 0.00038}, {18, 17.99915961286, 0.00205}};
constexpr Isotope kF[] = {{19, 18.99840316273, 1.0}};
constexpr Isotope kNa[] = {{23, 22.9897692820, 1.0}};
constexpr Isotope kSi[] = {
    {28, 27.97692653465, 0.92223}, {29, 28.97649466490, 0.04685}, {30, 29.973770136, 0.03092}};
constexpr Isotope kP[] = {{31, 30.97376199842, 1.0}};
constexpr Isotope kS[] = {{32, 31.9720711744, 0.9499},
                          {33, 32.9714589098, 0.0075},
                          {34, 33.967867004, 0.0425},
                          {36, 35.96708071, 0.0001}};
constexpr Isotope kCl[] = {{35, 34.968852682, 0.7576}, {37, 36.965902602, 0.2424}};
constexpr Isotope kK[] = {
    {39, 38.9637064864, 0.932581}, {40, 39.963998166, 0.000117}, {41, 40.9618252579, 0.067302}};
constexpr Isotope kFe[] = {{54, 53.93960899, 0.05845},
                           {56, 55.93493633, 0.91754},
                           {57, 56.93539284, 0.02119},
                           {58, 57.93327443, 0.00282}};
constexpr Isotope kBr[] = {{79, 78.9183376, 0.5069}, {81, 80.9162897, 0.4931}};
constexpr Isotope kI[] = {{127, 126.9044719, 1.0}};
constexpr Isotope kCs[] = {{133, 132.9054519610, 1.0}};

constexpr Element kElements[] = {{"H", kH, 0},   {"Li", kLi, 1}, {"C", kC, 0},   {"N", kN, 0},
                                 {"O", kO, 0},   {"F", kF, 0},   {"Na", kNa, 0}, {"Si", kSi, 0},
                                 {"P", kP, 0},   {"S", kS, 0},   {"Cl", kCl, 0}, {"K", kK, 0},
                                 {"Fe", kFe, 1}, {"Br", kBr, 0}, {"I", kI, 0},   {"Cs", kCs, 0}};

}  // namespace

double Element::AverageMass() const {
  double sum = 0;
  for (const Isotope& isotope : isotopes) sum += isotope.mass * isotope.abundance;
  return sum;
}

std::span<const Element> Elements() { return kElements; }

std::int32_t FindElement(std::string_view symbol) {
  const auto found = std::find_if(std::begin(kElements), std::end(kElements),
                                  [&](const Element& element) { return element.symbol == symbol; });
  return found == std::end(kElements) ? -1 : static_cast<std::int32_t>(found - std::begin(kElements));
}

}  // namespace TslMath
