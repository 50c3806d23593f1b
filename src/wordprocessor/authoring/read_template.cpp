#include "wordprocessor/authoring/read_template.h"

#include <utility>

#include "wordprocessor/document/blueprint.h"

namespace wordprocessor {
namespace {

DocxStories StoriesIn(DocxPackage package) {
  auto main_part = FindMainPart(package);
  return {std::move(package), std::move(main_part)};
}

}  // namespace

DocxStories StoriesAsWritten(const DocxDocument& document) {
  return StoriesIn(document.Source());
}

DocxStories StoriesOfLetters(const DocxDocument& document) {
  return StoriesIn(DocxPackage::FromBytes(document.Bytes(), document.Source().file_name()));
}

}  // namespace wordprocessor
