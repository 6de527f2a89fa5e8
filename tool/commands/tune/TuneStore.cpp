#include <tool/commands/tune/TuneStore.h>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <tool/commands/tune/TuneDifferences.h>
#include <tool/commands/tune/TuneFaults.h>
#include <tool/frame/Output.h>
#include <algorithm>

namespace TslTool {

using TslBL::Tune;

TuneFile LoadWithWarning(const std::string& file) {
  TuneFile loaded = LoadTune(file);
  if (!loaded.missing.empty())
    Warn(fmt::format("{}: the document lacks {}, which count as 0 or empty", file,
                     fmt::join(loaded.missing, ", ")));
  return loaded;
}

Tune Load(const std::string& file) { return LoadWithWarning(file).tune; }

void Save(const Tune& tune, TuneForm form, const std::string& file) {
  Output output(file);
  output.Write(RecordBytes(tune, form));
  output.Commit();
  const std::vector<std::string> lost = TuneDifferences(tune, ThroughForm(tune, form));
  if (!lost.empty()) Warn(fmt::format("{}: a document does not keep {}", file, fmt::join(lost, "; ")));
}

void WarnOfFaults(const std::string& file, const std::vector<std::string>& before, const Tune& tune) {
  for (const std::string& fault : TuneFaults(tune)) {
    const bool isNew = std::ranges::find(before, fault) == before.end();
    Warn(fmt::format("{}: the rules {}: {}", file,
                     isNew ? "do not accept this tune" : "did not accept this tune before, and do not now",
                     fault));
  }
}

void Print(const std::string& text) {
  Output output("");
  output.Write(text);
  output.Commit();
}

}  // namespace TslTool
