#include <gtest/gtest.h>

#include <tool/io/OtherAxis.h>

namespace tests {
namespace {

using TslTool::IsOtherAxis;

TEST(OtherAxis, IsKnownByAWordInAnyLanguage) {
  for (const char* name : {"time",
                           "Drift time (ms)",
                           "R.Time (min)",
                           "timepoint",
                           "Retention",
                           "Zeit",
                           "Retentionszeit",
                           "Temps",
                           "temps de r\u00e9tention",
                           "Tiempo",
                           "Tempo di ritenzione",
                           "Czas",
                           "\u0412\u0440\u0435\u043c\u044f",
                           "\u65f6\u95f4",
                           "RT",
                           "rt_s",
                           "t",
                           "TOF",
                           "Scan",
                           "scan number",
                           "Index",
                           "Wavelength",
                           "Wellenl\u00e4nge",
                           "Wellenl\xe4nge",
                           "\u03bb",
                           "Wavenumber",
                           "Frequency",
                           "Temperature",
                           "Voltage",
                           "2theta",
                           "2\u03b8",
                           "Volume",
                           "Ion mobility"})
    EXPECT_TRUE(IsOtherAxis(name)) << name;
}

TEST(OtherAxis, IsKnownByAUnit) {
  for (const char* name : {"min",
                           "s",
                           "sec",
                           "ms",
                           "us",
                           "\u00b5s",
                           "\u03bcs",
                           "\xb5s",
                           "nm",
                           "cm-1",
                           "1/cm",
                           "cm\u207b\u00b9",
                           "mL",
                           "\u00b0C",
                           "\xb0"
                           "C",
                           "K",
                           "V",
                           "X(Minutes)",
                           "x [min]",
                           "TOF (us)",
                           "t/min",
                           "T / K",
                           "U [kV]",
                           "shift (cm^-1)",
                           "[nm]"})
    EXPECT_TRUE(IsOtherAxis(name)) << name;
}

TEST(OtherAxis, IsNotWhatMayBeMz) {
  for (const char* name : {"", "m/z", "mass", "Mass (Da)", "x", "X(Thomsons)", "m/z [u]", "DAC", "channel",
                           "a", "Masse (amu)", "mzmin", "ions", "()", "("})
    EXPECT_FALSE(IsOtherAxis(name)) << name;
}

}  // namespace
}  // namespace tests
