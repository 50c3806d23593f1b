#pragma once

#include "customers/customer_inquiry.h"
#include "customers/customer_selection.h"
#include "platform/parties/message_component.h"
#include "platform/parties/services.h"
#include "tracking/batch_actions.h"
#include "tracking/batch_history.h"
#include "tracking/batch_reprint.h"
#include "tracking/batch_submission.h"
#include "tracking/correspondence_grid.h"
#include "tracking/letter_actions.h"
#include "tracking/letter_fetch.h"
#include "tracking/letter_grid.h"
#include "tracking/local_reprint.h"
#include "tracking/return_mail.h"
#include "tracking/row_format.h"
#include "workspace/document/letter_dialogs.h"
#include "workspace/document/reply_handlers.h"
#include "workspace/document/workspace_data.h"
#include "workspace/fields/field_check.h"
#include "workspace/fields/form_type_filter.h"
#include "workspace/fields/page_fields.h"
#include "workspace/fields/search_check.h"
#include "workspace/letters/bookmark_view.h"
#include "workspace/letters/history_record.h"
#include "workspace/letters/letter_customer.h"
#include "workspace/letters/letter_generation.h"
#include "workspace/letters/letter_names.h"
#include "workspace/letters/letter_printing.h"
#include "workspace/letters/letter_templates.h"
#include "workspace/letters/stored_letters.h"
#include "workspace/letters/unrecorded_letters.h"
#include "workspace/messaging/command_gate.h"
#include "workspace/messaging/download_notification.h"
#include "workspace/messaging/reply_dispatcher.h"
#include "workspace/messaging/request_envelope.h"
#include "workspace/requests/history_search.h"
#include "workspace/requests/letter_request.h"
#include "workspace/requests/online_actions.h"

namespace workspace {

/// The parts of the workspace, each made with exactly what it uses. They live as long as one reply listener.
struct Parts {
  /// All references outlive the parts.
  Parts(const platform::Services& services, WorkspaceData& data, platform::ReplyListener& listener);

  /// Asks for the letter that is chosen on the correspondence page.
  void SelectNewType();

  CommandGate gate;
  RequestEnvelope envelope;
  FieldCheck field_check;
  PageFields fields;
  FormTypeFilter form_types;
  LetterRequest letter_request;
  SearchCheck search_check;
  HistorySearch history_search;
  LetterNames letter_names;
  LetterTemplates templates;
  HistoryRecord history;
  LetterDialogs forms;
  LetterPrinting printing;
  LetterCustomer letter_customer;
  LetterGeneration generation;
  BookmarkView bookmark_view;
  StoredLetters stored_letters;
  UnrecordedLetters unrecorded_letters;
  OnlineActions online_actions;
  customers::CustomerInquiry customer_inquiry;
  customers::CustomerSelection customer_selection;
  tracking::BatchHistory batch_history;
  tracking::BatchActions batch_actions;
  tracking::BatchReprint batch_reprint;
  tracking::LetterFetch letter_fetch;
  tracking::LocalReprint local_reprint;
  tracking::RowFormat row_format;
  tracking::LetterGrid letter_grid;
  tracking::CorrespondenceGrid correspondence_grid;
  tracking::BatchSubmission batch_submission;
  tracking::ReturnMail return_mail;
  tracking::LetterActions letter_actions;
  ReplyHandlers handlers;
  ReplyDispatcher replies;
  DownloadNotification downloads;

 private:
  ReplyHandlers Handlers();
  PrintRun* RunOf(const std::string& request_name);
  void Reprint(const std::string& request_name);

  Pages& pages_;
};

}  // namespace workspace
