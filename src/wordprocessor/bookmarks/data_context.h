#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace wordprocessor {

struct DataRow;

/// One field of a letter.
struct DataField {
  std::string text;           ///< as the data context gives it, line breaks and "||" marks included
  bool table = false;         ///< repeats table rows; the rows may be none
  std::vector<DataRow> rows;  ///< in document order; of a table only
};

/// One row of a table field: its columns by name.
struct DataRow {
  std::unordered_map<std::string, DataField> columns;

  /// The field of that name, else for NAME__1, NAME__2, ... the field NAME, else nothing.
  const DataField* Find(std::string_view name) const;
};

/// The letter's fields as the data context gives them: the root's child elements.
///
/// An element that holds row elements (which hold column elements), or whose "State" marks it as a table, is
/// a table field. The parts of a block of fields (an address) are fields too. Of several elements with one
/// name the first counts. Immutable after parsing.
class DataContext {
 public:
  /// Throws Failure kDamaged with reason and place where `xml` is no XML, and naming the field where its
  /// "State" is no flag word: whether a field is a table is nothing to guess.
  static DataContext Parse(std::string_view xml);

  const DataField* Find(std::string_view name) const { return fields_.Find(name); }

 private:
  DataRow fields_;
};

}  // namespace wordprocessor
