#include "workspace/document/parts.h"

#include "platform/text.h"
#include "workspace/document/reply_routes.h"
#include "workspace/requests/form_info.h"

namespace workspace {

Parts::Parts(const platform::Services& services, WorkspaceData& data, platform::ReplyListener& listener)
    : gate(services, data.pending),
      envelope(services, data.pending, listener),
      field_check(services, data.pages),
      fields(services, data.pages, data.search, field_check),
      form_types(services, data.message_title, data.request, data.pages),
      letter_request({services, data.message_title, data.request, data.search, data.customer, data.pages,
                      field_check, form_types}),
      search_check(services, data.message_title, data.search, data.pages.tracking, field_check),
      history_search({services, data.request, data.search, data.pages, envelope, fields.troop_district,
                      search_check, data.customer}),
      letter_names(services),
      templates(services, data.message_title, envelope, listener),
      history(services),
      forms(services, data.message_title),
      printing(
          {services, envelope, listener, history, [this](const std::string& name) { return RunOf(name); }}),
      letter_customer(services, data.message_title, data.customer, data.pages.correspondence.panel,
                      data.pages.correspondence.txtFormNum),
      generation({services, data.message_title, data.request, envelope, templates, forms, printing,
                  letter_customer}),
      bookmark_view(services, data.dont_print, forms),
      stored_letters({services, templates, printing}),
      unrecorded_letters(services, data.pending, data.message_title, envelope),
      online_actions(
          services, letter_request, [this] { SelectNewType(); },
          [this](const std::string& request_name) { Reprint(request_name); }),
      customer_inquiry({services, envelope, data.customer, data.pages.tracking.panel}),
      customer_selection({services, data.message_title, data.customer,
                          [&data](PageIndex page) -> LetterRequestFields& {
                            return page == PageIndex::kTracking ? data.search.letter : data.request;
                          },
                          customers::MaintenanceOver(services, data.message_title),
                          [&services, &data](PageIndex page, const customers::PickedForm& form) {
                            FillFormInfo(services, data.message_title, data.pages, page, form);
                          }}),
      batch_history(services, envelope, data.pages.batch),
      batch_actions(services, data.message_title, data.pending, envelope, data.pages.batch),
      batch_reprint(services, envelope),
      letter_fetch(services, data.message_title, envelope, data.pages,
                   [this](const std::string& action) { return batch_reprint.TakeNext(action); }),
      local_reprint({services, data.pending, data.message_title, data.pages, letter_fetch, letter_names,
                     /*batch_browser=*/nullptr}),
      row_format(services, data.dont_print, letter_names, data.pages),
      letter_grid({services, data.action_lists, data.customer, data.pages.tracking, letter_fetch, gate}),
      correspondence_grid(services, data.pages.correspondence),
      batch_submission({services, data.pending, data.message_title, data.pages, envelope, row_format,
                        [this] { letter_grid.EnableActions(); }}),
      return_mail({services, data.pending, data.message_title, data.pages, envelope}),
      letter_actions({services, data.message_title, data.pages.tracking, letter_fetch, local_reprint,
                      batch_submission, return_mail}),
      handlers(Handlers()),
      replies(services, data.pending, data.message_title, ReplyRoutes(handlers, data.pages),
              [this, &data] {
                data.pages.tracking.letter_action.SetEnabled(true);
                letter_grid.ReplyHandled();
                local_reprint.ReplyHandled();
                batch_submission.ReplyHandled();
                return_mail.ReplyHandled();
              }),
      downloads(services, data.message_title,
                [this](const std::string& source) { templates.TemplateCame(source); }),
      pages_(data.pages) {}

void Parts::SelectNewType() {
  auto& page = pages_.correspondence;
  generation.SelectNewType({.letter_type = page.ZEMLO_LetterType.Code(),
                            .letter_name = page.ZEMLO_LetterType.GetText(),
                            .customer_id = std::string(platform::Trim(page.panel.customer_id.caption())),
                            .customer_name = page.panel.name.caption()});
}

ReplyHandlers Parts::Handlers() {
  ReplyHandlers known;
  known.CreateNewCorrespondence = [this](const Reply& reply) {
    generation.CreateNewCorrespondence(reply);
    field_check.EnableCreateLetter();
  };
  known.EnableCreateLetter = [this] { field_check.EnableCreateLetter(); };
  known.DecodeNetworkPath = [this](const Reply& reply) { templates.DecodeNetworkPath(reply); };
  known.CopyTemplate = [this] { templates.CopyTemplate(); };
  known.ViewBookMark = [this](const Reply& reply) { bookmark_view.ViewBookMark(reply); };
  known.FillHistory = [this](const Reply& reply, PageIndex page) { history_search.FillHistory(reply, page); };
  known.FillBatchHistory = [this](const Reply& reply) { batch_history.FillBatchHistory(reply); };
  known.SendBatchInq = [this] { batch_history.SendBatchInq(); };
  known.MergeLetter = [this](const Reply& reply, PageIndex page, const std::string& mode,
                             const std::string& letter_type) {
    stored_letters.MergeLetter(reply, page, mode, letter_type);
  };
  known.LocalReprintGoesOn = [this] { return local_reprint.GoesOn(); };
  known.StopLocalReprint = [this] { local_reprint.Stop(""); };
  known.LocalReprintTakesError = [this](const Reply& reply, const std::string& error) {
    return local_reprint.TakesError(reply, error);
  };
  known.LocalReprintIsOver = [this] { return local_reprint.IsOver(); };
  known.HasLettersToReprint = [this](const std::string& letter_type) {
    return batch_reprint.HasLettersToReprint(letter_type);
  };
  known.SendBatchCount = [this](std::string_view status) { batch_reprint.SendBatchCount(status); };
  known.BatchItemsReplied = [this](const Reply& reply) { batch_submission.Replied(reply); };
  known.BatchItemsFailed = [this] { batch_submission.Failed(); };
  known.ReturnMailReplied = [this](const Reply& reply) { return_mail.Replied(reply); };
  known.FillCustFromLetter = [this](const Reply& reply) { customer_inquiry.FillCustFromLetter(reply); };
  known.FillCustomerInfo = [this](const Reply& reply) { customer_inquiry.FillCustomerInfo(reply); };
  return known;
}

PrintRun* Parts::RunOf(const std::string& request_name) {
  if (request_name == "Letter_Print") return &local_reprint;
  return tracking::BatchReprint::IsReprint(request_name) ? &batch_reprint : nullptr;
}

// A listed letter of the correspondence page is viewed, or printed as a run of one.
void Parts::Reprint(const std::string& request_name) {
  if (request_name == "Letter_Print") {
    local_reprint.StartSingle(PageIndex::kCorrespondence);
  } else {
    letter_fetch.RePrintLetter(request_name, PageIndex::kCorrespondence);
  }
}

}  // namespace workspace
