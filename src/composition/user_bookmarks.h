#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "composition/kept_entries.h"
#include "composition/missing_entry.h"
#include "platform/controls/entry_grid.h"
#include "platform/parties/services.h"
#include "platform/record_set.h"
#include "platform/xml/xml.h"

namespace composition {

/// The fields of a letter that only the user can fill, in the grid "User Bookmark".
///
/// No operation fails: what goes wrong is reported under the letter form's name.
class UserBookmarks {
 public:
  /// Whether a field may stay empty, by its element name.
  using MayBeEmpty = std::function<bool(const std::string& name)>;

  /// Columns of the grid; the last one is the key of the row.
  static constexpr const char* kDescription = "Bk_EngName";
  static constexpr const char* kValue = "Bk_Value";
  static constexpr const char* kName = "Bk_Name";

  /// Gives `grid` its columns. Both outlive the object.
  UserBookmarks(const platform::Services& services, platform::EntryGrid& grid);

  void Add(const std::string& description, const std::string& name);
  /// The grid shows what was added.
  void Show() { grid_.Bind(rows_); }

  /// Fills in what was entered before; a value that the letter does not ask for is passed over. Returns
  /// whether anything was.
  bool Offer(const KeptEntries& kept);
  void AddTo(KeptEntries& kept) const;

  /// The values that are missing, in the grid's order; the grid's cursor goes to the first one.
  std::vector<MissingEntry> GetEmptySingleBookMark(const MayBeEmpty& may_be_empty);
  /// Writes the values into the elements of the context. Ends with a report at the first row that has none.
  void ReplaceUserBK(platform::XmlElement root) const;

 private:
  const platform::Services& services_;
  platform::EntryGrid& grid_;
  std::shared_ptr<platform::RecordSet> rows_;
  platform::Connection lines_joined_;
};

}  // namespace composition
