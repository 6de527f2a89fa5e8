#include <tool/commands/method/MethodStore.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/method/MethodDifferences.h>
#include <tool/commands/method/MethodFaults.h>
#include <tool/frame/FileLock.h>
#include <tool/frame/Output.h>
#include <tool/frame/Warning.h>
#include <tool/io/OpenScans.h>
#include <tool/io/RunFile.h>
#include <algorithm>
#include <filesystem>
#include <map>
#include <system_error>

namespace TslTool {

namespace {

// Lines "PLACE.FIELD: A -> B" as one "FIELD: A -> B (PLACE, PLACE)" for all places.
std::vector<std::string> ByField(const std::vector<std::string>& differences) {
  std::map<std::string, std::vector<std::string>> places;
  for (const std::string& line : differences) {
    const std::size_t dot = std::min(line.find('.'), line.find(':'));
    const bool hasPlace = dot < line.size() && line[dot] == '.';
    places[hasPlace ? line.substr(dot + 1) : line].push_back(hasPlace ? line.substr(0, dot) : "");
  }
  std::vector<std::string> lines;
  lines.reserve(places.size());
  for (const auto& [line, all] : places)
    lines.push_back(all.front().empty() ? line : fmt::format("{} ({})", line, fmt::join(all, ", ")));
  return lines;
}

TslBL::Method MethodOfRun(const std::string& run) {
  const RunReader reader(run);
  if (!reader.AcquiredBy()) throw InputError(run, "", "is a run that holds no method");
  return *reader.AcquiredBy();
}

}  // namespace

MethodFile LoadMethodWithWarning(const std::string& file) {
  if (IsDatabase(file)) return {MethodOfRun(file), RecordForm::Binary, {}};
  MethodFile loaded = LoadMethod(file);
  if (!loaded.missing.empty())
    Warn(fmt::format("{}: the document lacks {}, which count as 0 or empty", file,
                     fmt::join(loaded.missing, ", ")));
  return loaded;
}

void RequireNoRun(const std::string& file) {
  if (IsDatabase(file))
    throw InputError(file, "",
                     "is a run, whose method stays as it was acquired; 'tslbl method convert' takes it out");
}

void SaveMethod(const TslBL::Method& method, RecordForm form, const std::string& file) {
  Output output(file);
  output.Write(RecordBytes(method, form));
  output.Commit();
  const std::vector<std::string> lost = ByField(MethodDifferences(method, ThroughForm(method, form)));
  const char* what = form == RecordForm::Xml ? "a document" : "a binary method";
  if (!lost.empty()) Warn(fmt::format("{}: {} does not keep {}", file, what, fmt::join(lost, "; ")));
}

void SaveNewMethod(const TslBL::MethodRules& rules, RecordForm form, const std::string& file) {
  CreateExclusive(file);
  try {
    SaveMethod(rules.operator TslBL::Method(), form, file);
  } catch (...) {
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    throw;
  }
  WarnOfMethodFaults(file, rules);
}

void WarnOfMethodFaults(const std::string& file, const TslBL::MethodRules& rules,
                        const std::vector<std::string>& before) {
  for (const std::string& fault : MethodFaults(rules))
    if (std::ranges::find(before, fault) == before.end())
      Warn(fmt::format("{}: the rules do not accept this method: {}", file, fault));
}

}  // namespace TslTool
