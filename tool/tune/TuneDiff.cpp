#include <tool/tune/TuneDiff.h>

#include <fmt/format.h>

#include <tool/tune/LensCurves.h>
#include <tool/tune/TuneFields.h>
#include <tslbl/closed/common/Text.h>
#include <algorithm>
#include <map>

namespace TslTool {
namespace {

using TslBL::DevTuneRules;
using TslBL::Q1CalPt;
using TslBL::Tune;

std::string Line(const std::string& what, const std::string& a, const std::string& b) {
  const auto shown = [](const std::string& text) { return text.empty() ? "\"\"" : text; };
  return fmt::format("{}: {} -> {}", what, shown(a), shown(b));
}

// A setting of one kind of tune has no value in the other.
std::string ShownIn(const Tune& tune, const TuneField& field) {
  return HasField(tune, field) ? field.show(DevTuneRules(tune)) : "-";
}

void AddFields(const Tune& a, const Tune& b, std::vector<std::string>& lines) {
  for (const FieldGroup& group : TuneFieldGroups()) {
    for (const TuneField& field : group.fields) {
      if (!HasField(a, field) && !HasField(b, field)) continue;
      const std::string ofA = ShownIn(a, field);
      const std::string ofB = ShownIn(b, field);
      if (ofA != ofB) lines.push_back(Line(field.name, ofA, ofB));
    }
  }
}

std::string ShownPoint(const TslBL::MZCalPt& point) {
  return fmt::format("m/z {} DAC {} {}", point.MZ, point.MassDAC, TslCommon::ToUtf8(point.Name));
}

void AddMZCalPts(const Tune& a, const Tune& b, std::vector<std::string>& lines) {
  const auto shown = [](const Tune& tune, std::size_t i) {
    return i < tune.MZCalPts.size() ? ShownPoint(tune.MZCalPts[i]) : "-";
  };
  for (std::size_t i = 0; i < std::max(a.MZCalPts.size(), b.MZCalPts.size()); ++i)
    if (shown(a, i) != shown(b, i))
      lines.push_back(Line(fmt::format("MZCalPts {}", i + 1), shown(a, i), shown(b, i)));
}

std::string NameOf(TslBL::TuneField::Id id) {
  return TslCommon::ToUtf8(TslBL::TuneField::FieldToPointTag(id));
}

// A calibrant in words; each of its settings by name.
std::map<std::string, std::string> Settings(const Q1CalPt* point) {
  if (point == nullptr) return {};
  std::map<std::string, std::string> settings = {{"name", TslCommon::ToUtf8(point->Name)},
                                                 {"m/z", fmt::format("{}", point->MZ)}};
  for (const auto& [id, value] : point->Fields) settings[NameOf(id)] = fmt::format("{}", value);
  return settings;
}

void AddQ1CalPts(const Tune& a, const Tune& b, std::vector<std::string>& lines) {
  for (std::size_t i = 0; i < std::max(a.Q1CalPts.size(), b.Q1CalPts.size()); ++i) {
    const Q1CalPt* ofA = i < a.Q1CalPts.size() ? &a.Q1CalPts[i] : nullptr;
    const Q1CalPt* ofB = i < b.Q1CalPts.size() ? &b.Q1CalPts[i] : nullptr;
    auto inA = Settings(ofA);
    auto inB = Settings(ofB);
    const std::string place = fmt::format("Q1CalPts {} (m/z {})", i + 1, (ofA != nullptr ? ofA : ofB)->MZ);
    for (const auto& [name, value] : inB) inA.try_emplace(name, "-");
    for (const auto& [name, value] : inA) {
      const std::string other = inB.contains(name) ? inB[name] : "-";
      if (value != other) lines.push_back(Line(place + " " + name, value, other));
    }
  }
}

struct Lens {
  const char* name;
  TslBL::IOPoint TslBL::Control::*lens;
};

std::vector<Lens> Lenses() {
  using TslBL::Control;
  std::vector<Lens> lenses = {{"Q1CoarseResolution", &Control::Q1CoarseResolution},
                              {"Q1Enter", &Control::Q1Enter}};
  for (const LensField& field : LensFields()) lenses.push_back({field.name, field.lens});
  return lenses;
}

bool SeenApart(const TslBL::IOPoint& a, const TslBL::IOPoint& b) {
  return a.Type != b.Type || (a.Type == TslBL::IOPoint::SingleType && a.Single != b.Single);
}

std::string Stored(const TslBL::IOPoint& lens) {
  return fmt::format("single {} calibrated {} function {} to {} by {}", lens.Single, lens.Calibrated,
                     lens.Start, lens.End, lens.StepSize);
}

// What no sheet shows: numbers of a lens that are not in use, settings of the other kind
// of probe.
void AddHidden(const Tune& a, const Tune& b, std::vector<std::string>& lines) {
  for (const Lens& lens : Lenses()) {
    const TslBL::IOPoint& ofA = a.ControlData.*lens.lens;
    const TslBL::IOPoint& ofB = b.ControlData.*lens.lens;
    if (!SeenApart(ofA, ofB) && !(ofA == ofB))
      lines.push_back(Line(fmt::format("{} (stored)", lens.name), Stored(ofA), Stored(ofB)));
  }
  if (lines.empty() && !(a == b)) lines.emplace_back("values that neither sheet shows differ");
}

}  // namespace

std::vector<std::string> TuneDiff(const Tune& a, const Tune& b) {
  std::vector<std::string> lines;
  AddFields(a, b, lines);
  AddMZCalPts(a, b, lines);
  AddQ1CalPts(a, b, lines);
  AddHidden(a, b, lines);
  return lines;
}

}  // namespace TslTool
