#include "wordprocessor/authoring/mail_merge_names.h"

#include <algorithm>
#include <utility>

#include "platform/agreed/field_names.h"
#include "platform/text.h"

namespace wordprocessor {
namespace {

// What word processors take; repeats need a few more.
constexpr std::size_t kLongestName = 40;
constexpr std::size_t kRoomForRepeats = 4;

bool IsLetter(std::string_view character) {
  return platform::UpperCase(character) != platform::LowerCase(character);
}

bool IsDigit(std::string_view character) {
  return character.size() == 1 && character[0] >= '0' && character[0] <= '9';
}

std::string ValidName(std::string_view field) {
  std::string name;
  while (!field.empty()) {
    const auto character = platform::FirstCharacters(field, 1);
    field.remove_prefix(character.size());
    if (IsLetter(character) || IsDigit(character)) {
      name += character;
    } else if (!name.ends_with('_') || character == "_") {
      name += '_';
    }
  }
  name.erase(0, name.find_first_not_of('_'));
  if (!name.empty() && IsDigit(platform::FirstCharacters(name, 1))) name.insert(0, "FIELD_");
  if (platform::CharacterCount(name) > kLongestName) {
    name = platform::FirstCharacters(name, kLongestName - kRoomForRepeats);
  }
  // It would repeat another one.
  if (!platform::RepeatedName(name).empty()) name = platform::ReplaceAll(name, "__", "_");
  return name.empty() ? "FIELD" : name;
}

}  // namespace

MailMergeNames::MailMergeNames(std::set<std::string> taken, const std::vector<TemplateField>& fields)
    : taken_(std::move(taken)), fields_(fields) {}

bool MailMergeNames::IsUsed(const std::string& bookmark) const {
  return std::ranges::any_of(bookmarks_, [&](const auto& used) { return used.second == bookmark; });
}

const std::string& MailMergeNames::BookmarkOf(const std::string& field) {
  auto& bookmark = bookmarks_[platform::FoldCase(field)];
  if (!bookmark.empty()) return bookmark;
  auto name = ValidName(field);
  for (const auto& known : fields_) {
    if (platform::EqualsIgnoringCase(known.name, name)) name = known.name;
  }
  auto single = name;
  for (int number = 2; IsUsed(single); ++number) single = name + "_" + std::to_string(number);
  return bookmark = single;
}

std::string MailMergeNames::Next(const std::string& field) {
  const auto& bookmark = BookmarkOf(field);
  auto next = bookmark;
  for (int number = 1; !taken_.insert(next).second; ++number) next = bookmark + "__" + std::to_string(number);
  return next;
}

}  // namespace wordprocessor
