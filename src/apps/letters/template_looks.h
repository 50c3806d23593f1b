#pragma once

#include <filesystem>
#include <vector>

#include "apps/letters/listing.h"
#include "wordprocessor/authoring/check.h"
#include "wordprocessor/document/document.h"

namespace apps {

/// The letterhead that lies beside `file`, else the product's. Throws what DocxDocument::Open throws.
wordprocessor::DocxDocument LetterheadFor(const std::filesystem::path& file);

/// A template as its letters are made, nothing merged. Throws what DocxDocument::AttachTemplate throws.
wordprocessor::DocxDocument WithLetterhead(wordprocessor::DocxDocument letter,
                                           const wordprocessor::DocxDocument& letterhead);

/// The typefaces of such a letter, and what lays them out on this machine.
Listing TypefaceList(const wordprocessor::DocxDocument& letter);

/// What only the pages of such a letter tell: whether the envelope's window shows its address. Starts a
/// layout process for it, which takes a second; where there is none, or it fails, the finding is that nobody
/// knows.
std::vector<wordprocessor::TemplateFinding> CheckPages(const wordprocessor::DocxDocument& letter);

}  // namespace apps
