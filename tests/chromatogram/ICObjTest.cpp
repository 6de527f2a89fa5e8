#include <RecordCheck.h>

#include <curve/SampleCurve.h>
#include <tslbl/chromatogram/ICObj.h>
#include <memory>
#include <sstream>

using namespace TslBL;
using namespace tests;

namespace {

ICObj SampleICObj() {
  ICObj obj;
  FillCurve(obj);
  return obj;
}

}  // namespace

TEST(AllRecords, ICObj) { CheckRecord<ICObj>(CurveRows<ICObj>()); }
TEST(Golden, ICObj) { CheckGolden(SampleICObj(), "ICObj.v1"); }
TEST(CutShort, ICObj) { CheckCutShort(SampleICObj()); }

TEST(ICObj, EvaluatesWithThePresetsForChromatograms) {
  const ICObj obj;
  EXPECT_EQ(obj.smoothParams, SmoothParams::DefaultIC());
  EXPECT_EQ(obj.baselineParams, BaselineParams::DefaultIC());
  EXPECT_EQ(obj.noiseParams, NoiseParams::DefaultIC());
  EXPECT_EQ(obj.peakDetectParams, PeakDetectParams::DefaultIC());
  EXPECT_EQ(obj.thresholdParams, ThresholdParams());
}

TEST(ICObj, IsTheBytesOfItsCurveBehindItsVersion) {
  const ICObj obj = SampleICObj();
  std::ostringstream out(std::ios::binary);
  TslCommon::BinaryWriter writer(out);
  obj.Curve::Serialize(writer);
  EXPECT_EQ(ToBytes(obj), Bytes(1u) + out.str());
}

TEST(ICObj, CloneIsADeepCopy) {
  const ICObj obj = SampleICObj();
  const std::unique_ptr<Curve> clone(obj.Clone());
  auto& copy = dynamic_cast<ICObj&>(*clone);
  EXPECT_EQ(copy, obj);
  copy.yAxis[0] = 99.0;
  EXPECT_EQ(obj, SampleICObj());
}

TEST(ICObj, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<ICObj>(Bytes(version) + ToBytes(SampleICObj()).substr(4), SampleICObj()),
              "Unknown ICObj version.");
}

TEST(ICObj, HasThePresetsForWhatAnOlderCurveLacks) {
  ICObj obj = SampleICObj();
  obj.annotations.clear();
  std::string bytes = ToBytes(obj);
  bytes[4] = 1;
  bytes.resize(bytes.size() - 4);
  EXPECT_EQ(FromBytes<ICObj>(bytes), obj);
}
