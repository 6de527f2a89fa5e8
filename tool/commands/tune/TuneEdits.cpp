#include <tool/commands/tune/TuneEdits.h>

#include <fmt/format.h>

#include <tool/commands/tune/MZCalEdit.h>
#include <tool/commands/tune/TuneEdit.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <memory>
#include <stdexcept>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;

// A change, and how what it changes stood after it.
struct Done {
  std::string text;
  std::unique_ptr<TuneEdit> edit;
  std::string shown;
};

class TuneEdits {
 public:
  explicit TuneEdits(DevTuneRules& rules) : rules_(rules), calibration_(rules.MZCalPts) {}

  void Make(const std::string& text) {
    std::unique_ptr<TuneEdit> edit = ReadTuneEdit(rules_, text);
    if (edit->IsLast()) {
      last_.push_back({text, std::move(edit), ""});
    } else {
      Apply({text, std::move(edit), ""});
    }
  }

  std::vector<std::string> Finish() && {
    for (Done& change : last_) Apply(std::move(change));
    CheckCalibration();
    for (const Done& change : done_) {
      WarnOfUndone(change);
      WarnOfIdle(change);
    }
    return std::move(warnings_);
  }

 private:
  void Apply(Done change) {
    const auto& [text, edit, ignored] = change;
    const EditResult result = edit->Apply(rules_);
    if (result.refused) throw std::runtime_error(fmt::format("{}: {}", text, result.text));
    if (!result.text.empty()) Warn(text, result.text);
    const auto move = edit->Moves();
    done_.push_back(std::move(change));
    if (move)
      for (const Done& earlier : done_) earlier.edit->Follow(*move);
    done_.back().shown = done_.back().edit->Shown(rules_);
  }

  // The points may have passed through states that the rules refuse.
  void CheckCalibration() const {
    if (rules_.MZCalPts == calibration_ || rules_.CheckMZCalPts(rules_.MZCalPts) != DevTuneRules::Error)
      return;
    throw std::runtime_error(fmt::format("MZCal: {} By m/z, counted from 0, {}",
                                         TslCommon::ToUtf8(rules_.QLastError()), ShownMZCalPts(rules_)));
  }

  // By a change that has another purpose, too.
  void WarnOfUndone(const Done& change) {
    if (const std::string now = change.edit->Shown(rules_); now != change.shown)
      Warn(change.text, "a later change made it " + now);
  }

  void WarnOfIdle(const Done& change) {
    if (const std::string idle = change.edit->Idle(rules_); !idle.empty()) Warn(change.text, idle);
  }

  void Warn(const std::string& text, const std::string& reason) { warnings_.push_back(text + ": " + reason); }

  DevTuneRules& rules_;
  const std::vector<TslBL::MZCalPt> calibration_;
  std::vector<Done> done_;
  std::vector<Done> last_;
  std::vector<std::string> warnings_;
};

}  // namespace

std::vector<std::string> MakeTuneEdits(DevTuneRules& rules, const std::vector<std::string>& texts) {
  TuneEdits edits(rules);
  for (const std::string& text : texts) edits.Make(text);
  return std::move(edits).Finish();
}

}  // namespace TslTool
