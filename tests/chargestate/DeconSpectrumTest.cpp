#include <tslbl/chargestate/DeconSpectrum.h>

#include <RecordCheck.h>
#include <chargestate/SampleParams.h>
#include <chargestate/SampleSeries.h>
#include <spectrum/FullSpectrum.h>
#include <memory>

using namespace tests;

namespace {

DeconSpectrum SampleDeconSpectrum() {
  DeconSpectrum s = WithThreeSeries();
  FillSpectrum(s);
  s.CSParams = SampleChargeStateParams();
  s.MassX = {999.5, 1000.0, 1000.5};
  s.MassY = {1.5, 20.5, 2.5};
  return s;
}

std::vector<FieldChange<DeconSpectrum>> Rows() {
  std::vector<FieldChange<DeconSpectrum>> rows = SpectrumRows<DeconSpectrum>();
  rows.insert(rows.end(), {
                              {"CSParams", [](auto& r) { r.CSParams.MaxSpecies = 7; }},
                              {"Series", [](auto& r) { r.Series.resize(1); }},
                              {"Series.AvgMass", [](auto& r) { r.Series[0].AvgMass = 7.5; }},
                              {"MassX", [](auto& r) { r.MassX = {1.0}; }},
                              {"MassY", [](auto& r) { r.MassY = {1.0}; }},
                          });
  return rows;
}

}  // namespace

// Its bytes are not read, so that each field must change them.
TEST(AllRecords, DeconSpectrum) {
  EXPECT_EQ(FieldFaults(Rows()), std::vector<std::string>());
  for (const FieldChange<DeconSpectrum>& row : Rows()) {
    const DeconSpectrum before = RecordBefore(row, Rows());
    DeconSpectrum changed = before;
    row.change(changed);
    EXPECT_FALSE(changed == before) << row.field;
    EXPECT_EQ(changed, DeconSpectrum(changed)) << row.field;
    EXPECT_NE(ToBytes(changed), ToBytes(before)) << row.field;
  }
}

TEST(Golden, DeconSpectrum) {
  const char* write = std::getenv("TSLBL_WRITE_GOLDEN");
  if (write != nullptr && std::string(write) == "1")
    WriteGolden("DeconSpectrum.v1", ToBytes(SampleDeconSpectrum()));
  EXPECT_EQ(GoldenBytes("DeconSpectrum.v1"), ToBytes(SampleDeconSpectrum()));
}

TEST(DeconSpectrum, WritesTheSpectrumAsARecordInside) {
  const DeconSpectrum s = SampleDeconSpectrum();
  std::string series = Bytes(3u);
  for (const CSSeriesInfo& info : s.Series) series += ToBytes(info);
  EXPECT_EQ(ToBytes(s),
            Bytes(1u) + ToBytes(Spectrum(s)) + ToBytes(s.CSParams) + series + Bytes(s.MassX, s.MassY));
}

TEST(DeconSpectrum, IsNotReadFromWhatItWrites) {
  EXPECT_EQ(ReadFailure<DeconSpectrum>(ToBytes(SampleDeconSpectrum()), SampleDeconSpectrum()),
            "Unknown Spectrum version.");
}

TEST(DeconSpectrum, RefusesUnknownVersions) {
  for (const std::uint32_t version : {0u, 2u})
    EXPECT_EQ(ReadFailure<DeconSpectrum>(Bytes(version, 1u), SampleDeconSpectrum()),
              "Unknown DeconSpectrum version.");
}

TEST(DeconSpectrum, ReadsOnToTheFirstWordThatIsNoVersion) {
  for (const std::uint32_t ones : {1u, 2u, 1'000'000u}) {
    std::string bytes;
    for (std::uint32_t i = 0; i < ones; ++i) bytes += Bytes(1u);
    std::istringstream in(bytes + Bytes(2u, 99u));
    BinaryReader reader(in);
    DeconSpectrum s;
    EXPECT_THROW(s.Serialize(reader), std::runtime_error);
    std::uint32_t next = 0;
    reader >> next;
    EXPECT_EQ(next, 99u) << ones;
    EXPECT_EQ(ReadFailure<DeconSpectrum>(bytes), "Unknown Spectrum version.");
  }
}

TEST(DeconSpectrum, IsRefusedAlikeWhenReadAsASpectrum) {
  DeconSpectrum s;
  Spectrum& base = s;
  std::istringstream in(ToBytes(SampleDeconSpectrum()));
  BinaryReader reader(in);
  EXPECT_THROW(reader >> base, std::runtime_error);
}

TEST(DeconSpectrum, OfASpectrumHasNotBeenDeconvolved) {
  Spectrum plain;
  FillSpectrum(plain);
  const DeconSpectrum s(plain);
  EXPECT_EQ(static_cast<const Spectrum&>(s), plain);
  EXPECT_EQ(s.CSParams, ChargeStateParams());
  EXPECT_TRUE(s.Series.empty() && s.MassX.empty() && s.MassY.empty());
}

TEST(DeconSpectrum, CloneIsADeepCopy) {
  const DeconSpectrum s = SampleDeconSpectrum();
  const std::unique_ptr<Curve> clone(s.Clone());
  auto& copy = dynamic_cast<DeconSpectrum&>(*clone);
  EXPECT_EQ(copy, s);
  copy.Series[0].Peaks.clear();
  copy.yAxis.clear();
  EXPECT_EQ(s, SampleDeconSpectrum());
}

TEST(DeconSpectrum, HasNoDumpOfItsOwn) { EXPECT_EQ(DumpOf(SampleDeconSpectrum()), L""); }
