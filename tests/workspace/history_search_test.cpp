#include "workspace/requests/history_search.h"

#include <map>

#include "tests/workspace/workspace_room_test.h"
#include "workspace/fields/page_fields.h"

namespace workspace {
namespace {

using platform::Date;
using testing::ElementsAre;
using testing::IsEmpty;

Date Day(int year, unsigned month, unsigned day) {
  return std::chrono::year(year) / static_cast<int>(month) / static_cast<int>(day);
}

class HistorySearchTest : public WorkspaceRoomTest {
 protected:
  HistorySearchTest() { form_types_.FilterFormType("CMOV", kTracking); }

  void UserSearches() { search_.mCmdTracking_Click(); }
  void ServerReplies(const std::vector<fakes::Row>& letters) {
    fakes_.server.ReplyWith("CORRHIST", letters);
    reply_ = TakeReply();
  }
  /// The keys of the last request, "KORVADSK" left out.
  std::vector<std::string> Keys() {
    auto keys = fakes_.server.LastRequest().Keys();
    for (auto& key : keys) {
      EXPECT_TRUE(key.starts_with("KORVADSK|key:")) << key;
      key.erase(0, std::string("KORVADSK|key:").size());
    }
    return keys;
  }
  std::vector<std::string> Listed(PageIndex page, const char* column) {
    std::vector<std::string> texts;
    const auto& rows = *pages_.sdgGrid(page).rows();
    for (std::size_t row = 0; row < rows.RecordCount(); ++row) texts.push_back(rows.Text(row, column));
    return texts;
  }

  TrackingPage& page_ = pages_.tracking;
  Reply reply_;
  PageFields fields_{fakes_.services(), pages_, search_fields_, field_check_};
  SearchCheck check_{fakes_.services(), message_title_, search_fields_, page_, field_check_};
  HistorySearch search_{{fakes_.services(), request_, search_fields_, pages_, envelope_,
                         fields_.troop_district, check_, customer_}};
};

TEST_F(HistorySearchTest, SendsEveryCriterionInItsPlace) {
  UserPicksLetterType("120", kTracking);
  form_types_.FilterFormType("CMOV", kTracking);
  UserPicksFormType("C", kTracking);
  PanelShowsCustomer("4711", kTracking);
  page_.txtFormNum.SetText("1234567-8");
  page_.txtTD.SetText(" B12 ");
  page_.txtBatch.SetText("70");
  page_.from_date.SetValue(Day(2024, 1, 5));
  page_.to_date.SetValue(Day(2024, 3, 9));
  page_.OptLetterStatus[TrackingPage::kFailure].SetSelected(true);
  UserSearches();

  const auto& request = fakes_.server.LastRequest();
  EXPECT_EQ(request.type, 79);
  EXPECT_EQ(request.user_id, "OFFICER1");
  EXPECT_EQ(request.time_out, std::chrono::minutes(3));
  EXPECT_TRUE(request.was_built);
  EXPECT_THAT(Keys(),
              ElementsAre("LTR_TYP_ID|=|120", "CUST_ID|=|4711", "FORM_NBR|=|1234567", "FORM_CK_DGT_NBR|=|8",
                          "FORM_TYP_CD|=|C", "LETTER_TYPE|=|Failed", "TRP_ID|=|B", "TRP_DIST_ID|=|12",
                          "START_DT|between|2024-01-05 and 2024-03-09", "BATCH_NBR|=|70", "THIN|=|YES"));
  EXPECT_EQ(pending_.name(), "Letter_History");
  EXPECT_EQ(pending_.message_key(), request.message_key);
}

TEST_F(HistorySearchTest, SendsOneCriterionAlone) {
  struct Case {
    const char* what;
    std::function<void(TrackingPage&)> user;
    std::vector<std::string> keys;  ///< without "LETTER_TYPE" and "THIN"
  };
  const Case cases[] = {
      {"nothing", [](auto&) {}, {}},
      {"troop", [](auto& page) { page.txtTD.SetText("A"); }, {"TRP_ID|=|A"}},
      {"from", [](auto& page) { page.from_date.SetValue(Day(2020, 2, 29)); }, {"START_DT|=|2020-02-29"}},
      {"one day",
       [](auto& page) {
         page.from_date.SetValue(Day(2024, 1, 1));
         page.to_date.SetValue(Day(2024, 1, 1));
       },
       {"START_DT|=|2024-01-01"}},
      {"longest range",
       [](auto& page) {
         page.from_date.SetValue(Day(2024, 1, 1));
         page.to_date.SetValue(Day(2024, 12, 31));
       },
       {"START_DT|between|2024-01-01 and 2024-12-31"}},
      {"number", [](auto& page) { page.txtFormNum.SetText("12345678"); }, {"FORM_NBR|=|12345678"}},
      {"batch", [](auto& page) { page.txtBatch.SetText(" 7"); }, {"BATCH_NBR|=| 7"}},
  };
  for (const auto& [what, user, expected] : cases) {
    request_part_.ClearField(kTracking);
    user(page_);
    UserSearches();
    std::vector<std::string> keys;
    for (const auto& key : Keys()) {
      if (key != "LETTER_TYPE|=|All" && key != "THIN|=|YES") keys.push_back(key);
    }
    EXPECT_EQ(keys, expected) << what;
    EXPECT_EQ(Keys().size(), expected.size() + 2) << what;
  }
}

// The status said "Requesting letter history" for ever, and only "Clear" gave the customer commands back.
TEST_F(HistorySearchTest, LeavesNothingBehindWhereItCannotBeSent) {
  fakes_.server.on_send = [](const auto&) {
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "no server");
  };
  UserSearches();
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.SendLetterInq"));
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
  EXPECT_TRUE(page_.panel.select_customer.enabled());
  EXPECT_TRUE(page_.panel.select_account.enabled());
  EXPECT_TRUE(page_.sdgGrid.enabled());

