#include <gtest/gtest.h>

#include <curve/TestCurve.h>
#include <tslbl/records/OPDParams.h>
#include <map>
#include <stdexcept>

using namespace TslBL;
using namespace tests;

namespace {

template <class Params>
CurveEval Numbered(std::uint32_t Params::*field, char number) {
  Params params;
  params.*field = static_cast<std::uint32_t>(number);
  return CurveEval(params);
}

CurveEval Threshold(char number) {
  ThresholdParams params;
  params.Value = number;
  return CurveEval(params);
}

// A command from its notation: a letter for its kind and a digit for its parameters.
CurveEval Command(const std::string& word) {
  const char number = word.size() > 1 ? word[1] : '0';
  switch (word[0]) {
    case 'B':
      return Numbered(&BaselineParams::SegSize, number);
    case 'N':
      return Numbered(&NoiseParams::SegSize, number);
    case 'P':
      return Numbered(&PeakDetectParams::SN, number);
    case 'S':
      return Numbered(&SmoothParams::Passes, number);
    case 'T':
      return Threshold(number);
    case 'O':
      return Numbered(&OPDParams::MaxPeaks, number);
    case 'b':
      return CurveEval(CurveEval::BaselineSubtract());
    case 't':
      return CurveEval(CurveEval::ThresholdSubtract());
    case 'a':
      return CurveEval(CurveEval::AerosolFilter());
  }
  return CurveEval();  // e
}

std::vector<CurveEval> Chain(const std::string& text) {
  std::istringstream in(text);
  std::vector<CurveEval> chain;
  for (std::string word; in >> word;) chain.push_back(Command(word));
  return chain;
}

std::string Failure(const std::string& chain) {
  try {
    CompactEval(Chain(chain));
  } catch (const std::runtime_error& e) {
    return e.what();
  }
  return "";
}

}  // namespace

TEST(CompactEval, GivesTheShortestChainOfTheSameEffect) {
  const struct {
    const char* chain;
    const char* compact;
  } rows[] = {
      {"", ""},
      {"B1 B2 P1 S P2", "S B2 P2"},
      {"B1 b B2", "B1 b B2"},
      // Of the steps that compute something the last one counts.
      {"B1", "B1"},
      {"B1 B1", "B1"},
      {"N1 N2 N3", "N3"},
      {"T1 T2", "T2"},
      {"P1 P2", "P2"},
      {"O1 O2", "O2"},
      // They end up in one order.
      {"P1 T1 N1 B1", "B1 N1 T1 P1"},
      {"P1 B1 P2 N1", "B1 N1 P2"},
      {"O1 P1 T1 N1 B1", "B1 N1 T1 P1 O1"},
      // Smoothing and filters add up and stay where they are.
      {"S1 S1", "S1 S1"},
      {"S1 a S2 e a", "S1 a S2 e a"},
      {"B1 S1 N1 a P1 S2", "S1 a S2 B1 N1 P1"},
      // A subtraction stays with what it subtracts.
      {"B1 b", "B1 b"},
      {"B1 B2 b", "B2 b"},
      {"T1 t", "T1 t"},
      {"T1 T2 t T3", "T2 t T3"},
      {"B1 T1 t b", "T1 t B1 b"},
      {"B1 b B2 b", "B1 b B2 b"},
      {"S1 B1 N1 S2 b P1", "S1 S2 B1 b N1 P1"},
      {"B1 N1 P1 b N1 P1", "B1 b N1 P1"},
  };
  for (const auto& [chain, compact] : rows) EXPECT_EQ(CompactEval(Chain(chain)), Chain(compact)) << chain;
}

TEST(CompactEval, RefusesASubtractionOfNothing) {
  for (const char* chain : {"b", "t", "T1 b", "B1 t", "B1 b b", "T1 t t", "B1 b S t"})
    EXPECT_EQ(Failure(chain), "Subtraction command with no prior evaluation to subtract") << chain;
}

TEST(CompactEval, IsAsShortAsItGets) {
  for (const char* chain : {"B1 B2 P1 S P2", "B1 b B2", "B1 S1 N1 a P1 S2", "B1 T1 t b"}) {
    const auto compact = CompactEval(Chain(chain));
    EXPECT_EQ(CompactEval(compact), compact) << chain;
  }
}

TEST(CompactEval, LeavesItsInputAlone) {
  const auto chain = Chain("B1 B2 b");
  CompactEval(chain);
  EXPECT_EQ(chain, Chain("B1 B2 b"));
}
