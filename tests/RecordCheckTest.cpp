// The check of all records sees what it is there to see: on a record made up for it, with faults.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <RecordCheck.h>
#include <tslbl/records/CSSeries.h>

namespace {

using namespace TslBL;
using namespace tests;
using testing::ElementsAre;
using testing::IsEmpty;

struct Needle {
  double Length = 1.0;
  bool Blunt = false;
};

enum Kinds : std::uint32_t { Manual, Automatic };

struct Sampler : Record<Sampler> {
  Kinds Kind = Manual;
  std::uint32_t Speed = 1;
  double Depth = 2.0;
  CSSeries Series;
  std::vector<Needle> Needles;
  std::vector<CSSeries> Others;
  double Force = 3.0;      // of an automatic one
  double Forgotten = 0.0;  // by Describe
};

constexpr CodeText kKinds[] = {{Manual, L"Manual"}, {Automatic, L"Automatic"}};

void DescribeNeedle(Archive& ar, Needle& needle) {
  if (const auto element = ar.Element(L"Needle")) {
    ar.Attribute(L"Length", needle.Length);
    ar.Attribute(L"Blunt", needle.Blunt);
  }
}

void Describe(Archive& ar, Sampler& sampler) {
  ar.Version(1, "Unknown Sampler version.");
  if (const auto element = ar.Element(L"Sampler")) {
    ar.Enum(L"Kind", sampler.Kind, Codes{.rows = kKinds});
    ar(L"Speed", sampler.Speed);
    ar(L"Depth", sampler.Depth);
    if (!ar.Xml()) ar.Nested(sampler.Series);
    ar.List(L"Needles", sampler.Needles, DescribeNeedle);
    if (!ar.Xml()) ar.List(L"Others", sampler.Others);
    if (sampler.Kind == Automatic) ar(L"Force", sampler.Force);
  }
}

using Rows = std::vector<FieldChange<Sampler>>;

const Rows kWhole = {
    {"Kind", [](auto& s) { s.Kind = Automatic; }},
    {"Kind.Force", [](auto& s) { s.Force = 9.0; }},
    {"Speed", [](auto& s) { s.Speed = 9; }},
    {"Depth", [](auto& s) { s.Depth = 9.0; }},
    {"Series", [](auto& s) { s.Series.Id = 9; }, BinaryOnly},
    {"Needles", [](auto& s) { s.Needles.resize(2); }},
    {"Needles.Length", [](auto& s) { s.Needles[0].Length = 9.0; }},
    {"Needles.Blunt", [](auto& s) { s.Needles[1].Blunt = true; }},
    {"Others", [](auto& s) { s.Others.resize(1); }, BinaryOnly},
};

Rows Without(const std::string& field) {
  Rows rows = kWhole;
  std::erase_if(rows, [&](const auto& row) { return row.field == field; });
  return rows;
}

Rows With(FieldChange<Sampler> row) {
  Rows rows = kWhole;
  rows.push_back(std::move(row));
  return rows;
}

TEST(RecordCheck, PassesARecordWithARowForEachField) {
  EXPECT_THAT(FieldFaults(kWhole), IsEmpty());
  CheckRecord(kWhole);
}

TEST(RecordCheck, SeesThatAFieldHasNoRow) {
  EXPECT_THAT(FieldFaults(Without("Depth")), ElementsAre("no row changes Sampler/Depth alone"));
  EXPECT_THAT(FieldFaults(Without("Series")), ElementsAre("no row changes Sampler/record alone"));
  EXPECT_THAT(FieldFaults(Without("Others")), ElementsAre("no row changes Sampler/Others alone"));
}

TEST(RecordCheck, SeesThatAFieldOfAnItemHasNoRow) {
  EXPECT_THAT(FieldFaults(Without("Needles.Blunt")),
              ElementsAre("no row changes Sampler/Needles/Needle/Blunt alone"));
}

TEST(RecordCheck, SeesThatDescribeForgotAField) {
  EXPECT_THAT(FieldFaults(With({"Forgotten", [](auto& s) { s.Forgotten = 9.0; }})),
              ElementsAre("Forgotten changes nothing that Describe names"));
}

TEST(RecordCheck, AFieldThatChangesWithAnotherOneOnlyHasNoRow) {
  Rows rows = Without("Depth");
  rows.push_back({"Depth of a fast one", [](auto& s) { s.Speed = 9, s.Depth = 9.0; }});
  EXPECT_THAT(FieldFaults(rows), ElementsAre("no row changes Sampler/Depth alone"));
}

TEST(RecordCheck, FurtherRowsMayChangeSeveralFields) {
  EXPECT_THAT(FieldFaults(With({"both", [](auto& s) { s.Speed = 9, s.Depth = 9.0; }})), IsEmpty());
}

TEST(RecordCheck, SeesThatAFieldOfOneKindHasNoRow) {
  EXPECT_THAT(FieldFaults(Without("Kind.Force")), ElementsAre("no row changes Sampler/Force alone"));
}

TEST(RecordCheck, ARowThatGoesOnNeedsTheRowBeforeIt) {
  EXPECT_THROW(FieldFaults(Without("Needles")), std::logic_error);
}

}  // namespace
