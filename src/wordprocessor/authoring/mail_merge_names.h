#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "wordprocessor/authoring/check.h"

namespace wordprocessor {

/// Gives the fields of a mail merge names that bookmarks may have: a letter first, then letters, digits and
/// "_", forty characters at most, none twice.
class MailMergeNames {
 public:
  /// `taken` are the bookmarks the document has already.
  MailMergeNames(std::set<std::string> taken, const std::vector<TemplateField>& fields);

  /// The bookmark for all places of `field`: the letter's field of that name but for case, else the name made
  /// valid. Two fields never share one.
  const std::string& BookmarkOf(const std::string& field);

  /// The name at the next place of the field: NAME, then NAME__1, NAME__2, ...
  std::string Next(const std::string& field);

 private:
  bool IsUsed(const std::string& bookmark) const;

  std::set<std::string> taken_;
  const std::vector<TemplateField>& fields_;
  std::map<std::string, std::string> bookmarks_;  // by field, whose case does not count
};

}  // namespace wordprocessor
