#pragma once

#include <set>
#include <string>

#include <pugixml.hpp>

#include "wordprocessor/docx/tree.h"
#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// The character style that links need: the office makes a link of a PDF only of text that has one
/// (LibreOffice 7.4). It changes no looks. Decision [link-style].
class LinkStyle {
 public:
  /// Throws Failure kDamaged where the styles cannot be read.
  LinkStyle(const DocxPackage& package, const std::string& main_part);

  /// Gives it to the text of links that lead out of the document and have no character style, or none that
  /// there is; without a style part to none. Returns whether there were any.
  bool GiveTo(DocxTree& tree);

  /// Adds it where it was given to any text. `styles` is the root of the style part. Returns whether it was.
  bool AddTo(pugi::xml_node styles) const;

 private:
  bool GiveToRun(DocxTree& tree, NodeId run);

  bool has_styles_ = false;
  std::set<std::string> known_;  // character styles
  std::string id_;
  bool given_ = false;
};

}  // namespace wordprocessor
