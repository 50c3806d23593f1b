#include "server/requests/template_folder.h"

#include "platform/agreed/requests.h"
#include "platform/failure.h"
#include "platform/xml/xml.h"

namespace server {

using platform::Failure;
using platform::XmlDocument;

void AnswerTemplateFolder(Exchange& exchange) {
  const auto inquiry = platform::While(
      "reading the inquiry", [&] { return XmlDocument::Parse(exchange.request.inquiry_xml).OrFail(); });
  if (inquiry.Root().Name() != platform::kInquiryElement ||
      !inquiry.FirstByTagName(platform::kTemplateFolderElement)) {
    throw Failure(Failure::Kind::kRefused,
                  "The server does not know the inquiry \"" + exchange.request.inquiry_xml + "\".");
  }
  XmlDocument answer("XML_CONTEXT");
  answer.Root().AppendChild(platform::kTemplateFolderElement).SetText(exchange.template_folder.string());
  exchange.reply.AddRecord(platform::record_name::kContext, {"XML_CONTEXT"}).Append({answer.Root().Xml()});
}

}  // namespace server
