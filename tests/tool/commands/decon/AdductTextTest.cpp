#include <tool/commands/decon/AdductText.h>

#include <gtest/gtest.h>

#include <tool/frame/UsageError.h>

namespace tests {
namespace {

using TslBL::AdductIonInfo;

AdductIonInfo IonOf(const std::string& text) {
  TslBL::ChargeStateParams params;
  TslTool::SetAdduct("--adduct", text, params);
  return params.GetAdductIonInfo();
}

std::string Failure(const std::string& text) {
  try {
    IonOf(text);
  } catch (const TslTool::UsageError& e) {
    return e.what();
  }
  return "";
}

TEST(AdductText, NamesTheIonsOfTheLibrary) {
  EXPECT_EQ(IonOf("proton").MonoMass, 1.007276);
  EXPECT_EQ(IonOf("ammonium").MonoMass, 18.033826);
  EXPECT_EQ(IonOf("sodium").MonoMass, 22.989221);
  EXPECT_EQ(IonOf("potassium").AvgMass, 39.09776);
}

TEST(AdductText, OfALossIsAProtonThatIsMissing) {
  EXPECT_EQ(IonOf("loss").MonoMass, -1.007276);
  EXPECT_EQ(IonOf("loss").AvgMass, -1.007398);
  EXPECT_EQ(IonOf("loss").Symbol, L"-H+");
}

TEST(AdductText, MayBeAMassOrTwo) {
  EXPECT_EQ(IonOf("7.016,6.94").MonoMass, 7.016);
  EXPECT_EQ(IonOf("7.016,6.94").AvgMass, 6.94);
  EXPECT_EQ(IonOf("6.94").AvgMass, 6.94);
  EXPECT_EQ(IonOf("-1.00728").MonoMass, -1.00728);
}

TEST(AdductText, NamesWhatIsNoIon) {
  EXPECT_EQ(Failure("lithium"),
            "--adduct: \"lithium\" is not one of proton, ammonium, sodium, potassium, loss, nor a mass");
  EXPECT_EQ(Failure("7,x"),
            "--adduct: \"x\" is not one of proton, ammonium, sodium, potassium, loss, nor a mass");
  EXPECT_EQ(Failure("1-2"), "--adduct: \"1-2\" is not a number");
  EXPECT_EQ(Failure("0"), "--adduct: an ion of 0 Da carries no charge");
  EXPECT_EQ(Failure("7,0.0"), "--adduct: an ion of 0.0 Da carries no charge");
  EXPECT_EQ(Failure("1001"), "--adduct: 1001 Da is not from -1000 to 1000");
}

}  // namespace
}  // namespace tests
