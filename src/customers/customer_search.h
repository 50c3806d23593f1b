#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "customers/selected_customer.h"
#include "platform/controls/command.h"
#include "platform/controls/form.h"
#include "platform/controls/grid.h"
#include "platform/controls/label.h"
#include "platform/controls/text_field.h"
#include "platform/parties/services.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/messaging/request_envelope.h"

namespace customers {

/// Finds a customer by id, name, city or account, and lets the user choose one.
///
/// Shown modally; `chosen` is read when it has closed. It hears its replies itself, under an application name
/// of its own, and has a pending request of its own, so that a request of the workspace goes on beneath it.
/// Enter in the field searches, or takes the only customer that its text has found; Enter on a row (or a
/// double click) is "OK", Esc is "Cancel".
class frmCustSearch : public platform::Form {
 public:
  /// `services` outlives the form. `message_title` heads its message boxes.
  frmCustSearch(const platform::Services& services, std::string caption, std::string message_title);

  platform::TextField txtFind;
  platform::Command cmdFind{"&Search"};
  platform::Grid sdgGrid;
  platform::Label status{"Type a customer's ID, name, city or fuel tax account, or a part of it."};
  platform::Command cmdOk{"OK"};
  platform::Command cmdCancel{"Cancel"};

  /// The user presses Enter in the field.
  void UserEntersText();

  /// The customer the user left with; an empty one while there is none, and after "Cancel".
  const SelectedCustomer& chosen() const { return chosen_; }

 protected:
  void OnUnload() override;

 private:
  void Search();
  void DataReady(const std::string& application);
  void ShowReply(const workspace::Reply& reply);
  void ShowError(const std::string& error, bool timed_out);
  void ShowFound(const std::shared_ptr<platform::RecordSet>& records, bool has_more);
  std::string FoundText(std::size_t count, bool has_more) const;
  void EnableOk();
  void Choose();
  /// Runs `work` as a handler of the form; what fails is reported.
  template <typename Work>
  void Handle(std::string_view procedure, Work&& work);

  const platform::Services& services_;
  const std::string message_title_;

  workspace::PendingRequest pending_;  // of its own: the workspace's goes on beneath it
  std::unique_ptr<platform::ReplyListener> mVemtMessage_;
  workspace::RequestEnvelope envelope_;
  std::string searched_text_;
  SelectedCustomer chosen_;
  std::vector<platform::Connection> connections_;
};

}  // namespace customers
