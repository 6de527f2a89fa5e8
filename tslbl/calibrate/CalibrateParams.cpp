#include <tslbl/calibrate/CalibrateParams.h>

#include <tslbl/records/Archive.h>

namespace TslBL {
namespace {

void DescribeCalibrant(Archive& ar, Calibrant& calibrant) {
  ar(L"Name", calibrant.Name);
  ar(L"MZ", calibrant.MZ);
}

}  // namespace

void Describe(Archive& ar, CalibrateParams& params) {
  ar.Version(2, "Unknown CalibrateParams version.");
  ar.List(L"calibrants", params.calibrants, DescribeCalibrant);
  if (ar.Since(2)) {
    ar(L"Name", params.Name);
  } else {
    double unused = 0.0;
    ar(L"unused", unused);
  }
  ar(L"tolerance", params.tolerance);
  ar(L"mode", params.mode);
}

}  // namespace TslBL
