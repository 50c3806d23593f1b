#include "apps/checked_templates.h"

#include <algorithm>
#include <exception>

#include "apps/template_fields.h"
#include "host/disk_files.h"
#include "platform/failure.h"
#include "platform/text.h"

namespace apps {
namespace {

using platform::Failure;
using wordprocessor::TemplateFinding;

constexpr auto kError = TemplateFinding::Grade::kError;

std::string PlaceOf(const TemplateFinding& finding) {
  std::string place = finding.bookmark.empty() ? "" : ", of the bookmark \"" + finding.bookmark + "\"";
  if (!finding.place.empty()) place += ", in " + finding.place;
  return place;
}

/// "" where nothing is an error.
std::string Sentence(const std::vector<TemplateFinding>& findings, const std::filesystem::path& file,
                     const std::string& letter_type) {
  const auto errors = ErrorsIn(findings);
  if (errors == 0) return "";
  const auto& first = *std::ranges::find(findings, kError, &TemplateFinding::grade);
  auto sentence = "The template " + platform::Quoted(file.filename().string()) + " has ";
  sentence += errors == 1 ? "an error" : std::to_string(errors) + " errors; the first";
  sentence += PlaceOf(first) + ": " + first.text + " \"zemlo-letters bookmarks " + file.string() + " --type ";
  return sentence + letter_type + "\" lists what is wrong.";
}

}  // namespace

CheckedTemplates::CheckedTemplates(const std::filesystem::path& data_folder) : directory_(data_folder) {}

std::string CheckedTemplates::FaultOf(const std::string& path, const std::string& letter_type) {
  try {
    const auto file = host::FindFile(path);
    if (!file) return "";
    auto fields = AsTemplateFields(directory_.Find(letter_type));
    if (fields.empty()) return "";
    const auto identity = wordprocessor::FileIdentity::Of(*file);
    auto& verdict = verdicts_[{path, letter_type}];
    if (verdict.file == identity && verdict.fields == fields) return verdict.fault;
    const auto findings = CheckTemplate(wordprocessor::DocxDocument::Open(*file), fields);
    verdict = {identity, std::move(fields), Sentence(findings, *file, letter_type)};
    return verdict.fault;
  } catch (const std::exception&) {
    return "";
  }
}

std::vector<TemplateFinding> CheckedTemplates::FindingsIn(const wordprocessor::DocxDocument& document,
                                                          const std::string& letter_type) {
  const auto fields = AsTemplateFields(directory_.Find(letter_type));
  if (fields.empty())
    throw Failure(Failure::Kind::kNotFound,
                  "There is no letter type \"" + letter_type + "\". \"zemlo-letters types\" lists them.");
  return CheckTemplate(document, fields);
}

std::size_t ErrorsIn(const std::vector<TemplateFinding>& findings) {
  return static_cast<std::size_t>(std::ranges::count(findings, kError, &TemplateFinding::grade));
}

}  // namespace apps
