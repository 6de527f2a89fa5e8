#include <tool/frame/Log.h>

#include <log4cxx/consoleappender.h>
#include <log4cxx/helpers/transcoder.h>
#include <log4cxx/level.h>
#include <log4cxx/logger.h>
#include <log4cxx/patternlayout.h>
#include <log4cxx/spi/loggingevent.h>

#include <tool/frame/Visible.h>

namespace TslTool {
namespace {

class LikeOtherWarnings final : public log4cxx::PatternLayout {
 public:
  void format(log4cxx::LogString& output, const log4cxx::spi::LoggingEventPtr& event,
              log4cxx::helpers::Pool&) const override {
    std::string text;
    log4cxx::helpers::Transcoder::encodeUTF8(event->getMessage(), text);
    log4cxx::helpers::Transcoder::decodeUTF8("tslbl: warning: " + Visible(text) + '\n', output);
  }
};

}  // namespace

void LogWarningsToStandardError() {
  const auto layout = std::make_shared<LikeOtherWarnings>();
  const auto root = log4cxx::Logger::getRootLogger();
  root->addAppender(
      std::make_shared<log4cxx::ConsoleAppender>(layout, log4cxx::ConsoleAppender::getSystemErr()));
  root->setLevel(log4cxx::Level::getWarn());
}

}  // namespace TslTool
