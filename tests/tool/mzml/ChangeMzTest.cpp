#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include <tool/io/MzMLArray.h>
#include <tool/io/MzMLMaker.h>
#include <tool/mzml/ChangeMz.h>

namespace tests {
namespace {

using testing::ElementsAre;

double Double(double mz) { return 2 * mz; }

// An element <spectrum> that was changed.
class Changed {
 public:
  explicit Changed(const std::string& spectrum, const TslTool::MzMLGroups& groups = {}) {
    TslTool::ParseElement(spectrum, document_);
    pugi::xml_node element = document_.document_element();
    TslTool::ChangeMz(element, groups, Double);
  }
  pugi::xml_node Element() const { return document_.document_element(); }
  pugi::xml_node Array(std::size_t i) const {
    return TslTool::ChildrenOf(TslTool::ChildOf(Element(), "binaryDataArrayList"), "binaryDataArray").at(i);
  }
  Values Numbers(std::size_t i) const {
    const pugi::xml_node array = Array(i);
    return TslTool::DecodeArray(array, TslTool::MzMLGroups().TermsOf(array), "m/z",
                                Element().attribute("defaultArrayLength").as_uint())
        .values;
  }

 private:
  pugi::xml_document document_;
};

const Values kAxis = {100, 200, 300};
const Values kCounts = {1, 5, 2};

TEST(ChangeMz, ChangesTheAxisAndNotTheIntensity) {
  const Changed changed(PlainSpectrum("scan=1", kAxis, kCounts));
  EXPECT_THAT(changed.Numbers(0), ElementsAre(200, 400, 600));
  EXPECT_THAT(changed.Numbers(1), ElementsAre(1, 5, 2));
}

TEST(ChangeMz, ReadsEveryPackingAndKeepsFullPrecision) {
  for (const std::string& array : {ArrayOf(kMz, BytesOf<float>(kAxis), "MS:1000521", "MS:1000576"),
                                   ArrayOf(kMz, NumpressLinear(kAxis, 1000), "MS:1000523", "MS:1002312")}) {
    const Changed changed(SpectrumOf("scan=1", 3, array + ArrayOf(kIntensity, BytesOf<double>(kCounts))));
    EXPECT_THAT(changed.Numbers(0), ElementsAre(200, 400, 600)) << array;
  }
}

TEST(ChangeMz, ChangesWhatWasObservedAndNotWhatWasSet) {
  const std::string terms = Term("MS:1000504", "value=\"150.5\"") + Term("MS:1000528", "value=\"100\"") +
                            Term("MS:1000501", "value=\"100\"") + Term("MS:1000505", "value=\"100\"");
  const Changed changed(SpectrumOf("scan=1", 3, ArrayOf(kMz, BytesOf<double>(kAxis)), terms));
  std::vector<std::string> values;
  for (const pugi::xml_node& param : changed.Element().children("cvParam"))
    values.emplace_back(param.attribute("value").value());
  EXPECT_THAT(values, ElementsAre("301", "200", "100", "100"));
}

TEST(ChangeMz, TermsInAGroupAreWrittenOut) {
  pugi::xml_document group;
  TslTool::ParseElement("<referenceableParamGroup id=\"g\">" + Term(kMz) + Term("MS:1000523") +
                            Term("MS:1000576") + "</referenceableParamGroup>",
                        group);
  TslTool::MzMLGroups groups;
  groups.Add(group.document_element());
  const std::string array = "<binaryDataArray><referenceableParamGroupRef ref=\"g\"/><binary>" +
                            Base64(BytesOf<double>(kAxis)) + "</binary></binaryDataArray>";
  const Changed changed(SpectrumOf("scan=1", 3, array), groups);
  EXPECT_FALSE(changed.Array(0).child("referenceableParamGroupRef"));
  EXPECT_THAT(changed.Numbers(0), ElementsAre(200, 400, 600));
}

TEST(ChangeMz, KeepsANamespacePrefix) {
  pugi::xml_document document;
  TslTool::ParseElement(
      "<m:spectrum xmlns:m=\"x\" defaultArrayLength=\"3\"><m:binaryDataArrayList><m:binaryDataArray>"
      "<m:cvParam accession=\"MS:1000514\"/><m:cvParam accession=\"MS:1000523\"/><m:binary>" +
          Base64(BytesOf<double>(kAxis)) +
          "</m:binary></m:binaryDataArray></m:binaryDataArrayList></m:spectrum>",
      document);
  pugi::xml_node spectrum = document.document_element();
  TslTool::ChangeMz(spectrum, {}, Double);
  const pugi::xml_node array = spectrum.first_child().first_child();
  EXPECT_STREQ(array.name(), "m:binaryDataArray");
  for (const pugi::xml_node& child : array.children())
    EXPECT_TRUE(std::string(child.name()).starts_with("m:")) << child.name();
}

TEST(ChangeMz, ASpectrumWithoutMzStaysAsItIs) {
  const std::string text = SpectrumOf("scan=1", 3, ArrayOf("MS:1000617", BytesOf<double>(kAxis)));
  pugi::xml_document before;
  TslTool::ParseElement(text, before);
  std::ostringstream old, now;
  before.print(old);
  Changed(text).Element().print(now);
  EXPECT_EQ(old.str(), now.str());
}

TEST(ChangeMz, AnArrayThatCannotBeReadIsAnError) {
  EXPECT_THROW(Changed(SpectrumOf("scan=1", 4, ArrayOf(kMz, BytesOf<double>(kAxis)))), std::runtime_error);
}

}  // namespace
}  // namespace tests
