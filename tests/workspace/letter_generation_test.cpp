#include "workspace/letters/letter_generation.h"

#include "tests/workspace/workspace_room_test.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// Flag words of a root element.
constexpr const char* kWhole = "<XML_CONTEXT><NAME>ACME</NAME></XML_CONTEXT>";
constexpr const char* kForUser = "<XML_CONTEXT State=\"8\"><NAME State=\"8\"/></XML_CONTEXT>";
constexpr const char* kForParagraphs = "<XML_CONTEXT State=\"10\"/>";

class LetterGenerationTest : public WorkspaceRoomTest {
 protected:
  void UserAsksFor(const std::string& letter_type) {
    generation_.SelectNewType({.letter_type = letter_type});
  }
  void ServerRepliesWith(const std::string& context, const fakes::Row& history = {{"CUST_ID", "4711"}}) {
    fakes_.server.Reply(
        fakes::ScriptedReply::With("XML_CONTEXT", {{{"XML_CONTEXT", context}}}).And("CORRHIST", {history}));
    generation_.CreateNewCorrespondence(TakeReply());
  }
  std::vector<std::string> Input() {
    return fakes_.server.LastRequest().FindRecord("XML_CONTEXT_INPUT").Assigned();
  }
};

TEST_F(LetterGenerationTest, AsksForTheDataOfTheChosenLetter) {
  GivenTemplate("TAX110.docx");
  request_.customer_id = "4711";
  UserAsksFor("110");

  const auto& sent = fakes_.server.LastRequest();
  EXPECT_EQ(sent.type, 83);
  EXPECT_EQ(sent.user_id, "");
  EXPECT_THAT(sent.Keys(),
              ElementsAre("KORVADSK|key: LTR_TYP_ID|=|110", "KORVADSK|key: POPULATE_LTR_BOOKMARKS|=|Y",
                          "KORVADSK|key: EmitFieldDescriptors|=|Y", "KORVADSK|key: ExplainState|=|Y"));
  EXPECT_THAT(Input(), ElementsAre("CUST_ID=4711"));
  EXPECT_EQ(pending_.name(), "XMLRequest");
  EXPECT_FALSE(fakes_.status.ready);
  EXPECT_EQ(fakes_.status.LastText(), "Requesting bookmark information");
}

TEST_F(LetterGenerationTest, SendsWhatTheLetterIsAskedForWith) {
  struct Case {
    LetterRequestFields request;
    std::vector<std::string> columns;
  };
  const Case cases[] = {
      {{.customer_id = "4711", .form_type = "C", .form_number = "1234567", .check_digit = "8"},
       {"FORM_NBR=1234567", "FORM_TYP_CD=C"}},
      {{.customer_id = "4711", .form_type = "R", .form_number = "1234567", .check_digit = "8"},
       {"FORM_NBR=1234567", "FORM_CK_DGT_NBR=8", "RCPT_NBR=1234567", "RCPT_CK_DGT_NBR=8", "FORM_TYP_CD=R"}},
      {{.form_type = "R", .form_number = "1234567"},
       {"FORM_NBR=1234567", "RCPT_NBR=1234567", "FORM_TYP_CD=R"}},
      {{}, {}},
  };
  GivenTemplate("TAX110.docx");
  for (const auto& [request, columns] : cases) {
    request_ = request;
    UserAsksFor("110");
    EXPECT_EQ(Input(), columns);
  }
}

