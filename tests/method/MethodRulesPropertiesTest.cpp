// Tests: MethodRules.cpp, MethodRulesStructure.cpp, MethodRulesTiming.cpp, MethodRulesValidate.cpp.

#include <tslbl/method/MethodRules.h>

#include <RecordCheck.h>
#include <functional>
#include <memory>
#include <random>
#include <stdexcept>

#include <method/MethodModel.h>

// What holds whatever is done to a method, and whatever method it is done to.

namespace {

using namespace tests;

using R = MethodRules;

constexpr unsigned kSeed = 20261123;

class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}

  std::uint32_t Below(std::uint32_t count) {
    return std::uniform_int_distribution<std::uint32_t>(0, count - 1)(engine_);
  }
  bool OneIn(std::uint32_t count) { return Below(count) == 0; }

 private:
  std::mt19937 engine_;
};

Tune RandomTune(Random& random) {
  Tune tune = TuneOf(random.OneIn(3) ? "-100-200" : "+100-200");
  Control& control = tune.ControlData;
  control.MZLow = 10 * random.Below(100) + 10;
  control.MZHi = control.MZLow + random.Below(300);
  control.CapExit.Single = 160.0 - 25 * random.Below(5);
  control.PulseCountDelay = 1000 + random.Below(5);
  control.StepSettleDelay = random.Below(20);
  control.ScansPerSpec = 1 + random.Below(3);
  if (random.OneIn(4)) tune.Source.Type = Probes::LowFlowESI;
  return tune;
}

// An id that is there, or else, once in so many times, one that need not be.
template <class Map>
std::uint32_t RandomId(Random& random, const Map& map, std::uint32_t oneIn) {
  if (random.OneIn(oneIn)) return random.OneIn(2) ? 0 : 1 + random.Below(8);
  return std::next(map.begin(), random.Below(static_cast<std::uint32_t>(map.size())))->first;
}

// A method in which tunes and runs are shared. Each thing in it has a fault once in so many times.
Method RandomMethod(Random& random, std::uint32_t oneIn) {
  Method method;
  for (std::uint32_t i = random.Below(4) + 1; i > 0; --i)
    method.Tunes[1 + random.Below(5)] = RandomTune(random);
  for (std::uint32_t i = random.Below(6) + 1; i > 0; --i) {
    TuneRun run(RandomId(random, method.Tunes, oneIn), random.OneIn(oneIn) ? 0 : 1 + random.Below(3));
    if (random.OneIn(oneIn)) run.Info.Type = DDInfo::TuneChange;
    run.SettleDelay = random.Below(2) * 77;
    method.TuneRuns[1 + random.Below(6)] = run;
  }
  for (std::uint32_t tp = random.OneIn(oneIn) ? 0 : 1 + random.Below(3); tp > 0; --tp) {
    TimePeriod& period = method.TimePeriods.emplace_back();
    period.Timeout = random.Below(200000);
    period.Loops = random.OneIn(oneIn) ? 0 : 1 + random.Below(3);
    period.SettleDelay = random.Below(2) * 77;
    for (std::uint32_t si = random.OneIn(oneIn) ? 0 : 1 + random.Below(3); si > 0; --si) {
      auto& item = period.Sequence.emplace_back();
      for (std::uint32_t tr = random.OneIn(oneIn) ? 0 : 1 + random.Below(2); tr > 0; --tr)
        item.push_back(RandomId(random, method.TuneRuns, oneIn));
    }
  }
  if (random.OneIn(2)) method.WValveMethod(R(0.5).QValveMethod());
  return method;
}

// A new tune has the time at which it was made.
Method Undated(Method method) {
  for (auto& [id, tune] : method.Tunes) tune.Info.LastSave = 0;
  return method;
}

// The same edit of the rules and of the model.
struct Edit {
  std::string name;
  std::function<void(R&)> ofRules;
  std::function<bool(MethodModel&)> ofModel;
};

// What an edit is made of.
struct Arguments {
  Arguments(Random& random, const Method& method)
      : tp(Index(random, method.TimePeriods.size())),
        si(tp < method.TimePeriods.size() ? Index(random, method.TimePeriods[tp].Sequence.size()) : 0),
        tr(random.Below(3) / 2),
        probe(static_cast<Probes::ProbeTypes>(random.Below(3))),
        toEnd(random.OneIn(2)),
        type(static_cast<DDInfo::Types>(random.OneIn(2) ? DDInfo::TuneChange : random.Below(3))),
        number(random.Below(4)),
        timeout(random.OneIn(10) ? R::FreeRun : random.Below(200000)),
        seconds(random.Below(25) / 10.0),
        tune(RandomTune(random)) {}

  // Now and then beyond the end.
  static std::uint32_t Index(Random& random, std::size_t count) {
    return random.Below(static_cast<std::uint32_t>(count) + (random.OneIn(8) || count == 0 ? 1 : 0));
  }
  R::Direction Direction() const { return toEnd ? R::ToEnd : R::ToBeginning; }

