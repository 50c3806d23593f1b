#include "platform/agreed/customer_numbers.h"

#include <gtest/gtest.h>

#include "platform/controls/number_field.h"
#include "platform/controls/typed_text.h"
#include "platform/text.h"

namespace platform {
namespace {

TEST(CustomerNumbers, AreWhatAPhoneOrAnAccountCanBe) {
  struct Case {
    const char* digits;
    bool is_phone;
    bool is_account;
  };
  const Case cases[] = {
      {"", true, true},
      {"4055212485", true, false},
      {"405", false, false},
      {"40552124851", false, false},
      {"1055212485", false, false},
      {"0055212485", false, false},
      {"4051212485", false, false},
      {"405521248X", false, false},
      {"6200010000101", false, true},
      {"620001000010", false, false},
      {"62000100001011", false, false},
      {"6200000000001", false, false},
      {"6200010000100", false, false},
      {"62-0001000010", false, false},
  };
  for (const auto& [digits, is_phone, is_account] : cases) {
    EXPECT_EQ(IsPhoneNumber(digits), is_phone) << digits;
    EXPECT_EQ(IsFuelTaxAccount(digits), is_account) << digits;
    EXPECT_EQ(WhyNoPhoneNumber(digits).empty(), is_phone) << digits;
  }
}

TEST(ANumberField, KeepsTheDigitsOfWhatIsTypedAndGroupsThemWhenLeft) {
  struct Case {
    const char* typed;
    const char* value;
    const char* shown;
    bool valid;
  };
  const Case cases[] = {
      {"405.521.2485", "4055212485", "(405) 521-2485", true},
      {" 405 521-2485 ", "4055212485", "(405) 521-2485", true},
      {"", "", "", true},
      {"   ", "", "", true},
      {"405", "405", "405", false},
      {"---", "---", "---", false},
      {"405 521 CALL 2485", "405 521 CALL 2485", "405 521 CALL 2485", false},
  };
  for (const auto& [typed, value, shown, valid] : cases) {
    ZEMLO_Phone phone;
    phone.SetText(typed);
    EXPECT_EQ(phone.Value(), value);
    EXPECT_EQ(phone.IsValid(), valid) << typed;
    phone.UserLeaves();
    EXPECT_EQ(phone.text(), shown);
  }
}

TEST(ANumberField, LeavesAStoredValueValidAsLongAsItIsTheSame) {
  ZEMLO_Phone phone;
  phone.SetValue("+44 20 7946 0958");
  EXPECT_EQ(phone.text(), "+44 20 7946 0958");
  EXPECT_EQ(phone.Value(), "+44 20 7946 0958");
  EXPECT_TRUE(phone.IsValid());
  phone.SetText("+44 20 7946 095");
  EXPECT_FALSE(phone.IsValid());

  phone.SetValue("0107373");
  EXPECT_EQ(phone.text(), "010-7373");
  phone.SetText("0107373");
  EXPECT_TRUE(phone.IsValid()) << "the same number, written otherwise";
  ZEMLO_FuelTaxAcct account;
  account.SetValue("6200010000101");
  EXPECT_EQ(account.text(), "62-000100001-01");
  EXPECT_FALSE(account.key_filter(U'A'));
}

TEST(APastedLine, IsOneLineOfWholeLetters) {
  EXPECT_EQ(PastedLine("73701\r\n"), "73701");
  EXPECT_EQ(PastedLine("12 Main\r\nSt\x07"), "12 Main St");
  EXPECT_EQ(PastedLine("A\tB "), "A B ");
  // 25 letters with combining accents are 25 characters.
  std::string accented;
  for (int letter = 0; letter < 25; ++letter) accented += "e\xCC\x81";
  EXPECT_EQ(CharacterCount(PastedLine(accented)), 25u);
}

}  // namespace
}  // namespace platform
