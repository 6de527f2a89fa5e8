#include <tslbl/tune/ramp/StepTable.h>

#include <gtest/gtest.h>

namespace {

using namespace TslBL;

Q1CalPt Row(double mz, std::map<TuneField::Id, double> fields, const std::wstring& name = L"") {
  Q1CalPt row(mz, name);
  row.Fields = std::move(fields);
  return row;
}

ByLens Skimmer(const std::map<double, double>& values) {
  return {.Field = TuneField::Skimmer, .Values = values};
}

std::vector<Q1CalPt> Updated(const std::vector<Q1CalPt>& table, const ByLens& lens) {
  StepTableFct fct(table);
  fct.Update(lens);
  return fct.QStepFctTable();
}

TEST(StepTableFct, ExtractsTheCurveOfALens) {
  const StepTableFct table({Row(322.1, {{TuneField::Skimmer, 30}}), Row(118.1, {{TuneField::Skimmer, 20}}),
                            Row(622.0, {{TuneField::CapExit, 99}})});
  EXPECT_EQ(table.ExtractByLens(TuneField::Skimmer), Skimmer({{118.1, 20}, {322.1, 30}}));
  EXPECT_EQ(table.ExtractByLens(TuneField::Q0Offset).Values.size(), 0u);
}

TEST(StepTableFct, ExtractsTheFirstOfTwoRowsOfOneMZ) {
  const StepTableFct table({Row(118.1, {{TuneField::Skimmer, 20}}), Row(118.1, {{TuneField::Skimmer, 30}})});
  EXPECT_EQ(table.ExtractByLens(TuneField::Skimmer), Skimmer({{118.1, 20}}));
}

TEST(StepTableFct, WritesAPointIntoTheRowOfItsWholeMass) {
  EXPECT_EQ(Updated({Row(322.1, {{TuneField::CapExit, 99}}, L"c")}, Skimmer({{322.4, 30}})),
            (std::vector<Q1CalPt>{Row(322.1, {{TuneField::CapExit, 99}, {TuneField::Skimmer, 30}}, L"c")}));
}

TEST(StepTableFct, WritesIntoTheFirstOfTwoRowsOfAWholeMass) {
  EXPECT_EQ(Updated({Row(322.9, {}), Row(322.1, {})}, Skimmer({{322.4, 30}})),
            (std::vector<Q1CalPt>{Row(322.9, {{TuneField::Skimmer, 30}}), Row(322.1, {})}));
}

TEST(StepTableFct, ErasesTheOldCurveAndKeepsTheRows) {
  EXPECT_EQ(Updated({Row(118.1, {{TuneField::Skimmer, 20}, {TuneField::CapExit, 9}}),
                     Row(322.1, {{TuneField::Skimmer, 30}})},
                    Skimmer({})),
            (std::vector<Q1CalPt>{Row(118.1, {{TuneField::CapExit, 9}}), Row(322.1, {})}));
}

TEST(StepTableFct, MakesRowsForOtherMassesAndSortsTheTable) {
  EXPECT_EQ(Updated({Row(622.0, {}), Row(118.1, {}, L"a")}, Skimmer({{322.1, 30}, {118.9, 20}})),
            (std::vector<Q1CalPt>{Row(118.1, {{TuneField::Skimmer, 20}}, L"a"),
                                  Row(322.1, {{TuneField::Skimmer, 30}}), Row(622.0, {})}));
}

TEST(StepTableFct, MakesARowForEachOfTwoPointsOfANewWholeMass) {
  EXPECT_EQ(
      Updated({}, Skimmer({{322.1, 30}, {322.4, 31}})),
      (std::vector<Q1CalPt>{Row(322.1, {{TuneField::Skimmer, 30}}), Row(322.4, {{TuneField::Skimmer, 31}})}));
}

TEST(StepTableFct, KeepsTheOrderWhereNoRowIsAdded) {
  EXPECT_EQ(Updated({Row(622.0, {}), Row(118.1, {})}, Skimmer({{118.2, 20}})),
            (std::vector<Q1CalPt>{Row(622.0, {}), Row(118.1, {{TuneField::Skimmer, 20}})}));
}

TEST(StepTableFct, KeepsOnePointOfEachWholeMassForALens) {
  StepTableFct table({Row(118.1, {{TuneField::Skimmer, 20}, {TuneField::CapExit, 9}}),
                      Row(322.1, {{TuneField::Skimmer, 30}}), Row(622.0, {{TuneField::Skimmer, 40}})});
  table.KeepNominalMassesFor({118, 622}, TuneField::Skimmer);
  EXPECT_EQ(table.QStepFctTable(),
            (std::vector<Q1CalPt>{Row(118.1, {{TuneField::Skimmer, 20}, {TuneField::CapExit, 9}}),
                                  Row(322.1, {}), Row(622.0, {{TuneField::Skimmer, 40}})}));
}

TEST(StepTableFct, IsACopy) {
  const std::vector<Q1CalPt> table = {Row(118.1, {})};
  StepTableFct fct(table);
  fct.Update(Skimmer({{118.1, 20}}));
  EXPECT_EQ(table, (std::vector<Q1CalPt>{Row(118.1, {})}));
}

}  // namespace
