#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/parties/template_judge.h"
#include "server/link/field_directory.h"
#include "wordprocessor/authoring/check.h"
#include "wordprocessor/document/document.h"
#include "wordprocessor/files/package_file.h"

namespace apps {

/// Runs the check of templates for those who make letters of them, with the fields that the server's letters
/// have. User-interface thread only.
class CheckedTemplates : public platform::TemplateJudge {
 public:
  /// Throws Failure where the server's data cannot be used.
  explicit CheckedTemplates(const std::filesystem::path& data_folder);

  /// A template is opened again only where its file or the letter's fields have changed.
  std::string FaultOf(const std::string& path, const std::string& letter_type) override;
  /// What the check finds in `document` as a template of that letter type. Throws Failure as CheckTemplate,
  /// and kNotFound for a letter type without fields.
  std::vector<wordprocessor::TemplateFinding> FindingsIn(const wordprocessor::DocxDocument& document,
                                                         const std::string& letter_type);

 private:
  struct Verdict {
    wordprocessor::FileIdentity file;
    std::vector<wordprocessor::TemplateField> fields;
    std::string fault;
  };

  server::FieldDirectory directory_;
  std::map<std::pair<std::string, std::string>, Verdict> verdicts_;  // by path and letter type
};

/// How many of them are errors.
std::size_t ErrorsIn(const std::vector<wordprocessor::TemplateFinding>& findings);

}  // namespace apps
