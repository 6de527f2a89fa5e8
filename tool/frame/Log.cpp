#include <tool/frame/Log.h>

#include <log4cxx/consoleappender.h>
#include <log4cxx/level.h>
#include <log4cxx/logger.h>
#include <log4cxx/patternlayout.h>

namespace TslTool {

void LogWarningsToStandardError() {
  const auto layout = std::make_shared<log4cxx::PatternLayout>(LOG4CXX_STR("tslbl: warning: %m%n"));
  const auto root = log4cxx::Logger::getRootLogger();
  root->addAppender(
      std::make_shared<log4cxx::ConsoleAppender>(layout, log4cxx::ConsoleAppender::getSystemErr()));
  root->setLevel(log4cxx::Level::getWarn());
}

}  // namespace TslTool
