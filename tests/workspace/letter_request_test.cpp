#include "workspace/requests/letter_request.h"

#include "tests/workspace/workspace_room_test.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LetterRequestTest : public WorkspaceRoomTest {
 protected:
  bool UserCreatesLetter() {
    bool started = false;
    request_part_.CreateLetter([&] { started = true; });
    return started;
  }
  std::vector<std::string> OfferedFormTypes(PageIndex page = kPage) {
    std::vector<std::string> codes;
    const auto& rows = *pages_.Letter(page).ZEMLO_FormTypeCodes.rows();
    for (std::size_t row = 0; row < rows.RecordCount(); ++row) codes.push_back(rows.Text(row, "CD_TBL_CD"));
    return codes;
  }
};

TEST_F(LetterRequestTest, OffersTheFormTypesTheLetterTypeNeeds) {
  auto& page = pages_.correspondence;
  UserPicksLetterType("120");
  EXPECT_EQ(page.ZEMLO_LetterType.Tag, "CR");
  EXPECT_THAT(OfferedFormTypes(), ElementsAre("", "C", "R"));
  EXPECT_TRUE(page.ZEMLO_FormTypeCodes.enabled());
  EXPECT_TRUE(page.txtFormNum.enabled());
}

TEST_F(LetterRequestTest, TakesNoDocumentForALetterTypeThatMapsToItself) {
  auto& page = pages_.correspondence;
  PanelShowsCustomer("4711");
  page.txtFormNum.SetText("1234567");
  UserPicksLetterType("110");
  EXPECT_EQ(page.ZEMLO_LetterType.Tag, "");
  EXPECT_EQ(page.txtFormNum.text(), "");
  EXPECT_FALSE(page.ZEMLO_FormTypeCodes.enabled());
  EXPECT_FALSE(page.txtFormNum.enabled());
  EXPECT_THAT(fakes_.host.messages, IsEmpty());
}

TEST_F(LetterRequestTest, SaysThatACustomerLetterNeedsItsCustomer) {
  UserPicksLetterType("110");
  EXPECT_THAT(fakes_.host.MessageTexts(), ElementsAre("Customer Id is needed to create/search payment plan"));
  EXPECT_EQ(fakes_.host.messages[0].icon, platform::MessageIcon::kInformation);

  fakes_.host.messages.clear();
  UserPicksLetterType("110", kTracking);
  EXPECT_THAT(fakes_.host.messages, IsEmpty());
}

TEST_F(LetterRequestTest, KeepsARememberedFormTypeThatTheNextLetterTypeCanUse) {
  auto& form_types = pages_.correspondence.ZEMLO_FormTypeCodes;
  form_types.Tag = "R";
  UserPicksLetterType("120");
  EXPECT_EQ(form_types.Code(), "R");
  EXPECT_EQ(form_types.Tag, "");

  UserPicksLetterType("120");
  EXPECT_EQ(form_types.Code(), "");
}

TEST_F(LetterRequestTest, LeavesThePageAloneWithoutALetterType) {
  auto& form_types = pages_.correspondence.ZEMLO_FormTypeCodes;
  form_types.Tag = "R";
  UserPicksLetterType("");
  EXPECT_EQ(form_types.Tag, "R");
  EXPECT_THAT(fakes_.host.messages, IsEmpty());
}

TEST_F(LetterRequestTest, SplitsNumberAndCheckDigit) {
  struct Case {
    const char* text;
    const char* number;
    const char* digit;
  };
  for (const auto& [text, number, digit] :
       {Case{"1234567-8", "1234567", "8"}, Case{"12345678", "12345678", "x"},
        Case{"123456789", "123456789", "x"}, Case{"12-345678", "12", "x"}, Case{"123456-78", "123456", "x"},
        Case{"1234567-", "1234567", "x"}, Case{"-", "", "x"}, Case{"ÄÖÜ4567-é", "ÄÖÜ4567", "é"},
        Case{"", "", ""}}) {
    request_.form_text = text;
    request_.form_number = "old";
    request_.check_digit = "x";
    GetFormAndCheckDigit(fakes_.services(), request_);
    EXPECT_EQ(request_.form_number, number) << text;
    EXPECT_EQ(request_.check_digit, digit) << text;
  }
}

TEST_F(LetterRequestTest, TakesThePageIntoAValidRequest) {
  UserPicksLetterType("120");
  UserPicksFormType("C");
  PanelShowsCustomer("4711");
  pages_.correspondence.txtFormNum.SetText("1234567-8");
  EXPECT_TRUE(UserCreatesLetter());
  EXPECT_EQ(request_.customer_id, "4711");
  EXPECT_EQ(request_.form_type, "C");
  EXPECT_EQ(request_.form_number, "1234567");
  EXPECT_EQ(request_.check_digit, "8");
  EXPECT_THAT(fakes_.host.messages, IsEmpty());
}