  std::uint32_t tp, si, tr;
  Probes::ProbeTypes probe;
  bool toEnd;
  DDInfo::Types type;
  std::uint32_t number;
  std::uint32_t timeout;
  double seconds;
  Tune tune;
};

using Model = MethodModel;

std::vector<Edit> StructureEdits(const std::shared_ptr<const Arguments>& a) {
  return {
      {"InsertTimePeriod", [=](R& r) { r.InsertTimePeriod(); },
       [=](Model& m) { return m.InsertTimePeriod(nullptr); }},
      {"InsertTimePeriod of a probe", [=](R& r) { r.InsertTimePeriod(a->probe); },
       [=](Model& m) { return m.InsertTimePeriod(&a->probe); }},
      {"RemoveTimePeriod", [=](R& r) { r.RemoveTimePeriod(a->tp); },
       [=](Model& m) { return m.RemoveTimePeriod(a->tp); }},
      {"MoveTimePeriod", [=](R& r) { r.MoveTimePeriod(a->tp, a->Direction()); },
       [=](Model& m) { return m.MoveTimePeriod(a->tp, a->toEnd); }},
      {"InsertSeqItem", [=](R& r) { r.InsertSeqItem(a->tp); },
       [=](Model& m) { return m.InsertSeqItem(a->tp, nullptr); }},
      {"InsertSeqItem of a probe", [=](R& r) { r.InsertSeqItem(a->tp, a->probe); },
       [=](Model& m) { return m.InsertSeqItem(a->tp, &a->probe); }},
      {"RemoveSeqItem", [=](R& r) { r.RemoveSeqItem(a->tp, a->si); },
       [=](Model& m) { return m.RemoveSeqItem(a->tp, a->si); }},
      {"MoveSeqItem", [=](R& r) { r.MoveSeqItem(a->tp, a->si, a->Direction()); },
       [=](Model& m) { return m.MoveSeqItem(a->tp, a->si, a->toEnd); }},
      {"AddTuneRun", [=](R& r) { r.AddTuneRun(a->probe); }, [=](Model& m) { return m.AddTuneRun(a->probe); }},
      {"WTRDDType", [=](R& r) { r.WTRDDType(a->tp, a->si, a->tr, a->type); },
       [=](Model& m) { return m.SetType(a->tp, a->si, a->tr, a->type); }},
      {"Sort", [=](R& r) { r.Sort(); }, [=](Model& m) { return m.Sort(); }},
      {"WTRTune", [=](R& r) { r.WTRTune(a->tp, a->si, a->tr, a->tune); },
       [=](Model& m) { return m.SetTune(a->tp, a->si, a->tr, a->tune); }},
  };
}

std::vector<Edit> FieldEdits(const std::shared_ptr<const Arguments>& a) {
  return {
      {"WTRNumRecs", [=](R& r) { r.WTRNumRecs(a->tp, a->si, a->tr, a->number); },
       [=](Model& m) {
         return m.SetOfRun(
             a->tp, a->si, a->tr, [](TuneRun & run) -> auto& { return run.Records; }, a->number);
       }},
      {"WTRSettleDelay", [=](R& r) { r.WTRSettleDelay(a->tp, a->si, a->tr, a->number); },
       [=](Model& m) {
         return m.SetOfRun(
             a->tp, a->si, a->tr, [](TuneRun & run) -> auto& { return run.SettleDelay; }, a->number);
       }},
      {"WTPSettleDelay", [=](R& r) { r.WTPSettleDelay(a->tp, a->number); },
       [=](Model& m) {
         return m.SetOfPeriod(
             a->tp, [](TimePeriod & period) -> auto& { return period.SettleDelay; }, a->number);
       }},
      {"WTPNumLoops", [=](R& r) { r.WTPNumLoops(a->tp, a->number); },
       [=](Model& m) {
         return m.SetOfPeriod(
             a->tp, [](TimePeriod & period) -> auto& { return period.Loops; }, a->number);
       }},
      {"WTPTimeout", [=](R& r) { r.WTPTimeout(a->tp, a->timeout); },
       [=](Model& m) { return m.SetTimeout(a->tp, a->timeout); }},
      {"WPolSwitchTime", [=](R& r) { r.WPolSwitchTime(a->seconds); },
       [=](Model& m) { return m.SetSwitchTime(a->seconds); }},
      {"ClearModified", [=](R& r) { r.ClearModified(); },
       [=](Model& m) {
         m.modified = false;
         return true;
       }},
  };
}

Edit RandomEdit(Random& random, const Method& method) {
  // Rarely, so that methods grow.
  if (random.OneIn(30)) {
    const Method other = RandomMethod(random, 20);
    return {"operator=", [=](R& r) { r = other; }, [=](Model& m) { return m.Take(other); }};
  }
  const auto a = std::make_shared<const Arguments>(random, method);
  const std::vector<Edit> edits = random.OneIn(3) ? FieldEdits(a) : StructureEdits(a);
  return edits[random.Below(static_cast<std::uint32_t>(edits.size()))];
}