  fakes_.server.on_send = nullptr;
  UserSearches();
  EXPECT_FALSE(page_.panel.select_customer.enabled());
  fakes_.server.on_send = [](const auto&) {
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "no server");
  };
  UserSearches();
  EXPECT_FALSE(page_.panel.select_customer.enabled()) << "the list of the first search still stands";
}

TEST_F(HistorySearchTest, DoesNotGoOnSayingThatItRequestsWhereTheListFails) {
  UserSearches();
  const auto broken = page_.sdgGrid.ContentChanged.Connect(
      [] { throw platform::Failure(platform::Failure::Kind::kInternal, "no list"); });
  ServerReplies({{{"SEQ_NBR", "1"}}});
  search_.FillHistory(reply_, kTracking);
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.FillHistory"));
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
}

TEST_F(HistorySearchTest, NamesTheLetterStatus) {
  const std::map<std::size_t, std::string> names = {{TrackingPage::kAll, "All"},
                                                    {TrackingPage::kSuccessful, "Succeeded"},
                                                    {TrackingPage::kFailure, "Failed"}};
  for (const auto& [option, name] : names) {
    page_.OptLetterStatus[option].SetSelected(true);
    UserSearches();
    EXPECT_EQ(Keys().front(), "LETTER_TYPE|=|" + name);
  }
}

// A search for 7654321 used to ask for the digit of the number before it, and found nothing.
TEST_F(HistorySearchTest, ForgetsTheCheckDigitOfTheSearchBefore) {
  page_.txtFormNum.SetText("1234567-8");
  UserSearches();
  page_.txtFormNum.SetText("7654321");
  UserSearches();
  EXPECT_THAT(Keys(), ElementsAre("FORM_NBR|=|7654321", "LETTER_TYPE|=|All", "THIN|=|YES"));
}

