#include <tslbl/tune/SyringeList.h>

#include "RecordCheck.h"
#include "tune/BesideLibrary.h"
#include "tune/Samples.h"

namespace {

using namespace tests;

TEST(AllRecords, SyringeManufacturer) {
  CheckRecord<SyringeManufacturer>({
      {"Name", [](auto& r) { r.Name = L"maker"; }},
      {"Models",
       [](auto& r) {
         r.Models = {SampleSyringeModel(), SyringeModel()};
       }},
  });
}

TEST(AllRecords, SyringeList) {
  CheckRecord<SyringeList>({{"Manufacturers", [](auto& r) { r.Manufacturers.resize(2); }}});
}

TEST(SyringeManufacturer, IsAnElementWithAListOfModels) {
  SyringeManufacturer maker;
  maker.Name = L"Hamilton";
  maker.Models = {SampleSyringeModel()};
  EXPECT_EQ(ToXml(maker),
            L"<Manufacturer Name=\"Hamilton\">\n"
            L"  <Models>\n"
            L"    <Model Name=\"1725\" Diameter=\"2.3\" />\n"
            L"  </Models>\n"
            L"</Manufacturer>\n");
}

TEST(SyringeManufacturer, EqualsItsName) {
  SyringeManufacturer maker;
  maker.Name = L"Hamilton";
  EXPECT_TRUE(maker == std::wstring(L"Hamilton"));
  EXPECT_FALSE(maker == std::wstring(L"hamilton"));
}

constexpr const char* kCatalogue =
    "<Manufacturers>"
    "<Manufacturer Name=\"Hamilton\"><Models>"
    "<Model Name=\"1725\" Diameter=\"2.3\"/><Model Name=\"1750\" Diameter=\"3.26\"/>"
    "</Models></Manufacturer>"
    "<Manufacturer Name=\"SGE\"/>"
    "</Manufacturers>";

bool LoadsTheCatalogue() {
  const SyringeList list = SyringeList::Load();
  if (list.Manufacturers.size() != 2) return false;
  const SyringeManufacturer& first = list.Manufacturers[0];
  return first.Name == L"Hamilton" && first.Models.size() == 2 && first.Models[0] == SampleSyringeModel() &&
         first.Models[1].Name == L"1750" && first.Models[1].Diameter == 3.26 &&
         list.Manufacturers[1].Name == L"SGE" && list.Manufacturers[1].Models.empty();
}

TEST(SyringeListFile, ListsManufacturersWithTheirModels) {
  const BesideLibrary site("SyringeList.xml", kCatalogue);
  EXPECT_BESIDE_LIBRARY(site, LoadsTheCatalogue(), "");
}

TEST(SyringeListFile, ThatIsMissingIsAnEmptyList) {
  const BesideLibrary site;
  EXPECT_BESIDE_LIBRARY(site, SyringeList::Load().Manufacturers.empty(), testing::StrEq(""));
}

TEST(SyringeListFile, ThatIsNoCatalogueIsAnEmptyList) {
  for (const char* text : {"", "garbage \x01\xff", "<Manufacturers><Manufacturer>", "<Other/>",
                           "<Manufacturers/>", "<?xml version=\"1.0\"?>"}) {
    const BesideLibrary site("SyringeList.xml", text);
    EXPECT_BESIDE_LIBRARY(site, SyringeList::Load().Manufacturers.empty(), testing::StrEq(""));
  }
}

TEST(SyringeListFile, NestedBeyondAllReasonIsAnEmptyList) {
  std::string text;
  for (int i = 0; i < 100000; ++i) text += "<Manufacturers>";
  for (int i = 0; i < 100000; ++i) text += "</Manufacturers>";
  const BesideLibrary site("SyringeList.xml", text);
  EXPECT_BESIDE_LIBRARY(site, SyringeList::Load().Manufacturers.empty(), testing::StrEq(""));
}

TEST(SyringeListFile, WithADiameterThatIsNoNumberHasNone) {
  const BesideLibrary site("SyringeList.xml",
                           "<Manufacturers><Manufacturer><Models><Model Diameter=\"wide\"/></Models>"
                           "</Manufacturer></Manufacturers>");
  EXPECT_BESIDE_LIBRARY(site, SyringeList::Load().Manufacturers.at(0).Models.at(0) == SyringeModel(), "");
}

TEST(SyringeListFile, HoldsManufacturersWithoutANameOrModelsAndNoForeignElement) {
  const BesideLibrary site("SyringeList.xml",
                           "<Manufacturers><Manufacturer Name=\"A\"/><Manufacturer/><Note/>"
                           "<Manufacturer Name=\"\"><Models/></Manufacturer><Manufacturer Name=\"B\"/>"
                           "</Manufacturers>");
  const auto names = [] {
    std::wstring text;
    for (const SyringeManufacturer& maker : SyringeList::Load().Manufacturers) text += maker.Name + L";";
    return text;
  };
  EXPECT_BESIDE_LIBRARY(site, names() == L"A;;;B;", "");
}

TEST(SyringeListFile, IsReadAnewEachTime) {
  const BesideLibrary site;
  const auto written = [&] {
    const bool before = SyringeList::Load().Manufacturers.empty();
    std::ofstream(site.Folder() / "SyringeList.xml") << kCatalogue;
    return before && LoadsTheCatalogue();
  };
  EXPECT_BESIDE_LIBRARY(site, written(), "");
}

}  // namespace
