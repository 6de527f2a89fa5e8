#pragma once
// Runs of ramps, simulated: the best values are those of the lens model.

#include <fstream>
#include <string>

#include <tool/ToolRun.h>
#include <tool/io/RunFile.h>
#include <tool/simulate/Acquisition.h>
#include <tool/simulate/TestMethods.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/records/RecordForms.h>

namespace tests {

inline std::vector<double> Walk(double from, double to, double step) {
  std::vector<double> values;
  for (double value = from; value <= to + 1e-9; value += step) values.push_back(value);
  return values;
}

// The run of a method, and a tune beside it, in a folder of their own.
class RampRun {
 public:
  explicit RampRun(const TslBL::MethodRules& rules, const TslBL::Tune& tune = ShortTune(100, 700)) {
    std::ofstream(Tune()) << TslCommon::ToUtf8(TslBL::ToXml(tune));
    TslTool::RunWriter writer(Path(), "Ramp");
    writer.AddMethod(rules);
    for (const auto& [id, used] : rules.Tunes) writer.AddTune(id, used);
    TslTool::Acquisition acquisition(rules, TslTool::CalibrantSample(), 0.6, 1);
    TslBL::RawSpectrum raw;
    std::vector<TslTool::TrueLine> truth;
    while (acquisition.Next(raw, truth)) writer.AddScan(raw);
    writer.Finish();
  }

  std::string Path() const { return folder_.Folder() + "/ramp.run"; }
  std::string Tune() const { return folder_.Folder() + "/esi.xml"; }
  std::string Beside(const std::string& name) const { return folder_.Folder() + "/" + name; }
  Outcome Best(const Arguments& more) const {
    Arguments words = {"ramp", "best", Path(), "-q"};
    words.insert(words.end(), more.begin(), more.end());
    return RunTool(words);
  }

 private:
  TempFile folder_{"x", ""};
};

}  // namespace tests
