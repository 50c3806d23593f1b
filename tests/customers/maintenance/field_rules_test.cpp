#include "customers/maintenance/field_rules.h"

#include "tests/customers/maintenance/maintained_customer.h"

namespace customers {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class FieldRulesTest : public MaintainedCustomer {
 protected:
  /// The list of errors, a line each.
  std::vector<std::string> Errors() {
    form.rules().CheckEdits();
    std::vector<std::string> lines;
    std::string_view rest = form.rules().errors();
    while (!rest.empty()) {
      const auto end = rest.find("\r\n");
      lines.emplace_back(rest.substr(0, end));
      rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 2);
    }
    return lines;
  }
};

TEST_F(FieldRulesTest, RequireTexts) {
  struct Case {
    std::size_t field;
    const char* text;
    const char* error;  ///< "" where it is valid
  };
  const Case cases[] = {
      {4, "A", "- Business name is a required field."},
      {4, " AB ", ""},
      {4, "A%", "- Business name is a required field."},
      {4, "AB%", ""},
      {4, "\xC3\x89", "- Business name is a required field."},  // one letter of two bytes
      {6, "    ", "- Mailing address is a required field."},
      {6, "\xC2\xA0", "- Mailing address is a required field."},  // a no-break space
      {8, "", "- City is a required field."},
      {9, "", "Zip Code is required"},
      {9, "12345", ""},
      {9, "12345-6789", ""},
      {9, "1234-56789", "Invalid - position in zip code"},
      {9, "1234567890", "Invalid Zip Code"},
      {9, "123456789", ""},
  };
  OpenBusiness();
  for (const auto& [field, text, error] : cases) {
    const auto before = Text(field).text();
    Text(field).SetText(text);
    const auto errors = Errors();
    EXPECT_EQ(errors, *error == '\0' ? std::vector<std::string>{} : std::vector<std::string>{error})
        << field << ": " << text;
    EXPECT_EQ(Text(field).marked_invalid(), *error != '\0') << field << ": " << text;
    EXPECT_EQ(Text(field).invalid_reason().empty() && *error != '\0', false) << "it says why";
    Text(field).SetText(before);
  }
  EXPECT_THAT(outside.errors.reports, IsEmpty());
}

TEST_F(FieldRulesTest, TakeEitherLineOfAnAddress) {
  OpenBusiness();
  Text(6).SetText("");
  Text(7).SetText("SUITE 4");
  EXPECT_THAT(Errors(), IsEmpty());
}

TEST_F(FieldRulesTest, ListAllErrorsInTheOrderOfTheScreen) {
  OpenNew("I");
  form.mPhone.SetText("405");
  form.mFuelTaxAcct.SetText("62");
  EXPECT_THAT(Errors(), ElementsAre("- First name is a required field.", "- Last name is a required field.",
                                    "- Fuel tax account number is invalid.", "- Phone number is invalid.",
                                    "- Mailing address is a required field.",
                                    "- State is a required field and must be selected from the list.",
                                    "- City is a required field.", "Zip Code is required",
                                    "- Resident address is a required field.",
                                    "- State is a required field and must be selected from the list.",
                                    "- City is a required field.", "Zip Code is required"));
  EXPECT_TRUE(form.mPhone.marked_invalid());
  EXPECT_EQ(form.mPhone.invalid_reason(), "A phone number has ten digits, area code first.");
}

TEST_F(FieldRulesTest, AskABusinessForItsResidentAddressOnlyWhereItHasOne) {
  OpenBusiness();
  EXPECT_THAT(Errors(), IsEmpty());
  EXPECT_FALSE(Command(option_number::kSameAsResident).enabled());
  EXPECT_TRUE(Command(option_number::kSameAsMailing).enabled());

  Text(12).SetText("OAKHAVEN");
  EXPECT_THAT(Errors(), ElementsAre("- Resident address is a required field.",
                                    "- State is a required field and must be selected from the list.",
                                    "Zip Code is required"));
  Text(12).SetText("");
  EXPECT_FALSE(Text(10).marked_invalid());
  EXPECT_FALSE(form.mCboState[1].marked_invalid());
}

TEST_F(FieldRulesTest, AskABusinessThatHadAResidentAddressForOne) {
  auto business = Business();
  business.emplace_back("RES_ADDR_1", "1 OLD RD");
  Open(business, "B");
  Text(10).SetText("");
  EXPECT_EQ(form.OrigResAddr(), "1 OLD RD");
  EXPECT_EQ(Errors().size(), 4u);
}

