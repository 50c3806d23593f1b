#pragma once

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"
#include "tests/fakes/recording_print_component.h"
#include "workspace/document/zemlo_corresp.h"

namespace workspace {

/// The whole workspace over faked outside parties, worked through its controls.
class WorkspaceTest : public testing::Test {
 protected:
  static constexpr auto kPage = PageIndex::kCorrespondence;
  static constexpr auto kTracking = PageIndex::kTracking;

  WorkspaceTest() {
    fakes_.files.content["templates/kvcorr.dot"] = "letterhead";
    fakes_.reference.AnswersWhatContains("from FLS_code",
                                         fakes::RowsOf("", {{{"CD_TBL_CD", ""}, {"CD_TBL_DES", ""}}}));
    fakes_.reference.AnswersWhatContains("FLS_Ltr_template", NoRows("DCMT_NM"));
    fakes_.utilities.descriptions = {{{"REFDOCTYP", "C"}, "Citation"}, {{"REFDOCTYP", "R"}, "Receipt"}};
    GivenTypes({{"110", "Tax liability", "O", ""},
                {"120", "Citation notice", "O", "CR"},
                {"130", "Nightly notice", "B", ""}});
  }

  struct LetterType {
    std::string code;
    std::string name;
    std::string online;
    std::string form_types;  ///< "" for a letter to a customer
  };
  void GivenTypes(const std::vector<LetterType>& types) {
    std::vector<fakes::Row> rows = {{{"CD_TBL_CD", ""}, {"CD_TBL_DES", ""}, {"LTR_IND", ""}}};
    for (const auto& [code, name, online, form_types] : types) {
      rows.push_back({{"CD_TBL_CD", code}, {"CD_TBL_DES", name}, {"LTR_IND", online}});
      fakes_.utilities.values[{"LTRINPUT", code}] = form_types.empty() ? code : form_types;
    }
    fakes_.reference.AnswersWhatContains("from FLS_LETTER", fakes::RowsOf("", rows));
  }
  void GivenTemplate(const std::string& name) {
    fakes_.reference.AnswersWhatContains("SELECT a.DCMT_NM", fakes::RowsOf("", {{{"DCMT_NM", name}}}));
    fakes_.files.content["templates/" + name] = "document";
  }
  /// Started and shown, the template folder known.
  void GivenWorkspaceIsOpen() {
    document_.Initialize();
    document_.Show();
    fakes_.server.ReplyWith("XML_CONTEXT",
                            {{{"XML_CONTEXT", "<X><L_TEMPLATE_PATH>srv</L_TEMPLATE_PATH></X>"}}});
    fakes_.RunEvents();
    fakes_.journal.Clear();
  }

  void UserChoosesCustomer(const std::string& id, PageIndex page = kPage) {
    document_.FillCustomerField({.CustID = id, .CUSTNAME = "ACME"}, page);
  }
  void UserPicksLetterType(const std::string& code, PageIndex page = kPage) {
    auto& list = document_.pages().Letter(page).ZEMLO_LetterType;
    list.UserOpens();
    list.UserPicks(RowOf(list, code));
  }
  void UserPicksFormType(const std::string& code, PageIndex page = kPage) {
    auto& list = document_.pages().Letter(page).ZEMLO_FormTypeCodes;
    list.UserPicks(RowOf(list, code));
  }
  void UserTypesFormNumber(const std::string& text) {
    document_.pages().correspondence.txtFormNum.SetText(text);
  }
  void UserClicks(std::size_t online_option) {
    document_.pages().correspondence.OptOnline[online_option].UserClicks();
  }
  /// What disables it meanwhile; the reply has to enable it again.
  void GivenCreateLetterIsDisabled() {
    document_.pages().correspondence.OptOnline[CorrespondencePage::kCreateLetter].SetEnabled(false);
  }
  void UserClicksCreateLetter() { UserClicks(CorrespondencePage::kCreateLetter); }

  void ServerRepliesWithContext(const std::string& xml, const fakes::Row& history = {{"CUST_ID", "4711"}}) {
    fakes_.server.Reply(
        fakes::ScriptedReply::With("XML_CONTEXT", {{{"XML_CONTEXT", xml}}}).And("CORRHIST", {history}));
    fakes_.RunEvents();
  }

  const fakes::SentRequest& LastRequest() { return fakes_.server.LastRequest(); }
  bool CanCreateLetter() {
    return document_.pages().correspondence.OptOnline[CorrespondencePage::kCreateLetter].enabled();
  }
  static std::shared_ptr<platform::RecordSet> NoRows(std::string column) {
    return std::make_shared<platform::RecordSet>(std::vector<std::string>{std::move(column)});
  }
  static std::size_t RowOf(const composition::ZEMLO_LetterCombo& list, const std::string& code) {
    return list.rows()->Find("CD_TBL_CD", platform::RecordSet::Match::kEquals, code).value();
  }

  fakes::RecordingPrintComponent print_;
  fakes::FakeServices fakes_{&print_};
  ZEMLO_Corresp document_{fakes_.services()};
};

}  // namespace workspace
