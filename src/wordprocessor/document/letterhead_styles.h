#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "wordprocessor/document/settled_styles.h"

namespace wordprocessor {

/// The styles of a letterhead in a letter that has styles of the same identifiers, or other defaults: under
/// identifiers of their own. Decision [letterhead-styles].
class LetterheadStyles {
 public:
  /// Both have to outlive it.
  LetterheadStyles(const SettledStyles& common, const SettledStyles& letter);

  /// Text and tables of one of the letterhead's parts take such styles, unless the letter's own look just
  /// the same. Returns whether they did.
  bool Rename(pugi::xml_node part);

  /// What was taken; its numbering is the common template's.
  pugi::xml_node made() { return made_.document_element(); }

  /// Puts it into the letter's styles. Returns whether there was any.
  bool AddTo(pugi::xml_node styles) const;

 private:
  struct Use {
    pugi::xml_node node;  // a paragraph, a table, or what names the style of a run
    std::string type;
    std::string style;  // "": by default
    std::string table;  // the style of the table around a paragraph; "" outside of tables
  };

  void FindUses(pugi::xml_node node, const std::string& table, std::vector<Use>& uses) const;
  std::string DefaultOf(const std::string& type) const;
  bool LooksTheSame(const Use& use) const;
  std::string OwnStyle(const std::string& type, const std::string& style, const std::string& table);
  std::string BaseStyle(const std::string& table);
  pugi::xml_node AddStyle(const std::string& key, const std::string& type, const std::string& like);
  void AddDefaults(pugi::xml_node style, std::string_view properties, const std::string& table) const;

  const SettledStyles& common_;
  const SettledStyles& letter_;
  pugi::xml_document made_;
  std::map<std::string, std::string> own_;  // identifier by type, style and table
};

}  // namespace wordprocessor
