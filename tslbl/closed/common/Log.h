#pragma once
// Whether it is of use to put a message together.

#include <log4cxx/logger.h>

namespace TslCommon {

// True if the logger lets messages of `level` through and somebody listens. A host that set
// up no logging has a root logger that lets all through to nobody; log4cxx would say so on
// standard error, which is the host's.
inline bool IsHeard(const log4cxx::LoggerPtr& logger, const log4cxx::LevelPtr& level) {
  if (!logger->isEnabledFor(level)) return false;
  for (log4cxx::LoggerPtr at = logger; at; at = at->getAdditivity() ? at->getParent() : nullptr)
    if (!at->getAllAppenders().empty()) return true;
  return false;
}

}  // namespace TslCommon
