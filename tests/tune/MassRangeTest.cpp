#include <tslbl/tune/MassRange.h>

#include <gtest/gtest.h>

namespace {

using namespace TslBL;
using Range = std::pair<double, double>;

TEST(MassRange, OfAScanIsLowToHigh) { EXPECT_EQ(QMassRange(Control::Scan, 5, 3000), Range(5, 3000)); }
TEST(MassRange, OfASimIsItsCentre) { EXPECT_EQ(QMassRange(Control::Sim, 500.1, 0), Range(500.1, 500.1)); }
TEST(MassRange, OfASimWithSpanLiesAroundItsCentre) {
  EXPECT_EQ(QMassRange(Control::Sim, 500, 0.5), Range(499.75, 500.25));
}
TEST(MassRange, OfAnotherTypeIsThatOfASim) {
  EXPECT_EQ(QMassRange(static_cast<Control::Types>(2), 500, 2), Range(499, 501));
}
TEST(MassRange, OfATuneIsThatOfItsControl) {
  Tune tune;
  tune.ControlData.Type = Control::Sim;
  tune.ControlData.MZLow = 100;
  tune.ControlData.MZHi = 1;
  EXPECT_EQ(QMassRange(tune), Range(99.5, 100.5));
}

}  // namespace
