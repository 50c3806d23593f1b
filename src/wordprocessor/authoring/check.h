#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "wordprocessor/authoring/template_field.h"
#include "wordprocessor/document/document.h"

namespace wordprocessor {

/// What a template's author should look at.
struct TemplateFinding {
  /// An error makes letters that are wrong; a warning may be meant.
  enum class Grade : std::uint8_t { kError, kWarning };

  Grade grade = Grade::kError;
  std::string bookmark;         ///< "" where it is about none
  std::string text;             ///< a whole sentence
  std::string suggestion = {};  ///< the name that was probably meant; "" where there is none
  std::string place = {};       ///< where it is found, as DocxLeftover::place; "" of what is missing
};

/// Checks a template's bookmarks against the fields: names that no field has (with the likeliest one), names
/// used twice, bookmarks without an end or across cells, optional paragraphs without wording, tables and
/// columns out of place, and values asked of the officer that the letter does not show; in document order,
/// what is missing last. Then bookmarks beside their placeholders (placeholders.h), what the author
/// has left in it (leftovers.h), and what the letter looks like: tables whose heading is not marked,
/// pictures without alternative text, typefaces that come out at other widths on this machine. Throws Failure
/// kDamaged where a part cannot be read.
std::vector<TemplateFinding> CheckTemplate(const DocxDocument& document,
                                           const std::vector<TemplateField>& fields);

}  // namespace wordprocessor
