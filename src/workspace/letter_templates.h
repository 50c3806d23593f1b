#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/message_component.h"
#include "platform/services.h"
#include "workspace/messaging/request_envelope.h"
#include "workspace/messaging/workspace_state.h"

namespace workspace {

/// The template documents: which one a letter type uses today, and that it is on this machine.
///
/// The catalogue FLS_LTR_TEMPLATE of the reference database says which document is valid when, for each
/// region and letter type; the newest version wins. Files are told apart by name only: one that is here is
/// never replaced.
class LetterTemplates {
 public:
  /// The references outlive this.
  LetterTemplates(const platform::Services& services, WorkspaceState& state, RequestEnvelope& envelope,
                  platform::ReplyListener& listener)
      : services_(services), state_(state), envelope_(envelope), listener_(listener) {}

  /// Asks the server for its template folder.
  void GetNetworkPath();
  /// Takes the reply to that. A reply that cannot be read is reported and leaves the folder as it was.
  void DecodeNetworkPath();
  /// Starts the download of every template that is missing here, those that become valid later and the common
  /// template included.
  void CopyTemplate();

  /// The local path of the template that the letter type uses today, its name becoming the current
  /// template's;
  /// "" when the catalogue has none.
  std::string GetTemplateFileName(std::int32_t letter_type);
  /// Copies the template from the server, after telling the user, where it is not here. Throws what the file
  /// system throws.
  void BringIfMissing(const std::string& template_name);

  // Both throw Failure kRefused for a name that is no plain file name.
  std::string LocalPath(std::string_view template_name) const;
  std::string ServerPath(std::string_view template_name) const;

 private:
  void ReadServerFolder(const std::string& reply);
  std::string ReplyText() const;
  std::shared_ptr<platform::RecordSet> Catalogue(std::string_view query,
                                                 std::string_view letter_type = "") const;
  void DownloadWhereMissing(const std::string& name, bool& started);

  const platform::Services& services_;
  WorkspaceState& state_;
  RequestEnvelope& envelope_;
  platform::ReplyListener& listener_;
};

}  // namespace workspace