TEST_F(HistorySearchTest, OfTheCorrespondencePageAsksForADocumentOrItsCustomer) {
  UserPicksLetterType("110");
  request_.customer_id = "4711";
  search_fields_ = {.letter = {.form_number = "7654321"}, .from_date = "2024-01-05", .troop = "B"};
  search_.SendLetterInq(kPage);
  EXPECT_THAT(Keys(), ElementsAre("LTR_TYP_ID|=|110", "CUST_ID|=|4711", "THIN|=|YES"));
  request_.form_number = "1234567";
  search_.SendLetterInq(kPage);
  EXPECT_THAT(Keys(), ElementsAre("LTR_TYP_ID|=|110", "FORM_NBR|=|1234567", "THIN|=|YES"));
}

TEST_F(HistorySearchTest, TellsThatItIsUnderWay) {
  pending_.TimedOut();
  fakes_.journal.Clear();
  UserSearches();
  EXPECT_THAT(fakes_.journal.lines(),
              ElementsAre("pointer hourglass", "status Requesting letter history", "send type 79"));
  EXPECT_FALSE(pending_.timed_out());
  EXPECT_FALSE(page_.sdgGrid.enabled());
  EXPECT_TRUE(pages_.correspondence.sdgGrid.enabled());
  EXPECT_FALSE(page_.panel.select_customer.enabled());
  EXPECT_FALSE(page_.panel.select_account.enabled());
  request_part_.ClearField(kTracking);
  EXPECT_TRUE(page_.panel.select_customer.enabled());
}

TEST_F(HistorySearchTest, IsRefusedInOneBox) {
  constexpr const char* kFrom = "FROM date is required if TO date is selected\r\n";
  constexpr const char* kOrder = "TO date is greater than FROM date\r\n";
  constexpr const char* kRange =
      "From and To Date range could not be greater than 365 days\r\n"
      "If no To Date is selected, From Date could not be 30 days earlier than today\r\n";
  constexpr const char* kNumber = "no such form, Invalid Manual Citation Number entered\r\n";
  struct Case {
    const char* number;
    std::optional<Date> from;
    std::optional<Date> to;
    std::string message;
    std::vector<platform::Control*> marked;
    const char* reason = "";
  };
  const Case cases[] = {
      {"", {}, Day(2024, 1, 1), kFrom, {&page_.from_date}},
      {"",
       Day(2024, 1, 2),
       Day(2024, 1, 1),
       kOrder,
       {&page_.to_date},
       "The TO day 01/01/2024 lies before the FROM day 01/02/2024."},
      {"",
       Day(2024, 1, 1),
       Day(2025, 1, 1),
       kRange,
       {&page_.to_date},
       "From 01/01/2024 to 01/01/2025 is longer than 365 days."},
      {"wrong", {}, {}, kNumber, {&page_.txtFormNum}},
      {"wrong", {}, Day(2024, 1, 1), std::string(kNumber) + kFrom, {&page_.txtFormNum, &page_.from_date}},
  };
  fakes_.utilities.form_number_rule = [](const auto&, const auto& number) {
    return platform::Utilities::FormNumberVerdict{number != "wrong", "no such form"};
  };
  platform::Control* const fields[] = {&page_.txtFormNum, &page_.from_date, &page_.to_date,
                                       &page_.ZEMLO_FormTypeCodes};
  for (const auto& [number, from, to, message, marked, reason] : cases) {
    fakes_.status.reason.clear();
    page_.txtFormNum.SetText(number);
    page_.from_date.SetValue(from);
    page_.to_date.SetValue(to);
    fakes_.host.messages.clear();
    UserSearches();
    EXPECT_THAT(fakes_.host.MessageTexts(), ElementsAre(message));
    EXPECT_EQ(fakes_.host.messages.at(0).icon, platform::MessageIcon::kExclamation);
    EXPECT_EQ(fakes_.host.messages.at(0).title, "Letters");
    EXPECT_EQ(fakes_.status.reason, reason) << message;
    for (auto* field : fields) {
      EXPECT_EQ(field->marked_invalid(), std::ranges::count(marked, field) == 1) << message;
    }
  }
  EXPECT_THAT(fakes_.server.requests, IsEmpty());
  EXPECT_TRUE(page_.panel.select_customer.enabled());
}

