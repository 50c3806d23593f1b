#include "workspace/messaging/download_notification.h"

#include "platform/text.h"
#include "platform/xml/xml_escape.h"
#include "workspace/messaging/counting.h"
#include "workspace/messaging/tag_reader.h"

namespace workspace {

namespace {

constexpr std::string_view kMessageReceived = "ZEMLO_Corresp.moClient_MessageReceived";

}  // namespace

void DownloadNotification::MessageReceived(const std::string& message) {
  platform::Trap(services_, kMessageReceived, [&] {
    const auto command = ReadTag(message, "COMMAND", TagForm::kWithAttributes);
    const auto status = ReadTag(message, "STATUS", TagForm::kWithAttributes);
    const auto source = ReadTag(message, "SOURCE", TagForm::kWithAttributes);
    if (command == "FILEDOWNLOAD") {
      if (status == "SUCCESSFULL") {  // spelt so as given
        came_(platform::XmlUnescaped(source));
      } else {
        TellOnce(status, source);
        CountUp(services_, failures_, "failed downloads", kMessageReceived);
      }
    }
    services_.status.ShowStatus("Ready");
  });
}

void DownloadNotification::TellOnce(const std::string& status, const std::string& source) {
  if (failures_.value() != 0) return;
  const std::string line_break(platform::kLineBreak);
  services_.host.ShowMessage({"File download not successful." + line_break + platform::XmlUnescaped(status) +
                                  line_break + platform::XmlUnescaped(source),
                              platform::MessageIcon::kExclamation, message_title_});
  services_.status.SetReady(true);
  services_.host.SetMousePointer(platform::MousePointer::kNormal);
}

}  // namespace workspace
