#pragma once

#include <memory>
#include <string>

#include "composition/node_state.h"
#include "composition/preview_doc.h"
#include "platform/record_set.h"
#include "platform/services.h"
#include "workspace/history_record.h"
#include "workspace/letter_data.h"
#include "workspace/letter_forms.h"
#include "workspace/letter_templates.h"
#include "workspace/messaging/letter_request_fields.h"
#include "workspace/messaging/request_envelope.h"
#include "workspace/messaging/workspace_state.h"
#include "workspace/pages.h"

namespace workspace {

/// Makes a letter of a valid request: its data context is asked for, completed, previewed, and recorded when
/// it has been printed.
class LetterGeneration {
 public:
  struct Uses {
    const platform::Services& services;
    WorkspaceState& state;
    LetterRequestFields& request;
    LetterData& letter;
    Pages& pages;
    RequestEnvelope& envelope;
    LetterTemplates& templates;
    HistoryRecord& history;
    LetterForms& forms;
  };
  explicit LetterGeneration(Uses uses) : uses_(uses) {}

  /// Asks for the data context of the chosen letter type; says so and stops where it has no template.
  void SelectNewType();
  /// Takes the reply to that.
  void CreateNewCorrespondence();
  /// Records the letter that was printed, by the request that brought it.
  void PrintDoc();
  /// The preview was printed: PrintDoc, and the preview goes.
  void mclsPreview_WordPrinted();

  /// Closes a preview that still stands.
  void ReleasePreview();

 private:
  void SendXMLRequest(RequestDescription& message) const;
  std::shared_ptr<platform::RecordSet> Reply(const std::string& record_name) const;
  bool RequireTemplate(const std::string& template_path) const;
  void TakeHistoryRow(const platform::RecordSet& row);
  void TellAddressErrors(const composition::ZEMLO_NodeState& root) const;
  void FinishLetter(const composition::ZEMLO_NodeState& root, LetterData letter);
  void CompleteLetter(LetterData& letter) const;
  /// The one way to the preview object: what is previewed with it is recorded as this letter, under the
  /// request that brought it.
  composition::ZEMLO_PreviewDoc& PreviewOf(const LetterData& letter, const std::string& request_name);
  void TellRefusal(const std::string& text, platform::MessageIcon icon) const;
  void RecordPrinted(LetterData& letter, const std::string& request_name);

  const Uses uses_;
  // Of the preview that stands, as they were when it was opened.
  LetterData previewed_letter_;
  std::string previewed_request_;
  std::unique_ptr<composition::ZEMLO_PreviewDoc> mclsPreview_;
  platform::Connection word_printed_;
};

}  // namespace workspace
