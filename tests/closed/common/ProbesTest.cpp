#include <gtest/gtest.h>

#include <tslbl/closed/common/Probes.h>

namespace {

using TslCommon::Probes;

const struct {
  Probes::ProbeTypes probe;
  const wchar_t* name;
  const wchar_t* nameNoId;
  bool usable;
} kProbes[] = {
    {Probes::ESI, L"ESI (0)", L"ESI", true},
    {Probes::APCI, L"APCI (1)", L"APCI", true},
    {Probes::LowFlowESI, L"Low-flow ESI (2)", L"Low-flow ESI", true},
    {static_cast<Probes::ProbeTypes>(3), L"Unknown (3)", L"Unknown", false},
    {static_cast<Probes::ProbeTypes>(7), L"Unknown (7)", L"Unknown", false},
    {static_cast<Probes::ProbeTypes>(4000000000), L"Unknown (4000000000)", L"Unknown", false},
};

TEST(Probes, HaveNamesAndUsability) {
  for (const auto& row : kProbes) {
    EXPECT_EQ(Probes::GetName(row.probe), row.name);
    EXPECT_EQ(Probes::GetNameNoId(row.probe), row.nameNoId);
    EXPECT_EQ(Probes::IsUsable(row.probe), row.usable);
  }
}

TEST(Probes, EveryCodeOfTheIdentificationPinsSurvivesItsName) {
  for (std::uint32_t id = 0; id < 8; ++id) {
    const auto probe = static_cast<Probes::ProbeTypes>(id);
    EXPECT_EQ(Probes::GetId(Probes::GetName(probe)), probe);
  }
}

TEST(Probes, AreFoundByEitherNameInEitherCase) {
  EXPECT_EQ(Probes::GetId(L"apci"), Probes::APCI);
  EXPECT_EQ(Probes::GetId(L"LOW-FLOW ESI (2)"), Probes::LowFlowESI);
}

TEST(Probes, AnotherTextIsAnEsiProbe) {
  for (const wchar_t* text : {L"", L"Unknown", L"APCI (2)", L"Laser"})
    EXPECT_EQ(Probes::GetId(text), Probes::ESI);
}

}  // namespace
