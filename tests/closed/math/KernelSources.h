// Every kernel once more, compiled into the file that includes this. Define before it what to call the
// namespace and for which registers to compile:
//   TslMath       a name of its own
//   TSLBL_WIDE    what marks functions for wide registers
// No #pragma once: each file gets its own.
#include <tslbl/closed/math/APBNoise.cpp>
#include <tslbl/closed/math/AcceptedSums.cpp>
#include <tslbl/closed/math/Baseline.cpp>
#include <tslbl/closed/math/CellCurve.cpp>
#include <tslbl/closed/math/ConsensusLine.cpp>
#include <tslbl/closed/math/CubicSegment.cpp>
#include <tslbl/closed/math/Features.cpp>
#include <tslbl/closed/math/FitLinesSD.cpp>
#include <tslbl/closed/math/FollowValleys.cpp>
#include <tslbl/closed/math/GaussPeak.cpp>
#include <tslbl/closed/math/IntervalBounds.cpp>
#include <tslbl/closed/math/LinearFitSD.cpp>
#include <tslbl/closed/math/MedianNetwork.cpp>
#include <tslbl/closed/math/MedianWindow.cpp>
#include <tslbl/closed/math/MovingExtrema.cpp>
#include <tslbl/closed/math/Noise.cpp>
#include <tslbl/closed/math/OpenAdaptively.cpp>
#include <tslbl/closed/math/Polyline.cpp>
#include <tslbl/closed/math/PolynomialBasis.cpp>
#include <tslbl/closed/math/RobustLine.cpp>
#include <tslbl/closed/math/SegmentGuard.cpp>
#include <tslbl/closed/math/SegmentLoader.cpp>
#include <tslbl/closed/math/SmallestStep.cpp>
#include <tslbl/closed/math/SmoothGaussian.cpp>
#include <tslbl/closed/math/SmoothMean.cpp>
#include <tslbl/closed/math/SmoothMedian.cpp>
#include <tslbl/closed/math/SmoothSavitzkyGolay.cpp>
#include <tslbl/closed/math/SplinePeak.cpp>
#include <tslbl/closed/math/StandardDeviation.cpp>
#include <tslbl/closed/math/SymmetricFilter.cpp>