TEST_F(LetterGenerationTest, RefusesALetterTypeWithoutATemplate) {
  fakes_.reference.AnswersWhatContains(
      "SELECT a.DCMT_NM", std::make_shared<platform::RecordSet>(std::vector<std::string>{"DCMT_NM"}));
  fakes_.reference.AnswersWhatContains(
      "SELECT DCMT_NM, EFCTV_DT",
      fakes::RowsOf(
          "", {{{"DCMT_NM", "X.docx"}, {"EFCTV_DT", "2003-01-01"}, {"EXPRTN_DT", "2004-03-14"}},
               {{"DCMT_NM", "Y.docx "}, {"EFCTV_DT", "2004-03-16"}, {"EXPRTN_DT", platform::Value()}}}));
  UserAsksFor("110");
  EXPECT_EQ(fakes_.status.reason,
            "No letter was made. Letter type \"110\" has no template that is in force on 2004-03-15: "
            "\"X.docx\" was valid from 2003-01-01 to 2004-03-14, \"Y.docx\" is valid from 2004-03-16 on. "
            "Ask the administrator for one.");
  fakes_.reference.AnswersWhatContains(
      "SELECT DCMT_NM, EFCTV_DT", std::make_shared<platform::RecordSet>(std::vector<std::string>{"DCMT_NM"}));
  fakes_.reference.AnswersWhatContains("SELECT LTR_ONLN_IND", fakes::RowsOf("", {{{"LTR_ONLN_IND", "E"}}}));
  UserAsksFor("110");
  EXPECT_EQ(fakes_.status.reason,
            "No letter was made. Letter type \"110\" has no template: it is made elsewhere.");
  GivenTemplate("TAX110.docx");
  fakes_.files.content.clear();
  const auto fetched = fakes::RowsOf("", {{{"DCMT_NM", "tax110.docx "}}});
  fakes_.reference.AnswersWhatContains("SELECT a.*", fetched);
  UserAsksFor("110");
  EXPECT_THAT(fakes_.status.reason,
              testing::HasSubstr("\"templates/TAX110.docx\" is missing. Start the program again"));
  // A newer version that is still to come kept it from being fetched, and a start was advised for ever.
  fakes_.reference.AnswersWhatContains("SELECT a.*", fakes::RowsOf("", {{{"DCMT_NM", "TAX110_2.docx"}}}));
  UserAsksFor("110");
  EXPECT_THAT(fakes_.status.reason, testing::HasSubstr("is missing, and no start fetches it"));
  EXPECT_THAT(fakes_.host.MessageTexts(),
              ElementsAre("This request can not be processed at this time. "
                          "Please create a template to complete this request.",
                          "This request can not be processed at this time. "
                          "Please create a template to complete this request.",
                          "Unable to process this request. No template is available for print.",
                          "Unable to process this request. No template is available for print."));
  for (const auto& message : fakes_.host.messages) {
    EXPECT_EQ(message.icon, platform::MessageIcon::kExclamation);
    EXPECT_EQ(message.title, "Letters");
  }
  EXPECT_THAT(fakes_.server.requests, IsEmpty());
}

TEST_F(LetterGenerationTest, MakesNoNewLetterOfATemplateWithErrors) {
  GivenTemplate("TAX110.docx");
  fakes_.template_judge.faults[{"templates/TAX110.docx", "110"}] = "The template has an error.";
  UserAsksFor("110");
  EXPECT_EQ(fakes_.status.reason, "No letter was made. The template has an error.");
  EXPECT_THAT(fakes_.host.MessageTexts(),
              ElementsAre("Unable to process this request. No template is available for print."));
  EXPECT_THAT(fakes_.server.requests, IsEmpty());

  UserAsksFor("120");
  EXPECT_THAT(fakes_.server.requests, SizeIs(1)) << "the other letter has the fields it shows";
}

TEST_F(LetterGenerationTest, HandsTheDataOutOfALetterWhoseTemplateIsNotReady) {
  LetterData taken;
  generation_.HandOut([&](const LetterData& letter) { taken = letter; });
  for (const auto* fault : {"The template has an error.", ""}) {
    taken = {};
    GivenTemplate("TAX110.docx");
    if (*fault == '\0') fakes_.files.content.clear();
    fakes_.template_judge.faults[{"templates/TAX110.docx", "110"}] = fault;
    UserAsksFor("110");
    ServerRepliesWith(kWhole);
    EXPECT_EQ(taken.context, kWhole);
  }
}

