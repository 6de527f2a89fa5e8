#include <tslbl/spectrum/CreateSpectrum.h>

#include <tslbl/closed/common/MessageId.h>
#include <tslbl/closed/common/StringTable.h>
#include <tslbl/closed/common/TimeBase.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/tune/MZConvert.h>
#include <tslbl/tune/MassAxis.h>
#include <tslbl/tune/Tune.h>
#include <tslbl/tune/rules/DevTuneRules.h>
#include <memory>
#include <utility>

namespace TslBL {
namespace {

// Mass DAC units from point to point.
double StepMDAC(double mzStep) { return DevTuneRules::TranslateField(TuneField::MZStepSize, mzStep); }

std::wstring Title(const RawSpectrumInfo& info) {
  return MSToString(static_cast<std::int32_t>(info.TimeStamp),
                    TslLoadString(ModuleHandle(), kRetentionFormat).c_str());
}

Spectrum* Assemble(const RawSpectrum& raw, const std::vector<MZCalPt>& tunePts,
                   const std::vector<MZCalPt>& appliedPts, double startMZ, double mzStep,
                   std::vector<double> mzAxis) {
  auto spectrum = std::make_unique<Spectrum>();
  spectrum->name = Title(raw.info);
  spectrum->sourceListA.push_back(raw.info.Id);
  spectrum->sourceListB.push_back(raw.info.TuneId);
  spectrum->yAxis = raw.counts;
  spectrum->AddStatus(Curve::STATUS_Y);
  spectrum->tuneMZCalPts = tunePts;
  spectrum->appliedMZCalPts = appliedPts;
  spectrum->tuneId = raw.info.TuneId;
  spectrum->startMDAC = Truncate<std::int32_t>(MZConvert(tunePts).MZToDAC(startMZ));
  spectrum->stepMDAC = StepMDAC(mzStep);
  spectrum->timeStamp = raw.info.TimeStamp;
  spectrum->tic = raw.info.TIC;
  spectrum->xAxis = std::move(mzAxis);
  spectrum->AddStatus(Curve::STATUS_X);
  return spectrum.release();
}

}  // namespace

Spectrum* CreateSpectrum(const Tune& tune, const RawSpectrum& raw, const std::vector<MZCalPt>* calPts) {
  const std::vector<MZCalPt>& tunePts = tune.MZCalPts;
  const std::vector<MZCalPt>& appliedPts = calPts != nullptr ? *calPts : tunePts;
  const Control& control = tune.ControlData;
  const double start = MZConvert(tunePts).MZToDAC(control.MZLow);
  const double step = StepMDAC(control.MZStepSize);
  return Assemble(raw, tunePts, appliedPts, control.MZLow, control.MZStepSize,
                  MassAxis(appliedPts, start, step, raw.counts.size()));
}

Spectrum* CreateSpectrum(const RawSpectrum& raw, const std::vector<MZCalPt>& tunePts,
                         const std::vector<MZCalPt>& appliedPts, double startMZ, double mzStep,
                         const std::vector<double>& mzAxis) {
  return Assemble(raw, tunePts, appliedPts, startMZ, mzStep, mzAxis);
}

void MZAssign(Spectrum& spectrum) {
  spectrum.xAxis =
      MassAxis(spectrum.appliedMZCalPts, spectrum.startMDAC, spectrum.stepMDAC, spectrum.yAxis.size());
  spectrum.AddStatus(Curve::STATUS_X);
}

}  // namespace TslBL
