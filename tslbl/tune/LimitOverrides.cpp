#include <tslbl/tune/LimitOverrides.h>

#include <log4cxx/helpers/messagebuffer.h>
#include <log4cxx/logger.h>

#include <tslbl/closed/common/Log.h>
#include <tslbl/closed/common/Text.h>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <locale>
#include <system_error>

namespace TslBL {
namespace {

bool IsSound(const Limits& row) { return !(row.Min > row.Max) && !(row.Step > std::abs(row.Max - row.Min)); }

}  // namespace

LimitRows ReadLimitRows(std::istream& in) {
  in.imbue(std::locale::classic());
  LimitRows rows;
  std::uint32_t field = 0;
  Limits row;
  while (in >> field >> row.Min >> row.Max >> row.Step && IsSound(row)) rows[field] = row;
  return rows;
}

std::optional<LimitRows> LoadLimitOverrides(const std::wstring& path) {
  // Anything but a plain file of that name could keep the reader waiting forever.
  const std::filesystem::path file(ToUtf8(path));
  std::error_code ignored;
  if (!std::filesystem::is_regular_file(file, ignored)) return std::nullopt;
  std::ifstream in(file);
  if (!in) return std::nullopt;
  return ReadLimitRows(in);
}

// Limits that a site has moved are the first thing to know when an instrument misbehaves.
void LogOverrides(const std::wstring& path) {
  const log4cxx::LoggerPtr logger = log4cxx::Logger::getLogger("tslbl");
  if (!TslCommon::IsHeard(logger, log4cxx::Level::getWarn())) return;
  log4cxx::helpers::WideMessageBuffer message;
  message << L"Tune Field Limits Override Successful: " << path;
  logger->forcedLog(log4cxx::Level::getWarn(), message.str(message), LOG4CXX_LOCATION);
}

}  // namespace TslBL
