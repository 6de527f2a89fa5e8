#include <tslbl/tune/Tune.h>

#include <tslbl/closed/common/Truncate.h>
#include <tslbl/records/Archive.h>
#include <tslbl/tune/OldTune.h>
#include <tslbl/tune/Q1FieldConvert.h>
#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace TslBL {
namespace {

void DescribeParts(Archive& ar, Tune& tune) {
  ar.Nested(tune.Info);
  ar.Nested(tune.Source);
  ar.Nested(tune.ControlData);
  ar.Nested(tune.SyringeData);
  // A document without a list means a tune without points.
  if (ar.Reading()) {
    tune.MZCalPts.clear();
    tune.Q1CalPts.clear();
  }
  ar.List(L"MZCalPts", tune.MZCalPts);
  ar.List(L"Q1CalPts", tune.Q1CalPts);
}

// The first point near enough to `point` to be the same calibrant.
const Q1CalPt* PartnerOf(const Q1CalPt& point, const std::vector<Q1CalPt>& points) {
  constexpr double kReach = 10.0;
  const auto found = std::ranges::find_if(
      points, [&](const Q1CalPt& other) { return std::abs(point.MZ - other.MZ) <= kReach; });
  return found != points.end() ? &*found : nullptr;
}

Q1CalPt WithCapExitOf(const Q1FieldConvert& capExit, Q1CalPt point) {
  point.ReplaceAnyCapExit(capExit.MZToFieldVal(point.MZ));
  return point;
}

std::vector<Q1CalPt> Merged(const std::vector<Q1CalPt>& mine, const std::vector<Q1CalPt>& others) {
  const Q1FieldConvert capExit(mine, TuneField::CapExit);
  std::vector<Q1CalPt> merged = mine;
  for (Q1CalPt& point : merged) {
    if (const Q1CalPt* partner = PartnerOf(point, others)) {
      point = WithCapExitOf(capExit, *partner);
    } else {
      point.KeepOnlyCapExit();
    }
  }
  for (const Q1CalPt& other : others)
    if (PartnerOf(other, merged) == nullptr) merged.push_back(WithCapExitOf(capExit, other));
  return merged;
}

}  // namespace

bool Tune::IsSimWithSpan() const {
  const double span = ControlData.MZHi;
  if (ControlData.Type == Control::Scan || !(span >= 0.2 && span <= 2.0)) return false;
  return Truncate<std::int32_t>(span * 10) % 2 == 0;
}

double Tune::QScanSpeed() const {
  const std::uint32_t sum = ControlData.StepSettleDelay + ControlData.PulseCountDelay;
  if (sum == 0) throw std::runtime_error("QScanSpeed: settle delay + pulse count equals zero.");
  return std::floor(ControlData.MZStepSize / sum * 1000000.0);
}

void Tune::Overwrite(const Tune& other) {
  std::vector<Q1CalPt> merged = Merged(Q1CalPts, other.Q1CalPts);
  std::vector<MZCalPt> mzCalPts = other.MZCalPts;
  ControlData.Overwrite(other.ControlData);
  MZCalPts = std::move(mzCalPts);
  Q1CalPts = std::move(merged);
}

void Describe(Archive& ar, Tune& tune) {
  ar.Version(3, "Unknown Tune version.");
  if (const auto element = ar.RequiredElement(L"Tune")) DescribeParts(ar, tune);
  if (!ar.ReadingBinary() || ar.StoredVersion() == 3) return;
  // A record that was cut short is not converted.
  ar.RequireGood("Unexpected end of stream.");
  if (ar.StoredVersion() == 1) {
    ConvertFromVersion1(tune);
  } else {
    ConvertFromVersion2(tune);
  }
}

}  // namespace TslBL
