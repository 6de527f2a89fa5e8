#pragma once
// Chromatograms for the tests.

#include <tslbl/chromatogram/ICObj.h>
#include <cstdint>
#include <vector>

namespace tests {

// A point each second from 10 s, of the spectra 100, 101, 102 ..., with a baseline of 0 and a noise of 1.
inline TslBL::ICObj ChromatogramOf(const std::vector<double>& y) {
  TslBL::ICObj obj;
  obj.yAxis = y;
  for (std::size_t i = 0; i < y.size(); ++i) {
    obj.xAxis.push_back(10.0 + static_cast<double>(i));
    obj.sourceListA.push_back(100 + static_cast<std::uint32_t>(i));
  }
  obj.baseline.assign(y.size(), 0.0);
  obj.noise.assign(y.size(), 1.0);
  for (const auto status : {TslBL::Curve::STATUS_Y, TslBL::Curve::STATUS_X, TslBL::Curve::STATUS_BASELINE,
                            TslBL::Curve::STATUS_NOISE})
    obj.AddStatus(status);
  return obj;
}

}  // namespace tests