// Makes the edit, which must throw where it asks for what is not there.
void Make(const Edit& edit, R& rules, MethodModel& model) {
  if (edit.ofModel(model)) {
    EXPECT_NO_THROW(edit.ofRules(rules));
  } else {
    EXPECT_THROW(edit.ofRules(rules), std::out_of_range);
  }
}

TEST(AnySequenceOfEdits, IsThatOfThePlainModel) {
  constexpr int kEdits = 10000;
  SCOPED_TRACE(kSeed);
  Random random(kSeed);
  const Method start = RandomMethod(random, 20);
  R rules(kSwitchTime, start);
  MethodModel model(kSwitchTime, start);
  std::map<std::string, int> made;
  std::size_t largest = 0;
  for (int i = 0; i < kEdits; ++i) {
    const Edit edit = RandomEdit(random, rules);
    SCOPED_TRACE("edit " + std::to_string(i) + ", " + edit.name + " of " + SequencesOf(rules));
    Make(edit, rules, model);
    ASSERT_EQ(SequencesOf(rules), SequencesOf(model.method));
    ASSERT_EQ(KeysOf(rules.Tunes), KeysOf(model.method.Tunes));
    ASSERT_EQ(InitSettleDelaysOf(rules), InitSettleDelaysOf(model.method));
    ASSERT_EQ(RunDelaysOf(rules), RunDelaysOf(model.method));
    ASSERT_EQ(PeriodDelaysOf(rules), PeriodDelaysOf(model.method));
    ASSERT_EQ(Undated(rules), Undated(model.method));
    ASSERT_EQ(rules.IsModified(), model.modified);
    ASSERT_EQ(Undated(rules.operator Method()), Undated(model.Stored()));
    ++made[edit.name];
    largest = std::max(largest, rules.TuneRuns.size());
  }
  EXPECT_EQ(made.size(), 20u);
  for (const auto& [name, count] : made) EXPECT_GT(count, 50) << name;
  EXPECT_GT(largest, 15u);
}

// ---- Any method ------------------------------------------------------------------------------

// The faults of its structure, found without an order.
bool IsSound(const Method& method) {
  bool sound = !method.TimePeriods.empty() && method.Tunes.count(0) == 0 && method.TuneRuns.count(0) == 0;
  for (const auto& [id, run] : method.TuneRuns)
    sound = sound && run.Records > 0 && method.Tunes.count(run.TuneId) > 0;
  for (const TimePeriod& period : method.TimePeriods) {
    sound = sound && period.Loops > 0 && !period.Sequence.empty();
    for (const auto& item : period.Sequence) {
      sound = sound && !item.empty();
      for (const std::uint32_t id : item) sound = sound && method.TuneRuns.count(id) > 0;
      sound = sound && method.TuneRuns.at(item.back()).Info.Type != DDInfo::TuneChange;
    }
  }
  return sound;
}

TEST(AnyMethod, IsAcceptedIfItIsSound) {
  constexpr int kRounds = 5000;
  SCOPED_TRACE(kSeed + 1);
  Random random(kSeed + 1);
  int accepted = 0;
  for (int round = 0; round < kRounds; ++round) {
    const R rules(kSwitchTime, RandomMethod(random, 10 + 190 * random.Below(2)));
    const bool valid = rules.Validate();
    const std::wstring fault = rules.QLastError();
    ASSERT_EQ(valid, IsSound(rules)) << round << " " << testing::PrintToString(fault);
    ASSERT_EQ(valid, fault.empty()) << round;
    ASSERT_EQ(valid, rules.QFaults().empty()) << round;
    accepted += valid ? 1 : 0;
  }
  EXPECT_GT(accepted, kRounds / 4);
  EXPECT_LT(accepted, kRounds * 3 / 4);
}

TEST(AnyMethod, ThatWasTakenIsTheSameTakenAgain) {
  SCOPED_TRACE(kSeed + 2);
  Random random(kSeed + 2);
  for (int round = 0; round < 2000; ++round) {
    const Method once = R(kSwitchTime, RandomMethod(random, 10 + 190 * random.Below(2)));
    const Method again = R(kSwitchTime, once);
    ASSERT_EQ(again, once) << round;
  }
}

TEST(AnyMethod, ThatIsAcceptedSurvivesBothForms) {
  SCOPED_TRACE(kSeed + 3);
  Random random(kSeed + 3);
  int accepted = 0;
  for (int round = 0; round < 2000; ++round) {
    R rules(kSwitchTime, RandomMethod(random, 10 + 190 * random.Below(2)));
    if (!rules.Validate()) continue;
    for (auto& [id, run] : rules.TuneRuns) run.Records = 1;  // bytes keep no other number
    ++accepted;
    ASSERT_EQ(FromBytes<Method>(ToBytes<Method>(rules)), static_cast<const Method&>(rules));
    ASSERT_TRUE(R(kSwitchTime, FromXml<Method>(ToXml<Method>(rules))).Validate());
  }
  EXPECT_GT(accepted, 500);
}

}  // namespace