TEST_F(HistorySearchTest, ListsTheLettersByTheirFirstPrint) {
  UserSearches();
  for (auto& option : page_.OptLetter) option.SetEnabled(true);
  page_.OptLetter[TrackingPage::kViewLetter].SetSelected(true);
  ServerReplies({{{"SEQ_NBR", 1}, {"PRNT_TS", "2024-05-01 10.00.00"}},
                 {{"SEQ_NBR", 2}},
                 {{"SEQ_NBR", 3}, {"PRNT_TS", "2023-05-01 10.00.00"}}});
  search_.FillHistory(reply_, kTracking);
  EXPECT_THAT(Listed(kTracking, "SEQ_NBR"), ElementsAre("2", "3", "1"));
  EXPECT_EQ(page_.sdgGrid.rows()->CurrentRow(), 0u);
  EXPECT_EQ(fakes_.status.LastText(), "Displaying letter history");
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
  for (const auto& column : page_.sdgGrid.columns) {
    EXPECT_TRUE(page_.sdgGrid.rows()->HasColumn(column.key)) << column.key;
  }
  for (auto& option : page_.OptLetter)
    EXPECT_FALSE(option.enabled() || option.selected()) << option.caption();
}

// A click on a listed letter put its customer into the panel, and the next search was narrowed without a
// word.
TEST_F(HistorySearchTest, SaysThatItIsNarrowedToTheCustomerOfAListedLetter) {
  PanelShowsCustomer("4711", kTracking);
  page_.panel.name.SetCaption("A && B");
  UserSearches();
  EXPECT_EQ(fakes_.status.LastText(), "Requesting letter history");
  EXPECT_THAT(fakes_.status.reason, testing::StartsWith("Searching letters of 4711 A & B only."));
  ServerReplies({{{"SEQ_NBR", 7}}});
  search_.FillHistory(reply_, kTracking);
  EXPECT_EQ(fakes_.status.LastText(), "Displaying letter history");
  EXPECT_THAT(fakes_.status.reason, testing::StartsWith("These are letters of 4711 A & B only."));

  customer_.TrackingCustomerFixed = true;  // whom the user has picked needs no word
  UserSearches();
  ServerReplies({{{"SEQ_NBR", 7}}});
  search_.FillHistory(reply_, kTracking);
  EXPECT_EQ(fakes_.status.reason, "");
}

TEST_F(HistorySearchTest, ListsOnThePageInFront) {
  UserSearches();
  ServerReplies({{{"SEQ_NBR", 7}}});
  page_.OptLetter[TrackingPage::kSave].SetEnabled(true);
  search_.FillHistory(reply_, kPage);
  EXPECT_THAT(Listed(kPage, "SEQ_NBR"), ElementsAre("7"));
  EXPECT_TRUE(page_.OptLetter[TrackingPage::kSave].enabled());
  search_.FillHistory(reply_, PageIndex::kBatch);  // which lists no letters
  EXPECT_THAT(Listed(kTracking, "SEQ_NBR"), ElementsAre("7"));
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(HistorySearchTest, ListsNothingUnderTheColumnsOfTheHistory) {
  UserSearches();
  for (const bool has_record : {true, false}) {
    page_.sdgGrid.Bind(nullptr);
    has_record ? ServerReplies({}) : void(reply_ = {});
    search_.FillHistory(reply_, kTracking);
    ASSERT_TRUE(page_.sdgGrid.rows());
    EXPECT_THAT(Listed(kTracking, "SEQ_NBR"), IsEmpty());
    EXPECT_EQ(fakes_.status.LastText(), "No letter history record found");
  }
}

}  // namespace
}  // namespace workspace
