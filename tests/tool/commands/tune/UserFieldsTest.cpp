#include <tool/commands/tune/FindUserField.h>

#include <gtest/gtest.h>

#include <tool/commands/tune/FieldText.h>
#include <tool/commands/tune/UserFields.h>
#include <set>
#include <string>

namespace tests {
namespace {

using namespace TslBL;
using TslTool::FieldGroup;
using TslTool::UserField;

TEST(UserFields, OfOneNameStandTogether) {
  std::set<std::string> ended;
  std::string before;
  for (const FieldGroup& group : TslTool::UserFieldGroups())
    for (const UserField& field : group.fields) {
      if (before == field.name) continue;
      EXPECT_TRUE(ended.insert(field.name).second) << field.name;
      before = field.name;
    }
}

TEST(UserFields, OfATuneHaveOneRowForEachName) {
  for (const Probes::ProbeTypes probe : {Probes::ESI, Probes::APCI, Probes::LowFlowESI}) {
    for (const Control::Types type : {Control::Scan, Control::Sim}) {
      Tune tune;
      tune.Source.Type = probe;
      tune.ControlData.Type = type;
      std::set<std::string> names;
      for (const FieldGroup& group : TslTool::UserFieldGroups())
        for (const UserField& field : group.fields)
          EXPECT_TRUE(!HasField(tune, field) || names.insert(field.name).second) << field.name;
    }
  }
}

// Where the rows differ from the library's is in what a SIM has in the places of a scan's range.
TEST(UserFields, ApplyToTheTunesThatHaveTheField) {
  for (const FieldGroup& group : TslTool::UserFieldGroups())
    for (const UserField& field : group.fields)
      EXPECT_EQ(field.appliesTo == FindField(field.id)->traits.appliesTo,
                std::set<std::string>({"MZ", "MZLow", "SimWithSpan"}).count(field.name) == 0)
          << field.name;
}

TEST(UserFields, EachValueOfAFieldWithLimitsHasAName) {
  DevTuneRules rules(Probes::ESI);
  for (std::uint32_t id = 0; Probes::IsUsable(static_cast<Probes::ProbeTypes>(id)); ++id)
    EXPECT_LT(id, TslTool::NamesOf<Probes::ProbeTypes>().size());
  const auto count = [&](TuneField::Id id) { return static_cast<std::size_t>(rules.QLimitsNow(id).Max) + 1; };
  EXPECT_EQ(TslTool::NamesOf<PolarityTypes>().size(), count(TuneField::PolarityType));
  EXPECT_EQ(TslTool::NamesOf<IonSource::TempLevels>().size(), count(TuneField::EndPlateTemp));
  EXPECT_EQ(TslTool::NamesOf<Control::Types>().size(), count(TuneField::ControlType));
  EXPECT_EQ(TslTool::NamesOf<Control::Q1MZTypes>().size(), count(TuneField::Q1MZType));
  EXPECT_EQ(TslTool::NamesOf<Control::SimWithSpanTypes>().size(), Control::Span2_0 + 1u);
}

TEST(UserFields, AreFoundByNumber) {
  const Tune tune;
  EXPECT_EQ(TslTool::UserNameOf(tune, TuneField::CapExit), "CapExit");
  EXPECT_EQ(TslTool::UserNameOf(tune, TuneField::MZCalPts), "MZCalPts");
  EXPECT_EQ(TslTool::UserNameOf(tune, TuneField::Q1CalPts), "Q1CalPts");
  EXPECT_EQ(TslTool::FindUserField(tune, TuneField::CoronaVoltage), nullptr) << "of another probe";
}

}  // namespace
}  // namespace tests
