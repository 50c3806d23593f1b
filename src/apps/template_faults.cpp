#include "apps/template_faults.h"

#include <system_error>

#include "host/disk_files.h"
#include "platform/agreed/template_versions.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "platform/whole_file.h"
#include "wordprocessor/document/template_file.h"

namespace apps {
namespace {

namespace fs = std::filesystem;

bool AreOther(const fs::path& one, const fs::path& other) {
  std::error_code unknown;
  const auto size = fs::file_size(one, unknown);
  if (unknown) return false;
  if (size != fs::file_size(other, unknown)) return !unknown;
  try {
    return platform::ReadWholeFile(one) != platform::ReadWholeFile(other);
  } catch (const platform::Failure&) {
    return false;
  }
}

std::string Sentence(const TemplateRoad& road, const std::string& document) {
  const bool is_letterhead = platform::EqualsIgnoringCase(document, platform::kCommonTemplate);
  auto sentence = is_letterhead ? std::string("The letterhead ") : std::string("The template ");
  sentence += platform::Quoted(document) + " in " + platform::Quoted(road.from.string());
  sentence += " is another one than the one in " + platform::Quoted(road.to.string());
  sentence += ", which is kept. ";
  if (!is_letterhead) {
    return sentence +
           "A template is never replaced under its name: "
           "save the correction under a new one and enter it as a version in templates.tsv.";
  }
  return sentence + "Where the new one is meant, remove the one in " + platform::Quoted(road.to.string()) +
         ": " + road.taker + " fetches it, and letters of the past are printed again with it, too.";
}

}  // namespace

std::vector<std::string> CorrectionsUnderOldNames(const TemplateRoad& road,
                                                  const std::set<std::string>& documents) {
  std::vector<std::string> sentences;
  auto all = documents;
  all.insert(platform::kCommonTemplate);
  for (const auto& document : all) {
    const auto from = host::FindFile((road.from / document).string());
    const auto to = host::FindFile((road.to / document).string());
    if (from && to && AreOther(*from, *to)) sentences.push_back(Sentence(road, document));
  }
  return sentences;
}

}  // namespace apps
