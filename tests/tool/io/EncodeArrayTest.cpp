#include <gtest/gtest.h>
#include <tool/io/EncodeArray.h>
#include <tool/io/MzMLArray.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace tests {
namespace {

namespace Cv = TslTool::Cv;

pugi::xml_node Add(pugi::xml_document& document, const TslTool::ArrayKind& kind,
                   const std::vector<double>& values) {
  pugi::xml_node list = document.append_child("binaryDataArrayList");
  TslTool::AddArray(list, kind, values);
  return list.first_child();
}

TEST(EncodeArray, IsReadBackBitForBit) {
  using Limits = std::numeric_limits<double>;
  const std::vector<double> values = {0.0,           -0.0,          1.0 / 3.0,          Limits::denorm_min(),
                                      Limits::max(), Limits::min(), Limits::infinity(), Limits::quiet_NaN()};
  pugi::xml_document document;
  const pugi::xml_node array = Add(document, {Cv::kMzArray}, values);
  const TslTool::MzMLArray read =
      TslTool::DecodeArray(array, TslTool::MzMLGroups().TermsOf(array), "m/z", values.size());
  ASSERT_EQ(read.values.size(), values.size());
  for (std::size_t i = 0; i < values.size(); ++i)
    EXPECT_EQ(std::bit_cast<std::uint64_t>(read.values[i]), std::bit_cast<std::uint64_t>(values[i])) << i;
  EXPECT_TRUE(read.isLengthTrue);
}

TEST(EncodeArray, LongArraysTakeLessRoomThanTheirNumbers) {
  pugi::xml_document document;
  const pugi::xml_node array = Add(document, {Cv::kMzArray}, std::vector<double>(10000, 7.0));
  EXPECT_LT(array.attribute("encodedLength").as_uint(), 1000U);
  EXPECT_EQ(array.attribute("encodedLength").as_uint(),
            std::string(array.child("binary").text().get()).size());
}

TEST(EncodeArray, OfNothingHasNoBytes) {
  pugi::xml_document document;
  const pugi::xml_node array = Add(document, {Cv::kMzArray}, {});
  EXPECT_STREQ(array.attribute("encodedLength").value(), "0");
  EXPECT_TRUE(array.child("binary"));
  EXPECT_STREQ(array.child("binary").text().get(), "");
}

TEST(EncodeArray, TellsWhatItHolds) {
  pugi::xml_document document;
  const pugi::xml_node array = Add(document, {Cv::kOtherArray, "width", Cv::kMzUnit}, {1.0});
  const TslTool::MzMLTerms terms = TslTool::MzMLGroups().TermsOf(array);
  ASSERT_EQ(terms.size(), 3U);
  EXPECT_TRUE(terms.Find("MS:1000523"));
  EXPECT_TRUE(terms.Find("MS:1000574"));
  ASSERT_TRUE(terms.Find("MS:1000786"));
  EXPECT_EQ(terms.Find("MS:1000786")->value, "width");
  EXPECT_EQ(terms.Find("MS:1000786")->unit, "MS:1000040");
}

}  // namespace
}  // namespace tests
