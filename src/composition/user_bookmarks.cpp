#include "composition/user_bookmarks.h"

#include <optional>
#include <vector>

#include "platform/text.h"

namespace composition {

using platform::Trap;

UserBookmarks::UserBookmarks(const platform::Services& services, platform::EntryGrid& grid)
    : services_(services),
      grid_(grid),
      rows_(std::make_shared<platform::RecordSet>(std::vector<std::string>{kDescription, kValue, kName})),
      lines_joined_(grid.LinesJoined.Connect([this](std::size_t row) {
        services_.status.ShowReason("The lines of " + platform::Quoted(rows_->Text(row, kDescription)) +
                                    " have become one line.");
      })) {
  grid_.columns = {{kDescription, "Bookmark Name", "", false, "", ""},
                   {kValue, "Bookmark Value", "", false, "", ""},
                   {kName, "Bk_Name", "", /*hidden=*/true, "", ""}};
  grid_.entry_key = kValue;
}

void UserBookmarks::Add(const std::string& description, const std::string& name) {
  rows_->Append({description, "", name});
}

bool UserBookmarks::Offer(const KeptEntries& kept) {
  bool is_offered = false;
  for (std::size_t row = 0; row < rows_->RecordCount(); ++row) {
    const auto value = kept.values.find(rows_->Text(row, kName));
    if (value == kept.values.end()) continue;
    rows_->Set(row, kValue, value->second);
    is_offered = true;
  }
  return is_offered;
}

void UserBookmarks::AddTo(KeptEntries& kept) const {
  for (std::size_t row = 0; row < rows_->RecordCount(); ++row) {
    const auto value = rows_->Text(row, kValue);
    if (!platform::IsBlank(value)) kept.values[rows_->Text(row, kName)] = value;
  }
}

std::vector<MissingEntry> UserBookmarks::GetEmptySingleBookMark(const MayBeEmpty& may_be_empty) {
  std::vector<MissingEntry> missing;
  Trap(services_, "frmLetter.GetEmptySingleBookMark", [&] {
    std::optional<std::size_t> first_missing;
    for (std::size_t row = 0; row < rows_->RecordCount(); ++row) {
      const auto name = rows_->Text(row, kName);
      if (!platform::IsBlank(rows_->Text(row, kValue)) || may_be_empty(name)) continue;
      if (!first_missing) first_missing = row;
      missing.push_back({.description = rows_->Text(row, kDescription), .names = {name}});
    }
    if (first_missing) grid_.MoveTo(*first_missing);
  });
  return missing;
}

void UserBookmarks::ReplaceUserBK(platform::XmlElement root) const {
  using platform::Failure;
  Trap(services_, "frmLetter.ReplaceUserBK", [&] {
    for (std::size_t row = 0; row < rows_->RecordCount(); ++row) {
      const auto name = rows_->Text(row, kName);
      auto element = root.FirstByTagName(name);
      if (!element) {
        throw Failure(Failure::Kind::kNotFound,
                      "The letter has no field \"" + name + "\" to write the value into. Ask for it again.");
      }
      platform::While("writing the value of " + name, [&] { element.SetText(rows_->Text(row, kValue)); });
    }
  });
}

}  // namespace composition
