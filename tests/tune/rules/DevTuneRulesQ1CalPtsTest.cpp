#include <limits>
#include <vector>

#include <tune/rules/Rules.h>

namespace {

using namespace tests;

using Pairs = DevTuneRules::Pairs;
using Fields = std::map<TuneField::Id, double>;

constexpr const wchar_t* kNotFound = L"The specified calibrant could not be found.";
constexpr const wchar_t* kExists = L"There is already a calibrant with that m/z.";
constexpr const wchar_t* kClash = L"There is already a calibrant with that name.";
constexpr const wchar_t* kNotDefined = L"The specified field is not defined for this calibration point.";
constexpr const wchar_t* kInvalidField = L"Invalid Q1 step calibration field.";
constexpr const wchar_t* kBadMz = L"m/z is out of range.  Valid values are 5.00 to 3000.00.";
constexpr const wchar_t* kBadCapExit =
    L"Capillary Exit is out of range.  Valid values are -400.00 to 400.00.";

Q1CalPt Named(double mz, const wchar_t* name, const Fields& fields = {}) {
  Q1CalPt point(mz, name);
  point.Fields = fields;
  return point;
}

// Not in the order of m/z, as a list may be.
std::vector<Q1CalPt> Table() {
  return {Named(500, L"mid", {{TuneField::CapExit, 50}, {TuneField::Skimmer, 5}}),
          Named(100, L"low", {{TuneField::Skimmer, 1}}), Named(1000, L"high", {{TuneField::CapExit, 100}})};
}

Tune WithTable(std::vector<Q1CalPt> table) {
  Tune tune = SampleTune(Probes::ESI);
  tune.Q1CalPts = std::move(table);
  return tune;
}

// What a change comes to: its text, with the table as it is afterwards. A change of the
// table never marks the tune.
template <class Change>
void ExpectTable(const std::vector<Q1CalPt>& before, Change change, ErrTypes result, const std::wstring& text,
                 const std::vector<Q1CalPt>& after) {
  DevTuneRules rules(WithTable(before));
  EXPECT_EQ(change(rules), result);
  EXPECT_EQ(LastErrorOf(rules), text);
  EXPECT_EQ(TuneBytes(rules), TuneBytes(WithTable(after)));
  EXPECT_FALSE(rules.IsModified());
}
template <class Change>
void ExpectTableRefused(Change change, const std::wstring& text) {
  ExpectTable(Table(), change, kError, text, Table());
}

// ---- Rows ----------------------------------------------------------------------------------

TEST(Q1CalPtRows, AreListedInTheirOrder) {
  const std::vector<std::pair<double, std::wstring>> rows = {{500, L"mid"}, {100, L"low"}, {1000, L"high"}};
  EXPECT_EQ(DevTuneRules(WithTable(Table())).QQ1CalPts(), rows);
  EXPECT_TRUE(DevTuneRules(WithTable({})).QQ1CalPts().empty());
}

TEST(Q1CalPtRows, AreCleared) {
  const auto clear = [](DevTuneRules& r) {
    r.ClearQ1CalPts();
    return kNoError;
  };
  ExpectTable(Table(), clear, kNoError, L"", {});
}

TEST(Q1CalPtRows, AreAppendedWithoutFields) {
  std::vector<Q1CalPt> after = Table();
  after.push_back(Named(200, L"new"));
  // The search that proves the row absent leaves its text.
  ExpectTable(
      Table(), [](DevTuneRules& r) { return r.AddQ1CalPt(200, L"new"); }, kNoError, kNotFound, after);
}

TEST(Q1CalPtRows, AreAppendedAtTheEndsOfTheMzRange) {
  for (const double mz : {5.0, 3000.0})
    ExpectTable({}, [=](DevTuneRules& r) { return r.AddQ1CalPt(mz, L""); }, kNoError, kNotFound,
                {Named(mz, L"")});
}

TEST(Q1CalPtRows, AreNotAppendedOutsideTheMzRange) {
  for (const double mz : {4.99, 3000.01, -1.0})
    ExpectTableRefused([=](DevTuneRules& r) { return r.AddQ1CalPt(mz, L""); }, kBadMz);
}

TEST(Q1CalPtRows, AreNotAppendedTwice) {
  for (const double mz : {100.0, 100 + 1e-7, 100 - 1e-7})
    ExpectTableRefused([=](DevTuneRules& r) { return r.AddQ1CalPt(mz, L"other"); }, kExists);
}

TEST(Q1CalPtRows, MayHaveOneName) {
  ExpectTable({Named(100, L"a")}, [](DevTuneRules& r) { return r.AddQ1CalPt(200, L"a"); }, kNoError,
              kNotFound, {Named(100, L"a"), Named(200, L"a")});
}

TEST(Q1CalPtRows, AreTwoBeyondAMillionth) {
  ExpectTable({Named(100, L"a")}, [](DevTuneRules& r) { return r.AddQ1CalPt(100.0000011, L"b"); }, kNoError,
              kNotFound, {Named(100, L"a"), Named(100.0000011, L"b")});
}

TEST(Q1CalPtRows, AreOneUpToAMillionth) {
  ExpectTable({Named(0, L"a")}, [](DevTuneRules& r) { return r.DelQ1CalPt(1e-6); }, kNoError, L"", {});
}

TEST(Q1CalPtRows, AreDeletedInPlace) {
  const std::vector<Q1CalPt> all = Table();
  ExpectTable(all, [](DevTuneRules& r) { return r.DelQ1CalPt(100); }, kNoError, L"", {all[0], all[2]});
  ExpectTable(all, [](DevTuneRules& r) { return r.DelQ1CalPt(500 + 9e-7); }, kNoError, L"", {all[1], all[2]});
  ExpectTableRefused([](DevTuneRules& r) { return r.DelQ1CalPt(501); }, kNotFound);
}

TEST(Q1CalPtRows, AreFoundFromTheFrontOfTheList) {
  ExpectTable({Named(100.0000008, L"first"), Named(100, L"second")},
              [](DevTuneRules& r) { return r.DelQ1CalPt(100); }, kNoError, L"", {Named(100, L"second")});
}

TEST(Q1CalPtRows, HaveANameToBeRead) {
  std::wstring name = L"before";
  const auto read = [&](double mz) {
    return [&name, mz](DevTuneRules& r) { return r.QQ1CalPtName(mz, name); };
  };
  ExpectTable(Table(), read(1000), kNoError, L"", Table());
  EXPECT_EQ(name, L"high");
  ExpectTableRefused(read(999), kNotFound);
  EXPECT_EQ(name, L"high");
}

TEST(Q1CalPtRows, HaveANameToBeWritten) {
  std::vector<Q1CalPt> after = Table();
  after[1].Name = L"high";
  ExpectTable(
      Table(), [](DevTuneRules& r) { return r.WQ1CalPtName(100, L"high"); }, kNoError, L"", after);
  ExpectTableRefused([](DevTuneRules& r) { return r.WQ1CalPtName(101, L"high"); }, kNotFound);
}

// ---- Another m/z ---------------------------------------------------------------------------

auto Moved(double from, double to) {
  return [=](DevTuneRules& r) { return r.ChangeQ1CalPtMZ(from, to); };
}

TEST(Q1CalPtMz, IsChangedInPlace) {
  std::vector<Q1CalPt> after = Table();
  after[1].MZ = 2000;
  ExpectTable(Table(), Moved(100, 2000), kNoError, kNotFound, after);
}

TEST(Q1CalPtMz, ThatIsTheSameStays) {
  ExpectTable(Table(), Moved(100, 100), kNoError, L"", Table());
  ExpectTable(Table(), Moved(100, 100 + 9e-7), kNoError, L"", Table());
  // The m/z asked for are compared, not that of the row.
  ExpectTable(Table(), Moved(100 + 9e-7, 100 + 1.8e-6), kNoError, L"", Table());
}

TEST(Q1CalPtMz, OfAnAbsentRowIsNotFound) {
  ExpectTableRefused(Moved(101, 2000), kNotFound);
  ExpectTableRefused(Moved(101, 101), kNotFound);
  ExpectTableRefused(Moved(101, 4000), kNotFound);
}

TEST(Q1CalPtMz, KeepsTheLimits) {
  ExpectTableRefused(Moved(100, 4.99), kBadMz);
  ExpectTableRefused(Moved(100, 3000.01), kBadMz);
}

// The text is about the name, though the m/z is what clashes.
TEST(Q1CalPtMz, OfAnotherRowClashes) {
  ExpectTableRefused(Moved(100, 500), kClash);
  ExpectTableRefused(Moved(100, 500 + 1e-7), kClash);
}

TEST(Q1CalPtMz, OfARowOutOfRangeStaysWhereItIs) {
  ExpectTable({Named(4, L"")}, Moved(4, 4), kNoError, L"", {Named(4, L"")});
}

// ---- Fields --------------------------------------------------------------------------------

constexpr TuneField::Id kSteppable[] = {TuneField::CapExit,      TuneField::Skimmer,  TuneField::Q0RFAmpl,
                                        TuneField::Q0Offset,     TuneField::Q0Exit1,  TuneField::Q0Exit2,
                                        TuneField::Q1Resolution, TuneField::Q1Offset, TuneField::Q1IonGuide};

bool Steppable(std::uint32_t id) {
  for (const TuneField::Id field : kSteppable)
    if (field == id) return true;
  return false;
}

TEST(Q1CalPtFields, AreTheNineThatFollowMz) {
  for (std::uint32_t id = 0; id <= TuneField::kFieldCount; ++id) {
    SCOPED_TRACE(id);
    const auto field = static_cast<TuneField::Id>(id);
    Pairs pairs = {{1, 2}};
    double value = 0.0;
    const std::vector<std::function<ErrTypes(DevTuneRules&)>> operations = {
        [&](DevTuneRules& r) { return r.QFieldQ1CalPts(field, pairs); },
        [&](DevTuneRules& r) {
          return r.WFieldQ1CalPts(field, {{9e9, 9e9}});
        },
        [&](DevTuneRules& r) { return r.QQ1CalPtField(100, field, value); },
        [&](DevTuneRules& r) { return r.WQ1CalPtField(100, field, 9e9); },
        [&](DevTuneRules& r) { return r.RemoveQ1CalPtField(100, field); }};
    for (const auto& operation : operations) {
      DevTuneRules rules(WithTable({Named(100, L"")}));
      const ErrTypes result = operation(rules);
      const std::wstring text = LastErrorOf(rules);
      EXPECT_EQ(text == kInvalidField, !Steppable(id));
      EXPECT_TRUE(Steppable(id) || result == kError);
      EXPECT_FALSE(rules.IsModified());
    }
  }
}

TEST(Q1CalPtFields, ThatCannotFollowMzLeaveWhatWasAskedFor) {
  DevTuneRules rules(WithTable({Named(100, L"", {{TuneField::Q1CoarseResolution, 5}})}));
  Pairs pairs = {{1, 2}};
  double value = 7;
  EXPECT_EQ(rules.QFieldQ1CalPts(TuneField::Q1CoarseResolution, pairs), kError);
  EXPECT_EQ(rules.QQ1CalPtField(100, TuneField::Q1CoarseResolution, value), kError);
  EXPECT_EQ(pairs, (Pairs{{1, 2}}));
  EXPECT_EQ(value, 7.0);
}

TEST(Q1CalPtField, IsReadAtItsRow) {
  DevTuneRules rules(WithTable(Table()));
  double value = -1;
  EXPECT_EQ(rules.QQ1CalPtField(1000 - 9e-7, TuneField::CapExit, value), kNoError);
  EXPECT_EQ(value, 100.0);
  EXPECT_EQ(LastErrorOf(rules), L"");
}

TEST(Q1CalPtField, IsNotReadWhereItIsNot) {
  double value = -1;
  const auto read = [&](double mz) {
    return [&value, mz](DevTuneRules& r) { return r.QQ1CalPtField(mz, TuneField::CapExit, value); };
  };
  ExpectTableRefused(read(100), kNotDefined);
  ExpectTableRefused(read(101), kNotFound);
  EXPECT_EQ(value, -1.0);
}

TEST(Q1CalPtField, IsSetOrAdded) {
  std::vector<Q1CalPt> after = Table();
  after[0].Fields[TuneField::CapExit] = 400;
  ExpectTable(
      Table(), [](DevTuneRules& r) { return r.WQ1CalPtField(500, TuneField::CapExit, 400); }, kNoError, L"",
      after);
  after = Table();
  after[1].Fields[TuneField::CapExit] = -400;
  ExpectTable(
      Table(), [](DevTuneRules& r) { return r.WQ1CalPtField(100, TuneField::CapExit, -400); }, kNoError, L"",
      after);
}

TEST(Q1CalPtField, KeepsTheLimitsOfEachField) {
  const std::pair<double, const wchar_t*> limits[] = {
      {400, L"Capillary Exit"}, {100, L"Skimmer"},          {800, L"Q0 RF Amplitude"},
      {30, L"Q0 Offset"},       {200, L"Q0 Exit Lens 1"},   {200, L"Q0 Exit Lens 2"},
      {99, L"Q1 Resolution"},   {90, L"Q1 Offset Voltage"}, {100, L"Q1 IonGuide"}};
  for (std::size_t i = 0; i < std::size(kSteppable); ++i) {
    const auto& [high, name] = limits[i];
    const double low = kSteppable[i] == TuneField::Q0RFAmpl ? 0.0 : -high;
    for (const double good : {low, high})
      EXPECT_EQ(DevTuneRules(WithTable(Table())).WQ1CalPtField(500, kSteppable[i], good), kNoError);
    for (const double bad : {low - 0.01, high + 0.01})
      ExpectTableRefused([&](DevTuneRules& r) { return r.WQ1CalPtField(500, kSteppable[i], bad); },
                         OutOfRange(name, low, high));
  }
}

TEST(Q1CalPtField, IsCheckedBeforeItsRowIsLookedFor) {
  ExpectTableRefused([](DevTuneRules& r) { return r.WQ1CalPtField(101, TuneField::CapExit, 401); },
                     kBadCapExit);
  ExpectTableRefused([](DevTuneRules& r) { return r.WQ1CalPtField(101, TuneField::CapExit, 400); },
                     kNotFound);
}

TEST(Q1CalPtField, IsRemoved) {
  std::vector<Q1CalPt> after = Table();
  after[0].Fields.erase(TuneField::CapExit);
  ExpectTable(
      Table(), [](DevTuneRules& r) { return r.RemoveQ1CalPtField(500, TuneField::CapExit); }, kNoError, L"",
      after);
}

TEST(Q1CalPtField, ThatIsNotThereNeedsNoRemoval) {
  ExpectTable(
      Table(), [](DevTuneRules& r) { return r.RemoveQ1CalPtField(100, TuneField::CapExit); }, kNoError, L"",
      Table());
  ExpectTableRefused([](DevTuneRules& r) { return r.RemoveQ1CalPtField(101, TuneField::CapExit); },
                     kNotFound);
}

// ---- Curves --------------------------------------------------------------------------------

auto Curve(const Pairs& pairs, TuneField::Id field = TuneField::CapExit) {
  return [=](DevTuneRules& r) { return r.WFieldQ1CalPts(field, pairs); };
}

TEST(FieldQ1CalPts, AreReadInTheOrderOfTheList) {
  DevTuneRules rules(WithTable(Table()));
  Pairs pairs = {{7, 7}};
  EXPECT_EQ(rules.QFieldQ1CalPts(TuneField::CapExit, pairs), kNoError);
  EXPECT_EQ(pairs, (Pairs{{500, 50}, {1000, 100}}));
  EXPECT_EQ(rules.QFieldQ1CalPts(TuneField::Skimmer, pairs), kNoError);
  EXPECT_EQ(pairs, (Pairs{{500, 5}, {100, 1}}));
  EXPECT_EQ(rules.QFieldQ1CalPts(TuneField::Q0Exit1, pairs), kNoError);
  EXPECT_TRUE(pairs.empty());
}

TEST(FieldQ1CalPts, OfAnEmptyTableMakeRows) {
  ExpectTable({}, Curve({{100, 10}, {200, 20}}), kNoError, kNotFound,
              {Named(100, L"MZ 100.00", {{TuneField::CapExit, 10}}),
               Named(200, L"MZ 200.00", {{TuneField::CapExit, 20}})});
}

TEST(FieldQ1CalPts, NameNewRowsWithTwoDecimals) {
  ExpectTable({}, Curve({{1234.567, 1}, {5, 2}}), kNoError, kNotFound,
              {Named(1234.567, L"MZ 1234.57", {{TuneField::CapExit, 1}}),
               Named(5, L"MZ 5.00", {{TuneField::CapExit, 2}})});
}

TEST(FieldQ1CalPts, ReplaceTheCurveOfTheField) {
  std::vector<Q1CalPt> after = Table();
  after[0].Fields[TuneField::CapExit] = 55;
  after[1].Fields[TuneField::CapExit] = 11;
  after[2].Fields.erase(TuneField::CapExit);
  after.push_back(Named(2000, L"MZ 2000.00", {{TuneField::CapExit, 22}}));
  ExpectTable(Table(), Curve({{100, 11}, {2000, 22}, {500, 55}}), kNoError, kNotFound, after);
}

TEST(FieldQ1CalPts, OfRowsThatAreThereLeaveNoText) {
  std::vector<Q1CalPt> after = Table();
  after[0].Fields[TuneField::CapExit] = 1;
  after[2].Fields[TuneField::CapExit] = 2;
  ExpectTable(Table(), Curve({{500 + 9e-7, 1}, {1000 - 9e-7, 2}}), kNoError, L"", after);
}

TEST(FieldQ1CalPts, OfNoneRemoveTheFieldAndNoRow) {
  std::vector<Q1CalPt> after = Table();
  for (Q1CalPt& point : after) point.Fields.erase(TuneField::CapExit);
  ExpectTable(Table(), Curve({}), kNoError, L"", after);
}

TEST(FieldQ1CalPts, OfOneMzTwiceTakeTheFirst) {
  ExpectTable({}, Curve({{100, 1}, {100, 2}}), kNoError, kNotFound,
              {Named(100, L"MZ 100.00", {{TuneField::CapExit, 1}})});
}

TEST(FieldQ1CalPts, WithABadValueChangeNothing) {
  ExpectTableRefused(Curve({{2000, 1}, {2100, 401}}), kBadCapExit);
  ExpectTableRefused(Curve({{4, 1}, {2100, -401}}), kBadCapExit);
}

TEST(FieldQ1CalPts, WithABadMzKeepTheRowsThatWereAdded) {
  std::vector<Q1CalPt> after = Table();
  after.push_back(Named(2000, L"MZ 2000.00"));
  ExpectTable(Table(), Curve({{500, 1}, {2000, 2}, {4, 3}, {2500, 4}}), kError, kBadMz, after);
}

TEST(FieldQ1CalPts, OfEachFieldAreItsOwn) {
  for (const TuneField::Id field : kSteppable) {
    SCOPED_TRACE(field);
    std::vector<Q1CalPt> after = {Named(300, L"", {{TuneField::MassDAC, 1}})};
    const std::vector<Q1CalPt> before = after;
    after[0].Fields[field] = 3.5;
    ExpectTable(before, Curve({{300, 3.5}}, field), kNoError, L"", after);
  }
}

// ---- Any other numbers ---------------------------------------------------------------------

TEST(Q1CalPtRows, ThatAreNoNumbersAreNeverFound) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  DevTuneRules rules(WithTable({}));
  EXPECT_EQ(rules.AddQ1CalPt(kNaN, L"x"), kNoError) << "passes the limits";
  EXPECT_EQ(rules.DelQ1CalPt(kNaN), kError);
  EXPECT_EQ(LastErrorOf(rules), kNotFound);
}

TEST(Q1CalPtRows, KeepTheMarkOfAnEarlierChange) {
  DevTuneRules rules(WithTable(Table()));
  rules.WComment(L"changed");
  rules.ClearQ1CalPts();
  EXPECT_TRUE(rules.IsModified());
}

}  // namespace
