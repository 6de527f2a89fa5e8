#include <tslbl/tune/Syringe.h>

#include "RecordCheck.h"
#include "tune/Samples.h"

namespace {

using namespace tests;

TEST(AllRecords, SyringeModel) {
  CheckRecord<SyringeModel>({
      {"Name", [](auto& r) { r.Name = L"name"; }},
      {"Diameter", [](auto& r) { r.Diameter = 1.5; }},
  });
}

TEST(AllRecords, Syringe) {
  CheckRecord<Syringe>({
      {"Manufacturer", [](auto& r) { r.Manufacturer = L"maker"; }},
      {"Model", [](auto& r) { r.Model.Diameter = 1.5; }},
      {"FlowRate", [](auto& r) { r.FlowRate = 4294967295; }},
  });
}

TEST(Golden, SyringeModel) { CheckGolden(SampleSyringeModel(), "SyringeModel.v2"); }
TEST(Golden, Syringe) { CheckGolden(SampleSyringe(), "Syringe.v1"); }
TEST(SyringeModel, CutShortIsRefused) { CheckCutShort(SampleSyringeModel()); }
TEST(Syringe, CutShortIsRefused) { CheckCutShort(SampleSyringe()); }

TEST(Golden, SyringeModelOfVersion1HasAWholeDiameter) {
  SyringeModel expected;
  expected.Name = L"1725";
  expected.Diameter = 5.0;
  EXPECT_EQ(FromBytes<SyringeModel>(GoldenBytes("SyringeModel.v1")), expected);
}

TEST(SyringeModel, OfVersion1MayHaveANegativeDiameter) {
  EXPECT_EQ(FromBytes<SyringeModel>(Bytes(1u, std::wstring(L"m"), std::int32_t{-3})).Diameter, -3.0);
}

TEST(SyringeModel, OfVersion1CutShortIsRefused) {
  const std::string whole = GoldenBytes("SyringeModel.v1");
  for (std::size_t length = 4; length < whole.size(); ++length)
    EXPECT_EQ(ReadFailure<SyringeModel>(whole.substr(0, length)), "Unexpected end of stream.") << length;
}

TEST(SyringeModel, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 3u}) {
    EXPECT_EQ(ReadFailure<SyringeModel>(Bytes(version), SampleSyringeModel()),
              "Unknown SyringeModel version.");
  }
}

TEST(Syringe, OfAnUnknownVersionIsRefused) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<Syringe>(Bytes(version), SampleSyringe()), "Unknown Syringe version.");
}

TEST(Syringe, IsAnElementWithItsModel) {
  EXPECT_EQ(ToXml(SampleSyringe()),
            L"<Syringe>\n"
            L"  <Manufacturer>Hamilton</Manufacturer>\n"
            L"  <Model Name=\"1725\" Diameter=\"2.3\" />\n"
            L"  <FlowRate>180</FlowRate>\n"
            L"</Syringe>\n");
}

TEST(SyringeModel, EqualsItsName) {
  EXPECT_TRUE(SampleSyringeModel() == std::wstring(L"1725"));
  EXPECT_FALSE(SampleSyringeModel() == std::wstring(L"1726"));
}

TEST(SyringeModel, ComparesDiametersExactly) {
  SyringeModel other = SampleSyringeModel();
  other.Diameter += 1e-12;
  EXPECT_FALSE(SampleSyringeModel() == other);
}

}  // namespace
