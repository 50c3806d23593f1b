#include "wordprocessor/document/template_folder.h"

#include <algorithm>
#include <array>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/failure.h"
#include "platform/text.h"
#include "platform/whole_file.h"
#include "wordprocessor/document/document.h"

namespace wordprocessor {
namespace {

using platform::Failure;

constexpr auto kTemplateEndings =
    std::to_array<std::string_view>({".docx", ".docm", ".dotx", ".dotm", ".dot", ".doc"});

bool IsTemplateByName(const std::filesystem::path& file) {
  const auto name = file.filename().string();
  if (name.starts_with('.') || name.starts_with("~$"))
    return false;  // a word processor's mark that it is open
  return std::ranges::find(kTemplateEndings, platform::LowerCase(file.extension().string())) !=
         kTemplateEndings.end();
}

/// Whether this can only be the start of a document, not one that somebody has made otherwise: a zip file
/// ends with its directory, which has this mark.
bool IsRestOfCopy(std::string_view content) {
  constexpr std::string_view kFirstEntry("PK\x03\x04");
  constexpr std::string_view kDirectoryEnd("PK\x05\x06");
  if (content.find_first_not_of('\0') == std::string_view::npos) return true;
  return content.starts_with(kFirstEntry) && content.rfind(kDirectoryEnd) == std::string_view::npos;
}

/// Why no letter can be made of it; nothing where one can, or where it is not known.
std::optional<std::string> Fault(const std::string& content, const std::string& name) {
  try {
    RequireTemplate(content, name);
  } catch (const Failure& failure) {
    if (failure.kind() == Failure::Kind::kDamaged) return failure.description();
  }
  return std::nullopt;
}

std::optional<std::string> ClearIfBroken(const std::filesystem::path& file) {
  const auto content = platform::ReadWholeFile(file);
  const auto fault = Fault(content, file.filename().string());
  if (!fault) return std::nullopt;
  const auto name = platform::Quoted(file.string());
  if (IsRestOfCopy(content)) {
    if (!std::filesystem::remove(file)) return std::nullopt;  // another program was quicker
    return "The template " + name + " had been copied in part only and was removed; it is fetched again.";
  }
  auto aside = file;
  aside += ".damaged";
  std::filesystem::rename(file, aside);
  return "The template " + name + " was put aside as " + platform::Quoted(aside.filename().string()) +
         "; it is fetched again. " + *fault;
}

std::vector<std::filesystem::path> TemplatesIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  std::error_code error;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    std::error_code gone;
    if (IsTemplateByName(entry->path()) && entry->is_regular_file(gone)) files.push_back(entry->path());
  }
  std::ranges::sort(files);
  return files;
}

}  // namespace

void RequireTemplate(std::string content, const std::string& file_name) {
  DocxDocument::FromBytes(std::move(content), file_name);
}

std::vector<std::string> ClearOfBrokenTemplates(const std::filesystem::path& folder) noexcept {
  platform::RemoveUnfinishedFiles(folder);
  std::vector<std::string> sentences;
  for (const auto& file : TemplatesIn(folder)) {
    try {
      if (auto sentence = ClearIfBroken(file)) sentences.push_back(std::move(*sentence));
    } catch (const std::exception&) {
      // Not readable, not ours to rename, or gone meanwhile: whoever needs it says so.
    }
  }
  return sentences;
}

}  // namespace wordprocessor
