#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "wordprocessor/docx/tree.h"
#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// Which styles of a document hide their text (ECMA-376, part 1, 17.3.2.41).
class HiddenStyles {
 public:
  /// Without a style part nothing is hidden. Throws Failure kDamaged where it cannot be read.
  HiddenStyles(const DocxPackage& package, const std::string& main_part);

  /// Whether text in these styles is hidden: "" is the default one. A style that hides inside one that hides
  /// shows its text (17.7.3).
  bool Hide(const std::string& paragraph_style, const std::string& character_style) const;
  bool any() const { return any_; }

 private:
  struct Style {
    std::string based_on;
    std::optional<bool> hides;
  };

  bool Hides(const std::string& style) const;

  std::map<std::string, Style> styles_;
  std::string default_paragraph_;
  std::string default_character_;
  bool by_default_ = false;
  bool any_ = false;
};

/// The runs of a document part that nobody is shown, in document order.
std::vector<NodeId> FindHiddenRuns(const DocxTree& tree, const HiddenStyles& styles);

}  // namespace wordprocessor
