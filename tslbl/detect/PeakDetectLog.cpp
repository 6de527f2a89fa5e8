#include <tslbl/detect/PeakDetectLog.h>

#include <log4cxx/logger.h>

#include <tslbl/closed/common/Log.h>
#include <tslbl/curve/PeakLevels.h>

namespace TslBL {
namespace {

const log4cxx::LoggerPtr logger = log4cxx::Logger::getLogger("tbb");

void ReportTiming(std::chrono::steady_clock::time_point start, std::chrono::steady_clock::time_point end,
                  const wchar_t* name) {
  const double seconds = std::chrono::duration<double>(end - start).count();
  LOG4CXX_INFO(logger, name << L"\tElapsed time =\t" << seconds);
}

void DumpPeakInfo(const Curve& curve, const PeakInfo& row) {
  LOG4CXX_DEBUG(logger, L"Feature " << row.startIdx << L" " << row.apexIdx << L" " << row.endIdx << L" ("
                                    << ValueAt(curve.xAxis, row.startIdx) << L" "
                                    << ValueAt(curve.xAxis, row.apexIdx) << L" "
                                    << ValueAt(curve.xAxis, row.endIdx) << L" "
                                    << ValueAt(curve.yAxis, row.startIdx) << L" " << row.apexAmpl << L" "
                                    << ValueAt(curve.yAxis, row.endIdx) << L")");
}

}  // namespace

StageTimer::StageTimer(const wchar_t* name)
    : name_(name), on_(TslCommon::IsHeard(logger, log4cxx::Level::getInfo())) {
  if (on_) start_ = std::chrono::steady_clock::now();
}

StageTimer::~StageTimer() {
  if (on_) ReportTiming(start_, std::chrono::steady_clock::now(), name_);
}

void LogFeatures(const Curve& curve, const FeatureRows& found) {
  if (!TslCommon::IsHeard(logger, log4cxx::Level::getInfo())) return;
  if (logger->isDebugEnabled())
    for (const PeakInfo* row : found.list) DumpPeakInfo(curve, *row);
  LOG4CXX_INFO(logger, L"\tNumber of features found=\t" << found.list.size());
}

void LogPartialOverlap(std::uint32_t a, std::uint32_t b) {
  if (TslCommon::IsHeard(logger, log4cxx::Level::getDebug()))
    LOG4CXX_DEBUG(logger, L"PartialOverlap " << a << L" " << b);
}

}  // namespace TslBL
