#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include <pugixml.hpp>

#include "wordprocessor/docx/relations.h"
#include "wordprocessor/files/package.h"

namespace wordprocessor {

/// The kinds of writing that have a typeface of their own each (ECMA-376, part 1, 17.3.2.26).
enum class Script : std::uint8_t { kLatin, kEastAsian, kComplex };
inline constexpr std::size_t kScripts = 3;

/// The scripts of a text; blanks have none.
std::array<bool, kScripts> ScriptsIn(std::string_view text);

/// A typeface for each script; "" where none is named.
using TypefaceNames = std::array<std::string, kScripts>;

/// What a document's styles and theme name.
class TypefaceStyles {
 public:
  /// Throws Failure kDamaged where a part cannot be read.
  TypefaceStyles(const DocxPackage& package, const std::vector<DocxRelation>& relations);

  /// What one w:rFonts names; `attribute` gives its attributes by their local names.
  TypefaceNames NamesIn(const std::function<std::string(std::string_view)>& attribute) const;

  /// What a style names, or one it is based on.
  std::string Of(const std::string& style, Script script) const;
  const std::string& default_paragraph() const { return default_paragraph_; }
  /// Where nothing else says it.
  const std::string& Default(Script script) const { return defaults_[static_cast<std::size_t>(script)]; }

 private:
  struct Style {
    std::string based_on;
    TypefaceNames names;
  };

  void ReadTheme(const pugi::xml_node& root);
  TypefaceNames NamesOfRun(const pugi::xml_node& run_properties) const;

  std::map<std::string, std::string> theme_;  ///< by "minorHAnsi" and the like
  std::map<std::string, Style> styles_;
  std::string default_paragraph_;
  TypefaceNames defaults_;
};

}  // namespace wordprocessor
