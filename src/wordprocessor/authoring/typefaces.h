#pragma once

#include <string>
#include <vector>

#include "wordprocessor/authoring/check.h"
#include "wordprocessor/cleaning/stories.h"
#include "wordprocessor/document/document.h"

namespace wordprocessor {

/// A typeface that a document's text is set in, and what it will look like.
struct TypefaceUse {
  std::string name;
  /// The typeface that lays it out; its own name where the document brings it along.
  std::string laid_out_in;
  bool embedded = false;
  bool same_widths = true;
  std::string place;  ///< of the first text in it
};

/// Those of a letter as it is: with the letterhead's where that is attached. In the order of the text. Throw
/// Failure kDamaged where a part cannot be read.
std::vector<TypefaceUse> TypefacesOf(const DocxStories& letter);
std::vector<TypefaceUse> TypefacesOf(const DocxDocument& document);

/// Of a typeface with other widths, what becomes of it, after its name: "is laid out in ...".
std::string WhatBecomesOf(const TypefaceUse& use);

/// A warning for each typeface that this machine lays out at other widths.
std::vector<TemplateFinding> CheckTypefaces(const DocxStories& letter);

}  // namespace wordprocessor
