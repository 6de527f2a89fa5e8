#pragma once
// Whether a message would be written at all.

#include <log4cxx/logger.h>

namespace TslCommon {

// True if the logger lets messages of `level` through to an appender. A host that set up no
// logging has a root logger without one; log4cxx would complain about that on standard error,
// which belongs to the host.
inline bool IsHeard(const log4cxx::LoggerPtr& logger, const log4cxx::LevelPtr& level) {
  if (!logger->isEnabledFor(level)) return false;
  for (log4cxx::LoggerPtr at = logger; at; at = at->getAdditivity() ? at->getParent() : nullptr)
    if (!at->getAllAppenders().empty()) return true;
  return false;
}

}  // namespace TslCommon
