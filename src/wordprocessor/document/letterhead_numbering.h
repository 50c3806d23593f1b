#pragma once

#include <map>
#include <optional>
#include <string>

#include <pugixml.hpp>

#include "wordprocessor/docx/word_xml.h"

namespace wordprocessor {

/// The lists of a letterhead among those of the letter it is attached to, under numbers of their own.
class LetterheadNumbering {
 public:
  /// Both are numbering parts; `common` has to outlive it. Without one of its own (an empty document) the
  /// letter gets one.
  LetterheadNumbering(const pugi::xml_document& common, pugi::xml_document letter);

  /// Text and styles take the lists' new numbers; "0", no list, for one that there is not.
  /// Returns whether there were any. `part` is the root of a part.
  bool Renumber(pugi::xml_node part);

  /// The letter's numbering with what was taken; nothing where nothing was.
  std::optional<std::string> Text() const;

 private:
  bool RenumberIn(pugi::xml_node node, const PartNames& names);
  std::string OwnNumber(const std::string& number);

  const pugi::xml_document& common_;
  pugi::xml_document letter_;
  std::map<std::string, std::string> own_;  // by the common template's
};

}  // namespace wordprocessor