TEST_F(LetterRequestTest, ListsWhatIsMissingInOneMessage) {
  EXPECT_FALSE(UserCreatesLetter());
  EXPECT_THAT(fakes_.host.MessageTexts(),
              ElementsAre("Please select a customer\r\nPlease select a correspondence type\r\n"));
  EXPECT_EQ(fakes_.host.messages[0].icon, platform::MessageIcon::kExclamation);
  EXPECT_EQ(fakes_.host.messages[0].title, "Letters");
  EXPECT_TRUE(pages_.correspondence.ZEMLO_LetterType.marked_invalid());
}

TEST_F(LetterRequestTest, RefusesADocumentThatIsNotWhole) {
  struct Case {
    const char* remembered;
    const char* form_type;
    const char* form_text;
    const char* message;
  };
  fakes_.utilities.form_number_rule = [](const std::string&, const std::string& number) {
    return platform::Utilities::FormNumberVerdict{number != "bad", "Wrong digit"};
  };
  UserPicksLetterType("120");
  PanelShowsCustomer("4711");
  for (const auto& [remembered, form_type, form_text, message] :
       {Case{"C", "", "", "Please enter a doc type and number\r\n"},
        Case{"C", "C", "", "Please enter a doc number\r\n"},
        Case{"", "", "123", "Please select a form type\r\n"},
        Case{"", "C", "bad", "Wrong digit, Invalid Manual Citation Number entered\r\n"}}) {
    fakes_.host.messages.clear();
    pages_.correspondence.ZEMLO_FormTypeCodes.Tag = remembered;
    UserPicksFormType(form_type);
    pages_.correspondence.txtFormNum.SetText(form_text);
    EXPECT_FALSE(UserCreatesLetter()) << message;
    EXPECT_THAT(fakes_.host.MessageTexts(), ElementsAre(message));
  }
}

TEST_F(LetterRequestTest, ClearsTheCorrespondencePage) {
  UserPicksLetterType("120");
  UserPicksFormType("C");
  PanelShowsCustomer("4711");
  pages_.correspondence.panel.EnableSelection(false);
  pages_.correspondence.txtFormNum.SetText("1234567-8");
  UserCreatesLetter();
  search_fields_.letter.customer_id = "4711";
  request_part_.ClearField(kPage);
  EXPECT_EQ(search_fields_.letter.customer_id, "4711") << "of the other page";

  auto& page = pages_.correspondence;
  EXPECT_EQ(request_.customer_id + request_.form_text + request_.form_number + request_.check_digit +
                request_.form_type,
            "");
  EXPECT_EQ(page.ZEMLO_LetterType.GetText() + page.ZEMLO_FormTypeCodes.GetText() + page.txtFormNum.text(),
            "");
  EXPECT_EQ(page.panel.customer_id.caption(), "");
  EXPECT_TRUE(page.panel.select_customer.enabled());
  for (auto& option : page.OptOnline) EXPECT_FALSE(option.enabled());
  ASSERT_NE(page.sdgGrid.rows(), nullptr);
  EXPECT_TRUE(page.sdgGrid.rows()->HasColumn("DCMT_FILE_TXT"));
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
}

TEST_F(LetterRequestTest, ClearsTheTrackingPageAndReleasesItsCustomer) {
  auto& page = pages_.tracking;
  customer_.TrackingCustomerFixed = true;
  page.from_date.SetValue(fakes_.clock.Today());
  page.txtFormNum.SetText("1234567");
  page.txtBatch.SetText("7");
  page.txtTD.SetText("A12");
  page.OptLetterStatus[TrackingPage::kAll].SetSelected(true);
  request_.customer_id = "1";
  search_fields_ = {.letter = {.customer_id = "4711"}, .from_date = "2024-01-05", .troop = "A"};
  request_part_.ClearField(kTracking);

  EXPECT_EQ(search_fields_.letter.customer_id + search_fields_.from_date + search_fields_.troop, "");
  EXPECT_EQ(request_.customer_id, "1") << "of the other page";
  EXPECT_FALSE(customer_.TrackingCustomerFixed);
  EXPECT_TRUE(page.from_date.IsEmpty());
  EXPECT_EQ(page.txtFormNum.text() + page.txtBatch.text() + page.txtTD.text(), "");
  EXPECT_FALSE(page.OptLetterStatus[TrackingPage::kAll].selected());
  EXPECT_FALSE(page.search.enabled());
  EXPECT_THAT(OfferedFormTypes(kTracking), ElementsAre("", "C", "M", "O", "V"));
}

}  // namespace
}  // namespace workspace
