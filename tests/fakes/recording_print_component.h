#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/failure.h"
#include "platform/parties/print_component.h"
#include "tests/fakes/journal.h"

namespace fakes {

/// A print component that writes down every call and lets the test be the reader of its previews.
///
/// A call is its name and what was passed: "OpenDocument templates/ctl.docx", "PrintOut 1 dialog",
/// "SaveToFile '' ''"; "NewDocument" and "dropped" are the life of a document.
class RecordingPrintComponent : public platform::PrintComponent {
 public:
  std::vector<std::string> calls;
  Journal* journal = nullptr;  ///< told the same, after "print "

  // What the documents answer.
  bool is_document_open = false;
  bool opens = true;
  bool merges = true;
  bool prints = true;
  bool is_asked_in_vain = false;  ///< the user cancels the question how to print
  bool save_is_cancelled = false;
  bool accepts = true;                  ///< spooler and file system take what they get
  std::vector<std::string> not_filled;  ///< bookmarks of each merged document
  std::vector<platform::DocumentBookmark> bookmarks;
  /// Operations that fail, by their name.
  std::map<std::string, platform::Failure::Kind> failing;

  std::function<void()> while_printing;  ///< runs while a letter is printed

  std::vector<std::string> proposed_names;  ///< oldest first
  std::vector<std::string> merged;          ///< the texts given to MergeBookmarks, oldest first

  /// The reader of the preview that stands prints it, or closes it. Nothing happens where none stands.
  void UserPrints() {
    const auto hand_over = hand_over_.lock();
    if (MayGo(hand_over) && Takes(hand_over)) Tell(&platform::PrintNotify::DocPrint);
  }
  void UserCloses() { Tell(&platform::PrintNotify::DocEnd); }

  bool HasCalled(const std::string& call) const { return std::ranges::find(calls, call) != calls.end(); }

  std::unique_ptr<platform::PrintDocument> NewDocument() override {
    Called("NewDocument");
    return std::make_unique<Document>(*this);
  }
  bool AskHow(std::size_t letters) override {
    Called("AskHow", std::to_string(letters));
    return !is_asked_in_vain;
  }

 private:
  class Document : public platform::PrintDocument {
   public:
    explicit Document(RecordingPrintComponent& component) : component_(component) {}
    ~Document() override { component_.Note("dropped"); }

    void Prepare() override { component_.Called("Prepare"); }
    bool IsDocumentOpen(const std::string& file_name) override {
      component_.Called("IsDocumentOpen", file_name);
      return component_.is_document_open;
    }
    void SetTemplate(const std::string& path) override { component_.Called("SetTemplate", path); }
    bool OpenDocument(const std::string& file_name) override {
      component_.Called("OpenDocument", file_name);
      return component_.opens;
    }
    void SetNotify(std::shared_ptr<platform::PrintNotify> notify) override {
      notify_ = std::move(notify);
      component_.Called("SetNotify", notify_ ? "" : "none");
    }
    void SetNotifyEnabled(bool enabled) override {
      component_.Called("SetNotifyEnabled", enabled ? "true" : "false");
      if (enabled) component_.notify_ = notify_;
    }
    void SetHandOver(std::shared_ptr<platform::HandOver> hand_over) override {
      component_.Called("SetHandOver");
      hand_over_ = std::move(hand_over);
      component_.hand_over_ = hand_over_;
    }
    void SetProposedName(const std::string& name) override { component_.proposed_names.push_back(name); }
    std::vector<platform::DocumentBookmark> Bookmarks() override {
      component_.Called("Bookmarks");
      return component_.bookmarks;
    }
    bool MergeBookmarks(const std::string& bookmark_xml) override {
      component_.merged.push_back(bookmark_xml);
      component_.Called("MergeBookmarks");
      return component_.merges;
    }
    void ShowPreview() override { component_.Called("ShowPreview"); }
    bool PrintOut(int copies, bool show_dialog) override {
      component_.Called("PrintOut", std::to_string(copies) + (show_dialog ? " dialog" : ""));
      if (component_.while_printing) component_.while_printing();
      const bool prints = component_.MayGo(hand_over_) && component_.prints;
      if (prints) component_.TakeOrFail(hand_over_);
      return prints;
    }
    void EndPrint(int option) override { component_.Called("EndPrint", std::to_string(option)); }
    void SaveToFile(const std::string& name, const std::string& format) override {
      component_.Called("SaveToFile", "'" + name + "' '" + format + "'");
      const auto notify = notify_;
      const bool saves = component_.MayGo(hand_over_) && !component_.save_is_cancelled;
      if (saves) component_.TakeOrFail(hand_over_);
      if (saves && notify) notify->DocPrint();
      // Reads a member on purpose: the document has to outlast its own call, whatever its holder did.
      component_.last_saved_had_notify_ = notify_ != nullptr;
    }
    void Release(const std::string& template_name) override { component_.Called("Release", template_name); }

   private:
    RecordingPrintComponent& component_;
    std::shared_ptr<platform::PrintNotify> notify_;
    std::shared_ptr<platform::HandOver> hand_over_;
  };

  bool MayGo(const std::shared_ptr<platform::HandOver>& hand_over) const {
    return not_filled.empty() || !hand_over || hand_over->MayGoUnfilled(not_filled);
  }
  /// Spooler or file system get a letter; whether they take it is `accepts`.
  bool Takes(const std::shared_ptr<platform::HandOver>& hand_over) const {
    if (!hand_over) return accepts;
    hand_over->Begins();
    accepts ? hand_over->Accepted() : hand_over->Failed();
    return accepts;
  }
  void TakeOrFail(const std::shared_ptr<platform::HandOver>& hand_over) const {
    if (Takes(hand_over)) return;
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "the printer is on fire");
  }

  void Tell(platform::Event<> platform::PrintNotify::*event) {
    if (const auto notify = notify_.lock()) ((*notify).*event)();
  }
  void Called(const std::string& operation, const std::string& with = "") {
    Note(with.empty() ? operation : operation + " " + with);
    const auto found = failing.find(operation);
    if (found != failing.end()) throw platform::Failure(found->second, operation + " has failed");
  }
  void Note(std::string call) {
    if (journal != nullptr) journal->Add("print " + call);
    calls.push_back(std::move(call));
  }

  // Of the preview that stands.
  std::weak_ptr<platform::PrintNotify> notify_;
  std::weak_ptr<platform::HandOver> hand_over_;
  bool last_saved_had_notify_ = false;
};

}  // namespace fakes
