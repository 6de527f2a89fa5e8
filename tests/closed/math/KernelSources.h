// Every kernel once more, compiled into the file that includes this. Define before it what to call the
// namespace and for which registers to compile:
//   TslMath       a name of its own
//   TSLBL_WIDE    what marks functions for wide registers
// No #pragma once: each file gets its own.
#include <tslbl/closed/math/Normalize.cpp>
#include <tslbl/closed/math/SmallestStep.cpp>
#include <tslbl/closed/math/baseline/APBNoise.cpp>
#include <tslbl/closed/math/baseline/AcceptedSums.cpp>
#include <tslbl/closed/math/baseline/BackgroundKernel.cpp>
#include <tslbl/closed/math/baseline/BaselineAndNoise.cpp>
#include <tslbl/closed/math/baseline/CellCurve.cpp>
#include <tslbl/closed/math/baseline/ConsensusLine.cpp>
#include <tslbl/closed/math/baseline/CurveFloor.cpp>
#include <tslbl/closed/math/baseline/FollowValleys.cpp>
#include <tslbl/closed/math/baseline/IonCounter.cpp>
#include <tslbl/closed/math/baseline/MovingExtrema.cpp>
#include <tslbl/closed/math/baseline/OpenAdaptively.cpp>
#include <tslbl/closed/math/baseline/Polyline.cpp>
#include <tslbl/closed/math/baseline/RobustLine.cpp>
#include <tslbl/closed/math/baseline/SegmentGuard.cpp>
#include <tslbl/closed/math/baseline/SegmentLoader.cpp>
#include <tslbl/closed/math/baseline/ShotBackground.cpp>
#include <tslbl/closed/math/baseline/StandardDeviation.cpp>
#include <tslbl/closed/math/overlap/Cholesky.cpp>
#include <tslbl/closed/math/overlap/CurvatureScan.cpp>
#include <tslbl/closed/math/overlap/FitEquations.cpp>
#include <tslbl/closed/math/overlap/FitErrors.cpp>
#include <tslbl/closed/math/overlap/FitPeaks.cpp>
#include <tslbl/closed/math/overlap/FitTask.cpp>
#include <tslbl/closed/math/overlap/GroupFit.cpp>
#include <tslbl/closed/math/overlap/GroupNoise.cpp>
#include <tslbl/closed/math/overlap/GroupSamples.cpp>
#include <tslbl/closed/math/overlap/HookeJeeves.cpp>
#include <tslbl/closed/math/overlap/InitialEstimates.cpp>
#include <tslbl/closed/math/overlap/LevenbergMarquardt.cpp>
#include <tslbl/closed/math/overlap/ModelCheck.cpp>
#include <tslbl/closed/math/overlap/PeakColumns.cpp>
#include <tslbl/closed/math/overlap/PeakHeights.cpp>
#include <tslbl/closed/math/overlap/PeakSum.cpp>
#include <tslbl/closed/math/overlap/WidthGuess.cpp>
#include <tslbl/closed/math/peak/BumpNoise.cpp>
#include <tslbl/closed/math/peak/CubicSegment.cpp>
#include <tslbl/closed/math/peak/Features.cpp>
#include <tslbl/closed/math/peak/GaussPeak.cpp>
#include <tslbl/closed/math/peak/IntervalBounds.cpp>
#include <tslbl/closed/math/peak/ProminentBumps.cpp>
#include <tslbl/closed/math/peak/SplinePeak.cpp>
#include <tslbl/closed/math/peak/TypicalOfKinds.cpp>
#include <tslbl/closed/math/peak/TypicalWidth.cpp>
#include <tslbl/closed/math/smooth/MedianNetwork.cpp>
#include <tslbl/closed/math/smooth/MedianWindow.cpp>
#include <tslbl/closed/math/smooth/PolynomialBasis.cpp>
#include <tslbl/closed/math/smooth/SmoothGaussian.cpp>
#include <tslbl/closed/math/smooth/SmoothMean.cpp>
#include <tslbl/closed/math/smooth/SmoothMedian.cpp>
#include <tslbl/closed/math/smooth/SmoothSavitzkyGolay.cpp>
#include <tslbl/closed/math/smooth/SymmetricFilter.cpp>
