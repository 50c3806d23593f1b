#include "workspace/letters/stored_letters.h"

#include "platform/text.h"
#include "platform/xml/xml.h"
#include "workspace/letters/whole_number.h"

namespace workspace {

using platform::Failure;

namespace {

constexpr const char* kContext = "XML_CONTEXT";

std::string ContextOf(const platform::RecordSet& reply) {
  const auto document = platform::XmlDocument::Parse(reply.FirstText()).OrFail();
  const auto context = document.FirstByTagName(kContext);
  if (context) return context.Xml();
  throw Failure(Failure::Kind::kDamaged,
                "The stored letter has no element \"" + std::string(kContext) + "\".");
}

}  // namespace

void StoredLetters::MergeLetter(const Reply& reply, PageIndex page, const std::string& mode,
                                const std::string& letter_type) {
  std::optional<platform::PrintFault> fault{{"The server's reply brought no data of the letter.", true}};
  platform::Trap(uses_.services, "ZEMLO_Corresp.MergeLetter", [&] {
    platform::KeepFault(fault, [&] {
      if (Merge(reply, page, mode, letter_type)) fault.reset();
    });
  });
  if (fault) uses_.printing.TellRun(reply.request_name, *fault);
}

bool StoredLetters::Merge(const Reply& reply, PageIndex page, const std::string& mode,
                          const std::string& letter_type) {
  const auto context = RowsOf(uses_.services, reply, kContext);
  if (context == nullptr) return false;
  auto letter = reply.letter;
  letter.context = ContextOf(*context);
  letter.template_name = TemplateName(letter, page, letter_type);
  letter.template_path = uses_.templates.LocalPath(letter.template_name);
  uses_.templates.BringIfMissing(letter.template_name);

  const auto wanted = platform::UpperCase(mode);
  if (wanted == "PREVIEW") {
    uses_.printing.Preview(letter, reply.request_name);
  } else if (wanted == "SAVE") {
    uses_.printing.Save(letter, reply.request_name);
  } else {
    uses_.printing.Print(letter, reply.request_name);
  }
  return true;
}

std::string StoredLetters::TemplateName(const LetterData& letter, PageIndex page,
                                        const std::string& letter_type) const {
  if (page != PageIndex::kBatchReprint) return letter.template_name;
  const auto path =
      uses_.templates.GetTemplateFileName(WholeNumber<std::int32_t>("letter type", letter_type));
  if (!path.empty()) return uses_.templates.template_name();
  throw Failure(Failure::Kind::kNotFound,
                "Letter type \"" + letter_type + "\" has no template today. Give it one and print again.");
}

}  // namespace workspace
