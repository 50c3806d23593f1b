#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "customers/customer_panel.h"
#include "tests/fakes/fake_services.h"
#include "tests/fakes/recording_print_component.h"
#include "workspace/fields/field_check.h"
#include "workspace/fields/form_type_filter.h"
#include "workspace/letters/history_record.h"
#include "workspace/letters/letter_customer.h"
#include "workspace/letters/letter_generation.h"
#include "workspace/letters/letter_printing.h"
#include "workspace/letters/letter_templates.h"
#include "workspace/requests/letter_request.h"

namespace workspace {

/// The dialogs a letter may need, answered by the test.
struct ScriptedForms : LetterForms {
  std::vector<std::string> shown;              ///< contexts shown with their errors
  std::vector<LetterInformation> information;  ///< the same, with all that was shown
  std::vector<std::string> entered;            ///< "file|template|context"
  EnteredLetter answer;

  void ShowLetterInformation(const LetterInformation& letter) override {
    shown.push_back(letter.context);
    information.push_back(letter);
  }
  EnteredLetter EnterBookmarks(const LetterData& letter) override {
    entered.push_back(letter.template_path + "|" + letter.template_name + "|" + letter.context);
    return answer;
  }
};

/// The parts of the room over faked outside parties, and the words their tests are written in.
class WorkspaceRoomTest : public testing::Test {
 protected:
  static constexpr auto kPage = PageIndex::kCorrespondence;
  static constexpr auto kTracking = PageIndex::kTracking;

  WorkspaceRoomTest() {
    fakes_.files.content["templates/kvcorr.dot"] = "letterhead";
    fakes_.reference.AnswersWhatContains("from FLS_code",
                                         fakes::RowsOf("", {{{"CD_TBL_CD", ""}, {"CD_TBL_DES", ""}}}));
    fakes_.utilities.descriptions = {{{"REFDOCTYP", "C"}, "Citation"},
                                     {{"REFDOCTYP", "M"}, "Memo"},
                                     {{"REFDOCTYP", "O"}, "Order"},
                                     {{"REFDOCTYP", "R"}, "Receipt"},
                                     {{"REFDOCTYP", "V"}, "Voucher"}};
    GivenLetterTypes({{"110", "Tax liability", "O", ""},
                      {"120", "Citation notice", "O", "CR"},
                      {"130", "Nightly notice", " b ", ""}});
  }

  struct LetterType {
    std::string code;
    std::string name;
    std::string online;
    std::string form_types;  ///< "" for a letter to a customer
  };
  void GivenLetterTypes(const std::vector<LetterType>& types) {
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
  /// The server's reply, which has come, to the request that is awaited; an empty one where none has.
  Reply TakeReply() {
    fakes_.RunEvents();
    return pending_.TakeReply(fakes_.server).value_or(Reply());
  }
  void UserPicksLetterType(const std::string& code, PageIndex page = kPage) {
    pages_.Letter(page).ZEMLO_LetterType.Code(code);
    request_part_.LetterTypeChanged(page);
  }
  void UserPicksFormType(const std::string& code, PageIndex page = kPage) {
    pages_.Letter(page).ZEMLO_FormTypeCodes.Code(code);
  }
  void PanelShowsCustomer(const std::string& id, PageIndex page = kPage) {
    pages_.Letter(page).panel.customer_id.SetCaption(id);
  }

  fakes::RecordingPrintComponent print_;
  fakes::FakeServices fakes_{&print_};
  const std::string message_title_ = "Letters";
  PendingRequest pending_;
  LetterRequestFields request_;
  SearchFields search_fields_;
  customers::CurrentCustomer customer_;
  Pages pages_{fakes_.services()};
  std::unique_ptr<platform::ReplyListener> listener_ = fakes_.server.NewListener();
  RequestEnvelope envelope_{fakes_.services(), pending_, *listener_};
  FieldCheck field_check_{fakes_.services(), pages_};
  FormTypeFilter form_types_{fakes_.services(), message_title_, request_, pages_};
  LetterRequest request_part_{{fakes_.services(), message_title_, request_, search_fields_, customer_, pages_,
                               field_check_, form_types_}};
  LetterTemplates templates_{fakes_.services(), message_title_, envelope_, *listener_};
  HistoryRecord history_{fakes_.services()};
  ScriptedForms forms_;
  LetterPrinting printing_{
      {fakes_.services(), envelope_, *listener_, history_,
       [this](const std::string& name) { return name == "Letter_Print" ? run_ : nullptr; }}};
  PrintRun* run_ = nullptr;
  LetterCustomer letter_customer_{fakes_.services(), message_title_, customer_, pages_.correspondence.panel,
                                  pages_.correspondence.txtFormNum};
  LetterGeneration generation_{{fakes_.services(), message_title_, request_, envelope_, templates_, forms_,
                                printing_, letter_customer_}};
};

}  // namespace workspace
