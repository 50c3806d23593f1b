#pragma once

#include "customers/customer_inquiry.h"
#include "customers/customer_selection.h"
#include "platform/message_component.h"
#include "platform/services.h"
#include "tracking/correspondence_grid.h"
#include "tracking/letter_fetch.h"
#include "tracking/letter_grid.h"
#include "tracking/row_format.h"
#include "workspace/bookmark_view.h"
#include "workspace/document/letter_dialogs.h"
#include "workspace/document/reply_handlers.h"
#include "workspace/document/workspace_data.h"
#include "workspace/field_check.h"
#include "workspace/form_type_filter.h"
#include "workspace/history_record.h"
#include "workspace/history_search.h"
#include "workspace/letter_generation.h"
#include "workspace/letter_request.h"
#include "workspace/letter_templates.h"
#include "workspace/messaging/command_gate.h"
#include "workspace/messaging/download_notification.h"
#include "workspace/messaging/reply_dispatcher.h"
#include "workspace/messaging/request_envelope.h"
#include "workspace/online_actions.h"
#include "workspace/page_fields.h"
#include "workspace/search_check.h"

namespace workspace {

/// The parts of the workspace, each made with exactly what it uses. They live as long as one reply listener.
struct Parts {
  /// All references outlive the parts.
  Parts(const platform::Services& services, WorkspaceData& data, platform::ReplyListener& listener);

  CommandGate gate;
  RequestEnvelope envelope;
  FieldCheck field_check;
  PageFields fields;
  FormTypeFilter form_types;
  LetterRequest letter_request;
  SearchCheck search_check;
  HistorySearch history_search;
  LetterTemplates templates;
  HistoryRecord history;
  LetterDialogs forms;
  LetterGeneration generation;
  BookmarkView bookmark_view;
  OnlineActions online_actions;
  customers::CustomerInquiry customer_inquiry;
  customers::CustomerSelection customer_selection;
  tracking::LetterFetch letter_fetch;
  tracking::LetterGrid letter_grid;
  tracking::CorrespondenceGrid correspondence_grid;
  tracking::RowFormat row_format;
  ReplyHandlers handlers;
  ReplyDispatcher replies;
  DownloadNotification downloads;

 private:
  ReplyHandlers Handlers();
};

}  // namespace workspace
