#include "wordprocessor/authoring/typefaces.h"

#include <utility>

#include "wordprocessor/authoring/fonts.h"
#include "wordprocessor/authoring/read_template.h"
#include "wordprocessor/authoring/used_typefaces.h"

namespace wordprocessor {

std::vector<TypefaceUse> TypefacesOf(const DocxStories& letter) {
  std::vector<TypefaceUse> uses;
  for (auto& used : FindTypefaces(letter)) {
    auto laid_out = used.embedded ? LaidOutTypeface{used.name, true} : LayoutTypeface(used.name);
    uses.push_back({std::move(used.name), std::move(laid_out.family), used.embedded, laid_out.same_widths,
                    std::move(used.place)});
  }
  return uses;
}

std::vector<TypefaceUse> TypefacesOf(const DocxDocument& document) {
  return TypefacesOf(StoriesOfLetters(document));
}

std::string WhatBecomesOf(const TypefaceUse& use) {
  if (use.laid_out_in.empty()) return "cannot be laid out: this machine has no typefaces";
  return "is laid out in \"" + use.laid_out_in +
         "\" on this machine, whose letters have other widths, so that lines and pages break elsewhere";
}

std::vector<TemplateFinding> CheckTypefaces(const DocxStories& letter) {
  std::vector<TemplateFinding> findings;
  for (const auto& use : TypefacesOf(letter)) {
    if (use.same_widths) continue;
    auto text = "The typeface \"" + use.name + "\" " + WhatBecomesOf(use) +
                ". Use another one, embed it in the document, or install it wherever letters are made.";
    findings.push_back({TemplateFinding::Grade::kWarning, "", std::move(text), "", use.place});
  }
  return findings;
}

}  // namespace wordprocessor