// A trial in the office's own history would be a letter that nobody got.
TEST_F(LetterGenerationTest, TriesATemplateWithoutTheCatalogueAndRecordsNothing) {
  generation_.TryTemplate({.name = "NEW.docx", .path = "/home/author/NEW.docx"});
  UserAsksFor("110");
  ServerRepliesWith(kWhole);
  EXPECT_TRUE(print_.HasCalled("OpenDocument /home/author/NEW.docx"));
  print_.UserPrints();

  forms_.answer = {"<XML_CONTEXT>completed</XML_CONTEXT>", true};
  UserAsksFor("110");
  ServerRepliesWith(kForUser);
  EXPECT_THAT(forms_.entered, SizeIs(1));
  EXPECT_THAT(fakes_.server.requests, SizeIs(2)) << "two for data, none to record";
  EXPECT_THAT(fakes_.print_journal.steps, IsEmpty());
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(LetterGenerationTest, PreviewsALetterThatIsWholeAndRecordsItOncePrinted) {
  GivenTemplate("TAX110.docx");
  request_.customer_id = "4711";
  UserAsksFor("110");
  ServerRepliesWith(kWhole,
                    {{"CUST_ID", "4711"}, {"PRNT_STTS_CD", "P"}, {"QZ_CNTY_NBR", 55}, {"ADDR_TYP_CD", 1}});
  EXPECT_TRUE(print_.HasCalled("OpenDocument templates/TAX110.docx"));
  EXPECT_THAT(print_.merged, ElementsAre(kWhole));
  EXPECT_THAT(fakes_.server.requests, SizeIs(1));

  envelope_.Send({.type = 79, .name = "Letter_History"});  // a search meanwhile changes nothing
  print_.UserPrints();
  const auto& sent = fakes_.server.LastRequest();
  EXPECT_EQ(sent.type, 82);
  EXPECT_EQ(sent.user_id, "OFFICER1");
  EXPECT_THAT(sent.FindRecord("CORRHIST").Assigned(),
              testing::IsSupersetOf({"ACTION=ADD", "LTR_TYP_ID=110", "CUST_ID=4711", "QZ_CNTY_NBR=55",
                                     "ADDR_TYP_CD=1", "DCMT_FILE_TXT=TAX110.docx"}));
  EXPECT_EQ(pending_.name(), "LetterAU");
  EXPECT_EQ(fakes_.status.LastText(), "Saving letter history");
  EXPECT_EQ(print_.calls.back(), "dropped");
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

// "Clear" and another "Create Letter" while a preview stood used to change what its print was recorded as.
TEST_F(LetterGenerationTest, RecordsAPreviewedLetterAsItWasAskedForWhateverHappensToThePage) {
  const auto all_of_it = testing::IsSupersetOf(
      {"LTR_TYP_ID=120", "CUST_ID=4711", "FORM_NBR=1234567", "FORM_CK_DGT_NBR=8", "FORM_TYP_CD=C",
       "DCMT_FILE_TXT=CIT120.docx", "XML_CONTEXT=<XML_CONTEXT><NAME>ACME</NAME></XML_CONTEXT>"});
  const std::function<void()> meanwhile[] = {
      [this] { request_part_.ClearField(kPage); },
      [this] {
        GivenTemplate("TAX110.docx");
        request_ = {.customer_id = "1"};
        UserAsksFor("110");
      },
  };
  for (const auto& happens : meanwhile) {
    GivenTemplate("CIT120.docx");
    request_ = {.form_type = "C", .form_number = "1234567", .check_digit = "8"};
    UserAsksFor("120");
    ServerRepliesWith(
        kWhole,
        {{"CUST_ID", "4711"}, {"FORM_NBR", "1234567"}, {"FORM_CK_DGT_NBR", "8"}, {"FORM_TYP_CD", "C"}});
    happens();
    print_.UserPrints();
    EXPECT_THAT(fakes_.server.LastRequest().FindRecord("CORRHIST").Assigned(), all_of_it);
  }
}

TEST_F(LetterGenerationTest, LetsTheUserBeginTheNextLetterBeforeTheReply) {
  GivenTemplate("TAX110.docx");
  UserAsksFor("110");
  request_part_.ClearField(kPage);
  fakes_.server.Reply(fakes::ScriptedReply::With("XML_CONTEXT", {{{"XML_CONTEXT", kWhole}}}));
  generation_.CreateNewCorrespondence(TakeReply());
  print_.UserPrints();
  EXPECT_THAT(fakes_.server.LastRequest().FindRecord("CORRHIST").Assigned(),
              testing::IsSupersetOf({"LTR_TYP_ID=110", "DCMT_FILE_TXT=TAX110.docx"}));
}

TEST_F(LetterGenerationTest, LetsTheUserCompleteALetter) {
  GivenTemplate("TAX110.docx");
  for (const auto* context : {kForUser, kForParagraphs}) {
    forms_ = {};
    forms_.answer = {"<XML_CONTEXT>completed</XML_CONTEXT>", true};
    UserAsksFor("110");
    ServerRepliesWith(context);
    EXPECT_THAT(forms_.entered, ElementsAre(std::string("templates/TAX110.docx|TAX110.docx|") + context));
    EXPECT_THAT(fakes_.server.LastRequest().FindRecord("CORRHIST").Assigned(),
                testing::Contains("XML_CONTEXT=<XML_CONTEXT>completed</XML_CONTEXT>"));
  }
}

TEST_F(LetterGenerationTest, TellsWhichAddressFailed) {
  struct Case {
    const char* address_state;
    std::vector<std::string> messages;
  };
  const Case cases[] = {
      {"1800", {"Request could not be processed due to mail and residental address is incomplete."}},
      {"800", {"Request could not be processed due to mail address is incomplete."}},
      {"1000", {"Request could not be processed due to residental address is incomplete."}},
      {"0", {}},
  };
  GivenTemplate("TAX110.docx");
  for (const auto& [address_state, messages] : cases) {
    fakes_.host.messages.clear();
    UserAsksFor("110");
    ServerRepliesWith(std::string("<XML_CONTEXT State=\"400000\" V_ExplainAddr=\"Mailing address is marked "
                                  "bad.\" AddrState=\"") +
                          address_state + "\"/>",
                      {{"PRNT_STTS_CD", "V"}});
    EXPECT_EQ(fakes_.status.reason, "No letter was made. Mailing address is marked bad.");
    EXPECT_EQ(fakes_.host.MessageTexts(), messages);
    for (const auto& message : fakes_.host.messages) {
      EXPECT_EQ(message.icon, platform::MessageIcon::kCritical);
      EXPECT_EQ(message.title, "Letters");
    }
    EXPECT_EQ(fakes_.status.LastText(), "Ready");
    EXPECT_THAT(forms_.shown, IsEmpty());
  }
}

TEST_F(LetterGenerationTest, WarnsOfALetterThatGoesToTheOtherAddressForReturnedMail) {
  struct Case {
    const char* address_state;
    std::vector<std::string> messages;
  };
  const Case cases[] = {
      {"20100", {"Mail came back from the mailing address. This letter goes to the residential address."}},
      {"40090", {"Mail came back from the residential address. This letter goes to the mailing address."}},
      {"40080", {}},  // the one that came back was not to be used
      {"80", {}},
  };
  GivenTemplate("TAX110.docx");
  for (const auto& [address_state, messages] : cases) {
    fakes_.host.messages.clear();
    UserAsksFor("110");
    ServerRepliesWith(std::string("<XML_CONTEXT AddrState=\"") + address_state + "\"/>");
    EXPECT_EQ(fakes_.host.MessageTexts(), messages) << address_state;
  }
}

TEST_F(LetterGenerationTest, NeverFallsBackToThePreviousLettersData) {
  GivenTemplate("TAX110.docx");
  UserAsksFor("110");
  ServerRepliesWith(kWhole);
  print_.calls.clear();

  UserAsksFor("110");
  fakes_.server.ReplyWithNothing();
  generation_.CreateNewCorrespondence(TakeReply());
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.CreateNewCorrespondence"));
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
  EXPECT_FALSE(print_.HasCalled("MergeBookmarks"));
  EXPECT_EQ(generation_.letter().customer_id, "");
}

TEST_F(LetterGenerationTest, ReportsALetterTypeThatIsNoNumber) {
  UserAsksFor("ABC");
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.SelectNewType"));
  EXPECT_THAT(fakes_.server.requests, IsEmpty());
}

}  // namespace
}  // namespace workspace
