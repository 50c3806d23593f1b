#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "customers/selected_customer.h"
#include "platform/parties/services.h"
#include "workspace/document/parts.h"
#include "workspace/document/workspace_data.h"

namespace workspace {

/// The correspondence workspace: the document that a host opens in its window.
///
/// The host makes it, calls Initialize, then Show each time it shows the document, and CloseDocument or
/// BeforeUnload and Terminate when it goes. What the user does reaches it through the controls of its pages.
/// It never holds unsaved data. User-interface thread only; nothing leaves its members.
///
/// Its handlers open forms and message boxes, and go on when these close: from inside one, the document must
/// not be destroyed, nor initialised again.
class ZEMLO_Corresp {
 public:
  /// `services` outlives the document.
  explicit ZEMLO_Corresp(const platform::Services& services);
  ZEMLO_Corresp(const ZEMLO_Corresp&) = delete;
  ZEMLO_Corresp& operator=(const ZEMLO_Corresp&) = delete;
  ~ZEMLO_Corresp();

  /// False, always; the status bar says that it was looked for.
  bool DataChanged();
  /// Gives the host its toolbar buttons back.
  void BeforeUnload();
  /// There never is anything to save, and the status bar says so.
  void SaveData();
  /// Decides which commands of the page can be used.
  void CheckEdit(PageIndex page);
  /// Gives the tracking page's two dates their normal look.
  void ClearEdit();
  /// Asks for the data of a letter of the chosen type; nothing happens while a reply is awaited.
  void SelectNewType();
  /// Deletes the application file and gives the toolbar buttons back. True, always.
  bool CloseDocument();
  /// False, always.
  bool NeedSave();

  // Life cycle.
  /// Starts the workspace: every action disabled, the template folder asked for. Comes before all members
  /// that act.
  void Initialize();
  void Show();
  /// Closes a preview that still stands, and hears no reply any more.
  void Terminate();

  /// The controls, for views, programs and tests.
  Pages& pages() { return data_.pages; }
  const PendingRequest& pending_request() const { return data_.pending; }
  const customers::CurrentCustomer& customer() const { return data_.customer; }
  /// For a host that wants letters' data instead of letters, from its "Create Letter" on. Comes after
  /// Initialize.
  void HandOutLetters(std::function<void(const LetterData&)> take) {
    RequireParts().generation.HandOut(std::move(take));
  }
  /// For a host that wants to look at a template: letters of every type, those of the nightly batch among
  /// them, are made of it from now on, and never recorded. Comes after Initialize.
  void TryTemplate(TemplateInForce tried);
  /// The template that new letters of the type are made with. Comes after Initialize.
  TemplateInForce TemplateOf(const std::string& letter_type);
  /// The new letter whose data came last; an empty one before. Comes after Initialize; throws Failure before.
  const LetterData& letter() const { return RequireParts().generation.letter(); }
  /// What the document is made of, to be looked at. Comes after Initialize; throws Failure before it.
  const Parts& parts() const { return RequireParts(); }
  /// Comes after Initialize; throws Failure before it.
  UnrecordedLetters& unrecorded_letters() { return RequireParts().unrecorded_letters; }
  /// Lists letters on the tracking page by their numbers. Comes after Initialize; throws Failure before it.
  bool ListLetters(const std::vector<std::int64_t>& numbers) {
    return RequireParts().history_search.ListLetters(numbers);
  }
  /// Gives the letters selected on the page in front to the coming batch run, or takes them back ("DEL").
  /// Comes after Initialize; throws Failure before it.
  bool SubmitBatch(const std::string& action) { return RequireParts().batch_submission.SubmitBatch(action); }
  const tracking::LetterActionLists& action_lists() const { return data_.action_lists; }
  /// Why the page's command is disabled, a sentence for each rule; none before Initialize.
  std::vector<std::string> CheckMessages(PageIndex page);
  /// A customer was chosen for the correspondence or the tracking page.
  void FillCustomerField(const customers::SelectedCustomer& chosen, PageIndex page);

 private:
  void ConfigureToolbar(bool enabled);
  void EndStartThatFailed();
  void ConnectOutside();
  void ConnectUser();
  void DisableActions();
  void EmptyDates();
  void DataSyncComplete();
  Parts& RequireParts() const;

  const platform::Services& services_;
  std::string host_tag_;               // of the host window: goes with every toolbar call
  std::string application_file_path_;  // deleted when the document is closed
  WorkspaceData data_;
  std::shared_ptr<platform::CommClient> moClient_;
  std::unique_ptr<platform::ReplyListener> mVemtMessage_;
  std::unique_ptr<Parts> parts_;
  std::vector<platform::Connection> connections_;
};

}  // namespace workspace
