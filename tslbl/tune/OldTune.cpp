#include <tslbl/tune/OldTune.h>

#include <tslbl/tune/Q1FieldConvert.h>

namespace TslBL {
namespace {

// The old resolution setting of 0 to 16384 units.
double Percent(double units) { return (units - 8192.0) / 81.92; }

void RemoveFormerFields(Tune& tune) {
  for (Q1CalPt& point : tune.Q1CalPts) {
    point.Fields.erase(TuneField::Q1Enter);
    point.Fields.erase(TuneField::Q1CoarseResolution);
  }
}

void ConvertResolutions(Tune& tune) {
  for (Q1CalPt& point : tune.Q1CalPts) {
    const auto entry = point.Fields.find(TuneField::Q1Resolution);
    if (entry != point.Fields.end()) entry->second = Percent(entry->second);
  }
  Control& control = tune.ControlData;
  control.Q1Resolution.Single = Percent(control.Q1Resolution.Single);
  control.Q1CoarseResolution.Single = Percent(control.Q1CoarseResolution.Single);
}

void RebaseSingles(Control& control) {
  const double q0 = control.Q0Offset.Single;
  control.Q0Offset.Single = q0 - control.Skimmer.Single;
  control.Q0Exit1.Single -= q0;
  control.Q0Exit2.Single -= q0;
  control.Q1Offset.Single -= q0;
  control.Q1IonGuide.Single = control.Q1IonGuide.Single - control.Q1Offset.Single - q0;
}

// A field at any m/z: by the points that carry it, or one value if none does.
struct FieldOfMZ {
  Q1FieldConvert curve;
  double single;

  double At(double mz) const { return curve.Empty() ? single : curve.MZToFieldVal(mz); }
};

// Expects single values that are relative already and points that are still absolute. The
// values mixed so are what such tunes have always been converted to.
void RebasePoints(Tune& tune) {
  const Control& control = tune.ControlData;
  const auto field = [&](TuneField::Id id, double single) {
    return FieldOfMZ{Q1FieldConvert(tune.Q1CalPts, id), single};
  };
  const FieldOfMZ skimmer = field(TuneField::Skimmer, 0.0);
  const FieldOfMZ q0Offset = field(TuneField::Q0Offset, control.Q0Offset.Single);
  const FieldOfMZ q0Exit1 = field(TuneField::Q0Exit1, control.Q0Exit1.Single);
  const FieldOfMZ q0Exit2 = field(TuneField::Q0Exit2, control.Q0Exit2.Single);
  const FieldOfMZ q1Offset = field(TuneField::Q1Offset, control.Q1Offset.Single);
  const FieldOfMZ q1IonGuide = field(TuneField::Q1IonGuide, control.Q1IonGuide.Single);
  for (Q1CalPt& point : tune.Q1CalPts) {
    const double mz = point.MZ;
    const double q0 = q0Offset.At(mz);
    point.Fields[TuneField::Q0Offset] = q0 - skimmer.At(mz);
    point.Fields[TuneField::Q0Exit1] = q0Exit1.At(mz) - q0;
    point.Fields[TuneField::Q0Exit2] = q0Exit2.At(mz) - q0;
    point.Fields[TuneField::Q1Offset] = q1Offset.At(mz) - q0;
    point.Fields[TuneField::Q1IonGuide] = q1IonGuide.At(mz) - q1Offset.At(mz) - q0;
  }
}

}  // namespace

void ConvertFromVersion1(Tune& tune) {
  RemoveFormerFields(tune);
  RebaseSingles(tune.ControlData);
  RebasePoints(tune);
  ConvertResolutions(tune);
}

void ConvertFromVersion2(Tune& tune) {
  RemoveFormerFields(tune);
  ConvertResolutions(tune);
}

}  // namespace TslBL
