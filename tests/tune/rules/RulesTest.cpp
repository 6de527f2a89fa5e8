#include <tslbl/tune/rules/Rules.h>

#include <gtest/gtest.h>

#include <tslbl/closed/common/MessageId.h>
#include <string>

namespace {

using TslBL::Rules;

// Rules of one number, which must not be negative.
class NumberRules : public Rules {
 public:
  ErrTypes WNumber(int number) {
    if (number < 0) return Fail(TslCommon::kNewTune);
    Store(number_, number);
    return NoError;
  }
  void Take(int number) {
    number_ = number;
    Forget();
  }
  int QNumber() const { return number_; }

 private:
  int number_ = 0;
};

TEST(Rules, AreNotModifiedAtFirst) {
  EXPECT_FALSE(NumberRules().IsModified());
  EXPECT_EQ(NumberRules().QLastError(), L"");
}

TEST(Rules, AreModifiedByAnotherValueOnly) {
  NumberRules rules;
  rules.WNumber(0);
  EXPECT_FALSE(rules.IsModified());
  rules.WNumber(1);
  EXPECT_TRUE(rules.IsModified());
  EXPECT_EQ(rules.QNumber(), 1);
  rules.ClearModified();
  EXPECT_FALSE(rules.IsModified());
}

TEST(Rules, HandOverTheLastErrorOnce) {
  NumberRules rules;
  EXPECT_EQ(rules.WNumber(-1), Rules::Error);
  EXPECT_EQ(rules.WNumber(1), Rules::NoError);
  EXPECT_EQ(rules.QLastError(), L"New Tune") << "a success does not clear it";
  std::wstring text = L"before";
  rules.QLastError(text);
  EXPECT_EQ(text, L"");
}

TEST(Rules, ForgetForAnotherRecord) {
  NumberRules rules;
  rules.WNumber(1);
  rules.WNumber(-1);
  rules.Take(5);
  EXPECT_FALSE(rules.IsModified());
  EXPECT_EQ(rules.QLastError(), L"");
}

}  // namespace