TEST_F(FieldRulesTest, FindNothingWrongWhileAMailingSuggestionIsShown) {
  OpenBusiness();
  Text(14).SetText("12 DEPOT AVE");
  Text(4).SetText("");
  EXPECT_TRUE(form.rules().CheckEdits());
  Text(14).SetText("");
  Text(19).SetText("7 ORCHARD RD");  // a resident one alone changes nothing
  EXPECT_FALSE(form.rules().CheckEdits());
}

TEST_F(FieldRulesTest, EnableSavingWhenATextOrAReturnMailBoxIsChanged) {
  OpenIndividual();
  EXPECT_FALSE(Command(option_number::kSave).enabled());
  form.mPhone.SetText("4055212486");
  form.mFuelTaxAcct.SetText("6200010000301");
  form.mCboState[0].UserPicks(2);
  EXPECT_FALSE(Command(option_number::kSave).enabled());
  form.mChkReturnMail[0].UserClicks();
  EXPECT_TRUE(Command(option_number::kSave).enabled());
  form.mPhone.SetText("405");
  EXPECT_FALSE(Command(option_number::kSave).enabled());
}

TEST_F(FieldRulesTest, MarkAStateThatIsInNoTable) {
  auto business = Business();
  business.emplace_back("MAIL_ST", "ZZ");
  Open(business, "B");
  form.ShowState(kMailingSide, "ZZ");
  EXPECT_EQ(form.mCboState[0].shown_text(), "ZZ") << "it can be read";
  EXPECT_THAT(Errors(), ElementsAre("- State is a required field and must be selected from the list."));
  EXPECT_THAT(outside.errors.reports, IsEmpty());
}

TEST_F(FieldRulesTest, ReportAFieldThatHasNoRule) {
  EXPECT_FALSE(form.rules().ValidateName(3));
  EXPECT_FALSE(form.rules().ValidateName(99));
  EXPECT_THAT(outside.errors.Procedures(),
              ElementsAre("ZEMLO_CustMaint.ValidateName", "ZEMLO_CustMaint.ValidateName"));
}

class KeyFiltersTest : public MaintainedCustomer {
 protected:
  std::string Typed(std::size_t field, std::u32string_view keys) {
    std::string taken;
    for (const char32_t key : keys) {
      const auto character = Text(field).key_filter(key);
      taken += character ? static_cast<char>(*character) : '!';
    }
    return taken;
  }
};

TEST_F(KeyFiltersTest, TakeWhatNamesCitiesAndZipsAreWrittenWith) {
  outside.utilities.refused_keys = U"#";
  EXPECT_EQ(Typed(0, U"aZ-' 1."), "aZ-' !!");
  EXPECT_EQ(Typed(2, U"\u00e9\u0131\u017f\U0001d400"), "!!!!") << "only the letters of the list";
  EXPECT_EQ(Typed(8, U"aZ. 1#"), "AZ. !!");
  EXPECT_EQ(Typed(9, U"1-A#"), "1-A!");
  EXPECT_FALSE(Text(3).key_filter);
  EXPECT_FALSE(Text(6).key_filter);
}

TEST_F(KeyFiltersTest, JudgeWhatIsPastedByItsText) {
  outside.utilities.no_names = {"OReilly2", "Port Holm 2"};
  EXPECT_FALSE(Text(0).paste_filter("O Rei%lly 2"));
  EXPECT_TRUE(Text(0).paste_filter("Port Holm 2")) << "blanks and % are taken out before it is judged";
  EXPECT_FALSE(Text(12).paste_filter("Port Holm 2"));
  outside.utilities.refused_keys = U"#";
  EXPECT_TRUE(Text(9).paste_filter(" 12345-6789 "));
  EXPECT_FALSE(Text(9).paste_filter("123#5"));

  // The key for pasting asks for what the clipboard holds.
  outside.host.clipboard = "Port Holm 2";
  std::int16_t key = kPasteKey;
  bool accepted = true;
  form.key_filters().AllowKeyPressToPassCity(key, accepted);
  EXPECT_FALSE(accepted);
  form.key_filters().AllowKeyPressToPassName(key, accepted);
  EXPECT_TRUE(accepted);
  EXPECT_EQ(key, kPasteKey);
}

}  // namespace
}  // namespace customers
