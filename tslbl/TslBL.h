#pragma once
// The whole interface of the library. The headers below, and those that they include, are
// installed and stay; all others lie beside their sources for the library itself.
//
// A program takes the headers that it needs. They stand here in the order in which data
// goes: streams and documents, numerics, small records, curves and their evaluation, the
// tune of the instrument and its methods, spectra and their peaks, their calibration,
// overlapping peaks, chromatograms, sums and differences of spectra, charge states, documents
// of results.

#include <tslbl/Version.h>

#include <tslbl/closed/common/BinaryStream.h>
#include <tslbl/closed/common/ComErrorHandler.h>
#include <tslbl/closed/common/ComponentRegistry.h>
#include <tslbl/closed/common/DiverterValve.h>
#include <tslbl/closed/common/ModulePath.h>
#include <tslbl/closed/common/Polarity.h>
#include <tslbl/closed/common/Probes.h>
#include <tslbl/closed/common/StringTable.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/closed/common/TimeBase.h>
#include <tslbl/closed/common/Truncate.h>
#include <tslbl/closed/common/XMLBuilder.h>
#include <tslbl/closed/common/XMLParser.h>
#include <tslbl/closed/common/XMLResultException.h>

#include <tslbl/closed/math/Median.h>
#include <tslbl/closed/math/Normalize.h>
#include <tslbl/closed/math/SmallestStep.h>
#include <tslbl/closed/math/baseline/Baseline.h>
#include <tslbl/closed/math/baseline/BaselineAndNoise.h>
#include <tslbl/closed/math/baseline/MovingExtrema.h>
#include <tslbl/closed/math/baseline/Noise.h>
#include <tslbl/closed/math/chargestate/MassPlot.h>
#include <tslbl/closed/math/chargestate/UnresolvedSeries.h>
#include <tslbl/closed/math/overlap/FitPeaks.h>
#include <tslbl/closed/math/peak/Features.h>
#include <tslbl/closed/math/peak/GaussPeak.h>
#include <tslbl/closed/math/peak/PairCorrelation.h>
#include <tslbl/closed/math/peak/SplinePeak.h>
#include <tslbl/closed/math/peak/TypicalOfKinds.h>
#include <tslbl/closed/math/peak/TypicalWidth.h>
#include <tslbl/closed/math/smooth/Smoothing.h>

#include <tslbl/closed/engines/IsotopePattern.h>
#include <tslbl/closed/engines/MassPlotEngine.h>
#include <tslbl/closed/engines/OverlapPeakEngine.h>
#include <tslbl/closed/engines/SeriesEngine.h>
#include <tslbl/closed/engines/resolved/ResolvedSeries.h>

#include <tslbl/records/CSSeries.h>
#include <tslbl/records/MZPeak.h>
#include <tslbl/records/MZPeakField.h>
#include <tslbl/records/MZRange.h>
#include <tslbl/records/OPDParams.h>
#include <tslbl/records/OverlapPeakInfo.h>
#include <tslbl/records/PeakValues.h>
#include <tslbl/records/RecordForms.h>
#include <tslbl/records/VexException.h>

#include <tslbl/curve/BaselineParams.h>
#include <tslbl/curve/Curve.h>
#include <tslbl/curve/CurveEval.h>
#include <tslbl/curve/CurvePeak.h>
#include <tslbl/curve/Execute.h>
#include <tslbl/curve/FilterGain.h>
#include <tslbl/curve/FilterWeights.h>
#include <tslbl/curve/NoiseParams.h>
#include <tslbl/curve/PeakArea.h>
#include <tslbl/curve/PeakDetectParams.h>
#include <tslbl/curve/PeakErrors.h>
#include <tslbl/curve/PeakInfo.h>
#include <tslbl/curve/SmoothParams.h>
#include <tslbl/curve/ThresholdParams.h>
#include <tslbl/detect/FindOnePeak.h>
#include <tslbl/detect/FindPeak.h>
#include <tslbl/detect/ThreadingParams.h>

#include <tslbl/tune/FieldLimits.h>
#include <tslbl/tune/FieldTable.h>
#include <tslbl/tune/LensCurve.h>
#include <tslbl/tune/MZConvert.h>
#include <tslbl/tune/MassAxis.h>
#include <tslbl/tune/MassRange.h>
#include <tslbl/tune/PLAutoFindPrefs.h>
#include <tslbl/tune/Q1FieldConvert.h>
#include <tslbl/tune/Settling.h>
#include <tslbl/tune/SyringeList.h>
#include <tslbl/tune/Tune.h>
#include <tslbl/tune/ramp/RampMethod.h>
#include <tslbl/tune/ramp/RampResults.h>
#include <tslbl/tune/ramp/StepTable.h>
#include <tslbl/tune/rules/DevTuneRules.h>

#include <tslbl/method/CheckPeakMethod.h>
#include <tslbl/method/DDEvent.h>
#include <tslbl/method/Method.h>
#include <tslbl/method/MethodRules.h>

#include <tslbl/spectrum/CountRate.h>
#include <tslbl/spectrum/CreateSpectrum.h>
#include <tslbl/spectrum/PeakTable.h>
#include <tslbl/spectrum/RawSpectrum.h>
#include <tslbl/spectrum/Spectrum.h>
#include <tslbl/spectrum/StateSpectrum.h>

#include <tslbl/calibrate/ApplyCalibration.h>
#include <tslbl/calibrate/CalFile.h>
#include <tslbl/calibrate/Calibrate.h>
#include <tslbl/calibrate/CalibrateParams.h>

#include <tslbl/overlap/OPD.h>
#include <tslbl/overlap/OPDMerge.h>
#include <tslbl/overlap/OPDRefit.h>

#include <tslbl/chromatogram/CurveTitles.h>
#include <tslbl/chromatogram/ExtractedCurves.h>
#include <tslbl/chromatogram/ICFilter.h>
#include <tslbl/chromatogram/ICObj.h>
#include <tslbl/chromatogram/ICPeak.h>
#include <tslbl/chromatogram/ICPeakTable.h>
#include <tslbl/chromatogram/ICRange.h>

#include <tslbl/arithmetic/BasePeak.h>
#include <tslbl/arithmetic/CurveSpectra.h>
#include <tslbl/arithmetic/PartialSpectrum.h>
#include <tslbl/arithmetic/SpectrumSums.h>

#include <tslbl/chargestate/CSDebugFiles.h>
#include <tslbl/chargestate/CSDecon.h>
#include <tslbl/chargestate/CSDeconEdit.h>
#include <tslbl/chargestate/ChargeStateParams.h>
#include <tslbl/chargestate/DeconSpectrum.h>

#include <tslbl/results/ResultCurve.h>
#include <tslbl/results/ResultSpectrum.h>
