#include "wordprocessor/document/template_file.h"

#include <system_error>

#include "platform/agreed/template_versions.h"
#include "platform/failure.h"
#include "platform/text.h"

namespace wordprocessor {
namespace {

using platform::Failure;

std::filesystem::path Normal(const std::string& path) {
  auto normal = std::filesystem::absolute(platform::ReplaceAll(path, "\\", "/")).lexically_normal();
  return normal.has_filename() ? normal : normal.parent_path();
}

std::filesystem::path FindIgnoringCase(const std::filesystem::path& folder, const std::string& name) {
  std::error_code error;
  if (std::filesystem::is_regular_file(folder / name, error)) return folder / name;
  for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
       entry.increment(error)) {
    if (platform::EqualsIgnoringCase(entry->path().filename().string(), name)) return entry->path();
  }
  return {};
}

}  // namespace

std::filesystem::path TemplateFile(const std::filesystem::path& folder, const std::string& name) {
  const auto path = Normal(name);
  const auto file_name = path.filename().string();
  if (path.parent_path() != Normal(folder.string()) || file_name.find(':') != std::string::npos) {
    throw Failure(Failure::Kind::kRefused, "The template \"" + name + "\" is not in the template folder \"" +
                                               folder.string() +
                                               "\". Correct its name in the template catalogue.");
  }
  auto found = FindIgnoringCase(path.parent_path(), file_name);
  if (!found.empty()) return found;
  throw Failure(Failure::Kind::kNotFound, "There is no template \"" + file_name + "\" in the folder \"" +
                                              folder.string() +
                                              "\". Start the program again: "
                                              "it fetches the templates that are missing.");
}

std::filesystem::path CommonTemplateBeside(const std::filesystem::path& letter) {
  if (platform::EqualsIgnoringCase(letter.filename().string(), platform::kCommonTemplate)) return {};
  return FindIgnoringCase(letter.has_parent_path() ? letter.parent_path() : ".", platform::kCommonTemplate);
}

}  // namespace wordprocessor
