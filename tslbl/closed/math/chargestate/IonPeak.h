#pragma once
// One row of a peak list, as deconvolution of charge states takes it.

namespace TslMath {

struct IonPeak {
  double mz;             // place
  double intensity;      // height or area, which of them is the caller's choice
  double area;           // in proportion to the ions counted; of 0 and less, the intensity stands for it
  double signalToNoise;  // of the resolved method alone
  double resolution;     // m/z by full width at half height; 0 and less if unknown
};

}  // namespace TslMath
