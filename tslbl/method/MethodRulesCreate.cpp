// A ramp becomes a method.

#include <tslbl/closed/common/Message.h>
#include <tslbl/closed/common/Text.h>
#include <tslbl/method/MethodRules.h>
#include <tslbl/tune/FieldTable.h>
#include <tslbl/tune/ramp/RampStep.h>
#include <tslbl/tune/rules/RampNumbers.h>
#include <algorithm>
#include <cmath>
#include <type_traits>
#include <variant>

namespace TslBL {
namespace {

constexpr std::size_t kMostLenses = 2;
// More than the finest steps over the widest field have; a slip in a step has millions.
constexpr std::uint32_t kMostValues = 200000;
constexpr std::uint32_t kInitSettleDelay = 2000;  // microseconds, enough for a step of any lens

template <class T>
T ValueAs(double value) {
  if constexpr (std::is_same_v<T, double>) {
    return value;
  } else if constexpr (std::is_same_v<T, std::int32_t>) {
    return WholeOfRamp(value);
  } else {
    return static_cast<T>(UnsignedOfRamp(value));
  }
}

// Writes what the rules of a tune might refuse: a ramp looks for the best value, and finds it.
struct WriteField {
  void operator()(std::monostate) const {}
  void operator()(IOPoint Control::*lens) const {
    (tune.ControlData.*lens).Type = IOPoint::SingleType;
    (tune.ControlData.*lens).Single = value;
  }
  template <class T>
  void operator()(T Control::*member) const {
    tune.ControlData.*member = ValueAs<T>(value);
  }
  template <class T>
  void operator()(T IonSource::*member) const {
    tune.Source.*member = ValueAs<T>(value);
  }

  Tune& tune;
  double value;
};

// The values that a lens is walked through. The last one reaches the end or passes it.
class Walk {
 public:
  Walk(const RampLens& lens, Probes::ProbeTypes probe) : lens_(lens), falls_(lens.Start > lens.End) {
    const Limits limits = FieldLimits().QLimits(probe, static_cast<int>(lens.Field));
    limit_ = falls_ ? limits.Min : limits.Max;
    if (!(lens.Step > 0.0 && std::isfinite(lens.Step))) return;
    count_ = std::floor(std::abs(lens.End - lens.Start) / lens.Step + 1.0);
    const double last = At(count_ - 1.0);
    if (falls_ ? last > lens.End : last < lens.End) ++count_;
  }

  // Below 1 for a step that leads nowhere, and not a number between ends that are none.
  double Count() const { return count_; }
  void Write(std::uint32_t step, Tune& tune) const {
    const double value = falls_ ? std::max(At(step), limit_) : std::min(At(step), limit_);
    std::visit(WriteField{tune, value}, FindField(lens_.Field)->place);
  }

 private:
  double At(double step) const { return lens_.Start + (falls_ ? -step : step) * lens_.Step; }

  RampLens lens_;
  bool falls_;
  double limit_ = 0.0;
  double count_ = 0.0;
};

// The lenses that are in use, what is walked through first.
std::vector<RampLens> LensesOf(const RampStep& step) {
  const std::size_t count = std::min(step.Lenses.size(), kMostLenses);
  return {step.Lenses.begin(), step.Lenses.begin() + static_cast<std::ptrdiff_t>(count)};
}

std::wstring DescriptionOf(const std::vector<RampLens>& lenses) {
  std::wstring text = L"Ramping:\r\n";
  for (const RampLens& lens : lenses)
    text += TuneField::FieldToString(lens.Field) + L" from " + ToText(lens.Start) + L" to " +
            ToText(lens.End) + L" step " + ToText(lens.Step) + L"\r\n";
  return text;
}

// Adds an item to the last time period, with a run of this tune.
void AddItem(const Tune& tune, std::uint32_t records, Method& method) {
  const auto id = static_cast<std::uint32_t>(method.Tunes.size()) + 1;
  method.Tunes.emplace_hint(method.Tunes.end(), id, tune);
  method.TuneRuns.emplace_hint(method.TuneRuns.end(), id, TuneRun(id, records));
  method.TimePeriods.back().Sequence.push_back({id});
}

// A time period for each value of the first lens, with an item for each value of the second.
void AddItems(Tune tune, const std::vector<Walk>& walks, std::uint32_t records, Method& method) {
  for (std::uint32_t i = 0; i < walks[0].Count(); ++i) {
    TimePeriod& period = method.TimePeriods.emplace_back();
    period.Loops = 1;
    period.Timeout = MethodRules::FreeRun;
    walks[0].Write(i, tune);
    if (walks.size() == 1) AddItem(tune, records, method);
    for (std::uint32_t j = 0; walks.size() > 1 && j < walks[1].Count(); ++j) {
      walks[1].Write(j, tune);
      AddItem(tune, records, method);
    }
  }
}

}  // namespace

bool MethodRules::Create(const Tune& tune, const RampStep& step) {
  const std::vector<RampLens> lenses = LensesOf(step);
  if (lenses.empty()) {
    Method::operator=(SingleTuneMethod(L"Ramping:\r\nNothing", tune, step.Records));
    return true;
  }
  if (!step.IsSameStepType()) return Holds(TslLoadString(ModuleHandle(), kLensesMixed));
  for (const RampLens& lens : lenses)
    if (!TuneField::IsFieldRampable(lens.Field))
      return Holds(TslLoadString(ModuleHandle(), kInvalidRampField) + L" - " +
                   TuneField::FieldToString(lens.Field));

  std::vector<Walk> walks;
  double values = 1.0;
  for (const RampLens& lens : lenses) {
    walks.emplace_back(lens, tune.Source.Type);
    values *= walks.back().Count();
    if (!(walks.back().Count() >= 1.0 && values <= kMostValues))
      return Holds(
          FillText(L"%s - The step of a ramp must be greater than 0, and a ramp can have at most %d values.",
                   TuneField::FieldToString(lens.Field), kMostValues));
  }

  Method method;
  method.Desc = DescriptionOf(lenses);
  Tune first = tune;
  first.ControlData.InitSettleDelay = kInitSettleDelay;
  AddItems(first, walks, step.Records, method);
  Method::operator=(std::move(method));
  return true;
}

}  // namespace TslBL
