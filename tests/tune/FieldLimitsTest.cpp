#include <tslbl/tune/FieldLimits.h>

#include <gtest/gtest.h>

#include <tslbl/tune/TuneField.h>
#include <thread>
#include <vector>

// The tables as they are without "overrides.txt"; see LimitOverridesTest for those with it.

namespace {

using namespace TslBL;

struct Row {
  int id;
  Limits limits;
};

const std::vector<Row> kCommon = {
    {0, {0, 7, 1}},           {4, {0, 3, 1}},         {5, {25, 350, 5}},      {7, {2, 15, 0.1}},
    {9, {0, 1, 1}},           {10, {5, 3000, 0.05}},  {11, {5, 3000, 0.05}},  {12, {5, 3000, 0.05}},
    {13, {0.05, 2995, 0.05}}, {14, {0, 65535, 1}},    {15, {0, 1, 1}},        {16, {0, 5000000, 1}},
    {17, {0, 4095, 1}},       {18, {25, 2000000, 1}}, {19, {10, 2000000, 1}}, {20, {1, 65535, 1}},
    {21, {0, 2, 1}},          {22, {-400, 400, 1}},   {23, {-100, 100, 0.1}}, {24, {0, 800, 5}},
    {25, {-30, 30, 0.05}},    {26, {-200, 200, 0.1}}, {27, {-200, 200, 0.1}}, {28, {-10000, 10000, 10}},
    {29, {-3000, 0, 1}},      {30, {0, 255, 1}},      {31, {0, 1, 1}},        {32, {-99, 99, 0.001}},
    {33, {-99, 99, 0.001}},   {34, {-90, 90, 0.05}},  {35, {0, 0, 0}},        {36, {-100, 100, 0.1}},
};
const std::vector<Row> kEsi = {
    {1, {-6000, 6000, 1}}, {2, {-6000, 6000, 1}}, {3, {-6000, 6000, 1}}, {8, {0, 100, 5}}};
const std::vector<Row> kApci = {{2, {-5000, 5000, 1}}, {3, {-5000, 5000, 1}},  {6, {25, 350, 5}},
                                {53, {0, 20, 0.01}},   {54, {-6000, 6000, 1}}, {55, {0, 60, 5}}};

Limits RowOf(const std::vector<Row>& rows, int id) {
  for (const Row& row : rows)
    if (row.id == id) return row.limits;
  return {};
}
bool Has(const std::vector<Row>& rows, int id) {
  for (const Row& row : rows)
    if (row.id == id) return true;
  return false;
}

TEST(FieldLimits, ForAllProbes) {
  for (int id = -1; id <= 60; ++id) EXPECT_EQ(FieldLimits().QLimits(id), RowOf(kCommon, id)) << id;
}

TEST(FieldLimits, ForEachProbe) {
  const std::vector<std::vector<Row>> tables = {kEsi, kApci, kEsi};
  for (std::uint32_t probe = 0; probe < tables.size(); ++probe) {
    for (int id = -1; id <= 60; ++id) {
      const auto& rows = Has(tables[probe], id) ? tables[probe] : kCommon;
      EXPECT_EQ(FieldLimits().QLimits(static_cast<Probes::ProbeTypes>(probe), id), RowOf(rows, id))
          << "probe " << probe << " field " << id;
    }
  }
}

TEST(FieldLimits, OfAProbeFallBackToThoseForAll) {
  EXPECT_EQ(FieldLimits().QLimits(Probes::APCI, TuneField::DryGasTemp), (Limits{25, 350, 5}));
}

TEST(FieldLimits, OfAnUnknownProbeAreThoseForAll) {
  const auto unknown = static_cast<Probes::ProbeTypes>(5);
  EXPECT_EQ(FieldLimits().QLimits(unknown, TuneField::CapExit), (Limits{-400, 400, 1}));
  EXPECT_EQ(FieldLimits().QLimits(unknown, TuneField::Cylinder), Limits());
}

TEST(FieldLimits, OfAbsoluteVoltagesAddTheLensesBelow) {
  const std::vector<Row> absolute = {
      {26, {-230, 230, 0.1}}, {27, {-230, 230, 0.1}}, {34, {-120, 120, 0.05}}, {36, {-220, 220, 0.1}}};
  for (int id = -1; id <= 60; ++id) {
    EXPECT_EQ(FieldLimits().QMinMaxStep(id), RowOf(Has(absolute, id) ? absolute : kCommon, id)) << id;
  }
}

TEST(FieldLimits, AnyNumberOfThreadsMayAsk) {
  std::vector<std::thread> threads;
  std::vector<Limits> answers(8);
  for (Limits& answer : answers) threads.emplace_back([&answer] { answer = FieldLimits().QLimits(24); });
  for (std::thread& thread : threads) thread.join();
  for (const Limits& answer : answers) EXPECT_EQ(answer, (Limits{0, 800, 5}));
}

}  // namespace
