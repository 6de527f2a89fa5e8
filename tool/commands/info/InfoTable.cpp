// The form "table": what a person wants to know of a file.

#include <fmt/format.h>
#include <tool/commands/info/InfoWriter.h>
#include <tool/frame/Visible.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/tune/MassRange.h>
#include <tslbl/tune/rules/DevTuneRules.h>

namespace TslTool {
namespace {

// Names of files, titles and tunes are foreign text.
std::string Row(const std::string& label, const std::string& value) {
  return fmt::format("{:<13} {}\n", label, Visible(value));
}

// As in "3 profile, 1 unknown".
template <class Counts, class Name>
std::string Listed(const Counts& counts, Name name) {
  std::string text;
  for (const auto& [key, count] : counts)
    text += fmt::format("{}{} {}", text.empty() ? "" : ", ", count, name(key));
  return text;
}

std::string NameOfLevel(int level) { return level == 0 ? "unknown" : fmt::format("of level {}", level); }

std::string NumberRow(const FileFacts& f) {
  return Row("numbers",
             fmt::format("{} to {}{}", f.firstNumber, f.lastNumber, f.ascends ? "" : ", not ascending"));
}

std::string FunctionRow(const FileFacts& f) {
  if (f.functions.empty()) return "";
  const auto name = [](std::uint32_t function) { return fmt::format("of function {}", function); };
  return Row("functions", Listed(f.functions, name));
}

std::string KindRows(const FileHead& head, const FileFacts& f) {
  if (head.isRun) return Row("kind", "profile");
  std::string text = Row("kind", Listed(f.marked, NameOfRepresentation));
  const bool isAllMarked = !f.marked.contains(Scan::Unknown);
  if (f.judged.empty() || (isAllMarked && f.differing == 0)) return text;
  std::string judged = Listed(f.judged, NameOfRepresentation);
  if (f.differing > 0)
    judged += fmt::format("; {} not as marked, first scan {}", f.differing, f.firstDiffering);
  return text + Row("  by points", judged);
}

std::string PointRows(const FileHead& head, const FileFacts& f) {
  const char* unit = head.isRun ? " counts" : "";
  std::string text = Row("points", f.fewest == f.most ? fmt::format("{} each", f.most)
                                                      : fmt::format("{} to {}", f.fewest, f.most));
  if (f.mz.IsKnown()) text += Row("m/z", fmt::format("{:.4f} to {:.4f}", f.mz.from, f.mz.to));
  if (f.rtSeconds.IsKnown())
    text += Row("time", fmt::format("{:.3f} to {:.3f} s", f.rtSeconds.from, f.rtSeconds.to));
  if (f.basePeak.to >= 0.0) text += Row("highest", fmt::format("{:.6g}{}", f.basePeak.to, unit));
  return text;
}

std::string AmplitudeRows(const FileHead& head, const FileFacts& f) {
  if (f.points == 0) return "";
  const char* unit = head.isRun ? " counts" : "";
  const double share = 100.0 * static_cast<double>(f.zeros) / static_cast<double>(f.points);
  return Row("zeros", fmt::format("{:.3g} % of the amplitudes", share)) +
         Row("TIC", fmt::format("{:.6g} to {:.6g}{}", f.tic.from, f.tic.to, unit));
}

std::string AxisRow(const FileHead& head, std::uint32_t id) {
  const auto points = head.axes.find(id);
  return points == head.axes.end() ? ""
                                   : Row("  m/z axis", fmt::format("by {} other points", points->second));
}

std::string TuneRows(std::uint32_t id, const TslBL::Tune& tune) {
  const TslBL::Control& c = tune.ControlData;
  const auto [from, to] = TslBL::QMassRange(tune);
  return Row("tune", fmt::format("{}: {}", id, TslCommon::ToUtf8(tune.Info.Name))) +
         Row("  probe", TslCommon::ToUtf8(TslCommon::Probes::GetNameNoId(tune.Source.Type))) +
         Row("  polarity", TslCommon::ToUtf8(TslCommon::PolarityToWStr(c.PolarityType, L"unknown"))) +
         Row("  function", c.Type == TslBL::Control::Scan ? "scan" : "SIM") +
         Row("  m/z", fmt::format("{} to {}, step {}", from, to, c.MZStepSize)) +
         Row("  dwell", fmt::format("{} us, {} scans a spectrum", c.PulseCountDelay, c.ScansPerSpec)) +
         Row("  duration",
             fmt::format("{:.6g} ms a spectrum", TslBL::DevTuneRules::QDuration(tune) / 1000.0)) +
         Row("  calibration", fmt::format("{} points", tune.MZCalPts.size()));
}

// A description has lines; the first ends in ":" where others tell more.
std::string OnOneLine(const std::wstring& description) {
  std::string line;
  for (const char c : TslCommon::ToUtf8(description)) {
    if (c == '\r') continue;
    line += c == '\n' ? ' ' : c;
  }
  return line.substr(0, line.find_last_not_of(' ') + 1);
}

std::string MethodRows(const TslBL::Method& method) {
  std::size_t items = 0;
  for (const TslBL::TimePeriod& period : method.TimePeriods) items += period.Sequence.size();
  return Row("method", OnOneLine(method.Desc)) +
         Row("  periods", fmt::format("{} with {} sequence items", method.TimePeriods.size(), items)) +
         Row("  runs", fmt::format("{} of {} tunes", method.TuneRuns.size(), method.Tunes.size()));
}

class InfoTable final : public InfoWriter {
 public:
  using InfoWriter::InfoWriter;

  std::string Tail(const FileTail& tail) const override {
    const FileFacts& f = tail.facts;
    std::string text = Row("file", About().file) + Row("format", About().format);
    if (About().isRun) text += Row("title", About().title);
    text += Row("spectra", fmt::format("{}", f.spectra)) + SpectrumRows(tail);
    if (const auto& [count, points] = tail.chromatograms; count > 0)
      text += Row("chromatograms", fmt::format("{}, {} points in all", count, points));
    if (About().method) text += MethodRows(*About().method);
    for (const auto& [id, tune] : About().tunes) text += TuneRows(id, tune) + AxisRow(About(), id);
    return text;
  }

 private:
  std::string SpectrumRows(const FileTail& tail) const {
    const FileFacts& f = tail.facts;
    if (f.spectra == 0) return "";
    const std::string empty = f.empty == 0 ? "" : Row("empty", fmt::format("{} of them", f.empty));
    const std::string width =
        tail.pointsAcross > 0.0 ? fmt::format("{:.1f} points", tail.pointsAcross) : "unknown";
    return empty + PointRows(About(), f) + KindRows(About(), f) + Row("peak width", width) + NumberRow(f) +
           Row("MS levels", Listed(f.msLevels, NameOfLevel)) +
           Row("polarity", Listed(f.polarities, NameOfPolarity)) + FunctionRow(f) + AmplitudeRows(About(), f);
  }
};

}  // namespace

std::unique_ptr<InfoWriter> MakeInfoTable(const FileHead& head) { return std::make_unique<InfoTable>(head); }

}  // namespace TslTool
