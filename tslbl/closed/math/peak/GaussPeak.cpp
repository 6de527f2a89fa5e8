#include <tslbl/closed/math/peak/GaussPeak.h>

#include <cmath>

namespace TslMath {
namespace {

constexpr double kFwhmPerA3 = 2.3548200450309493;  // 2 sqrt(2 ln 2)
constexpr double kSqrtTwoPi = 2.5066282746310002;
constexpr double kPeakHalfBaseInA3 = 3.0;

}  // namespace

GaussPeak::GaussPeak(double height, double centre, double a3, double offset)
    : height_(height), centre_(centre), width_(std::abs(a3)), offset_(offset) {}

double GaussPeak::FWHM_to_A3(double fwhm) { return fwhm / kFwhmPerA3; }
double GaussPeak::A3_to_FWHM(double a3) { return a3 * kFwhmPerA3; }

double GaussPeak::QArea() const { return height_ * width_ * kSqrtTwoPi; }
double GaussPeak::QHalfHeightLeftX() const { return centre_ - width_ * (kFwhmPerA3 / 2); }
double GaussPeak::QHalfHeightRightX() const { return centre_ + width_ * (kFwhmPerA3 / 2); }
double GaussPeak::QPeakStart() const { return centre_ - kPeakHalfBaseInA3 * width_; }
double GaussPeak::QPeakEnd() const { return centre_ + kPeakHalfBaseInA3 * width_; }
double GaussPeak::Qd() const { return offset_; }

}  // namespace TslMath
