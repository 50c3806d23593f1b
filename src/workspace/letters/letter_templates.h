#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "platform/parties/message_component.h"
#include "platform/parties/services.h"
#include "workspace/messaging/pending_request.h"
#include "workspace/messaging/request_envelope.h"

namespace workspace {

/// The template that new letters of a type are made with.
struct TemplateInForce {
  std::string name = {};   ///< "" where the catalogue has none that is in force today
  std::string path = {};   ///< on this machine; "" with the name
  std::string fault = {};  ///< why no letter can be made with it, in whole sentences; "" where one can
};

/// The template documents: which one a letter type uses today, and that it is on this machine.
///
/// The catalogue FLS_LTR_TEMPLATE of the reference database says which document is valid when, for each
/// region and letter type; the newest version wins. Files are told apart by name only: one that is here is
/// never replaced.
class LetterTemplates {
 public:
  /// The references outlive this.
  LetterTemplates(const platform::Services& services, const std::string& message_title,
                  RequestEnvelope& envelope, platform::ReplyListener& listener)
      : services_(services), message_title_(message_title), envelope_(envelope), listener_(listener) {}

  /// Asks the server for its template folder.
  void GetNetworkPath();
  /// Takes the reply to that. A reply that cannot be read is reported and leaves the folder as it was.
  void DecodeNetworkPath(const Reply& reply);
  /// Starts the download of every template that is missing here, those that become valid later and the common
  /// template included.
  void CopyTemplate();
  /// A download has come to its end: the template is here, and what is wrong with it is reported. It stays,
  /// because letters may be recorded that were made with it. `source` is the path it was asked for with.
  void TemplateCame(const std::string& source);

  /// The local path of the template that the letter type uses today, whose name is template_name() from then
  /// on; "" when the catalogue has none.
  std::string GetTemplateFileName(std::int32_t letter_type);
  const std::string& template_name() const { return template_name_; }
  /// The same, and why no new letter can be made with it: there is none, it is not here, or it has errors.
  TemplateInForce InForce(std::int32_t letter_type);
  /// Copies the template from the server, after telling the user, where it is not here. Throws what the file
  /// system throws.
  void BringIfMissing(const std::string& template_name);

  /// The server's template folder; ends with "\", "" until the server has told it.
  const std::string& server_folder() const { return server_folder_; }

  // Both throw Failure kRefused for a name that is no plain file name.
  std::string LocalPath(std::string_view template_name) const;
  std::string ServerPath(std::string_view template_name) const;

 private:
  /// The versions that the catalogue has of the letter type, and when each is in force: a sentence.
  std::string WhyNoTemplate(const std::string& letter_type) const;
  /// Whether the synchronisation fetches the document where it is missing.
  bool IsFetched(std::string_view template_name) const;
  void ReadServerFolder(const Reply& reply);
  std::shared_ptr<platform::RecordSet> Catalogue(std::string_view query,
                                                 std::string_view letter_type = "") const;
  /// Whether a download was asked for.
  bool DownloadWhereMissing(const std::string& name);

  const platform::Services& services_;
  const std::string& message_title_;
  RequestEnvelope& envelope_;
  platform::ReplyListener& listener_;
  struct Awaited {
    std::string name;
    std::set<std::string> letter_types;
  };
  std::map<std::string, Awaited> awaited_;  // by the path it was asked for with

  std::string server_folder_;
  std::string template_name_;
};

}  // namespace workspace
