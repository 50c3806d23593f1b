#include <QJsonObject>
#include <array>
#include <iostream>

#include "apps/checked_templates.h"
#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/finding_list.h"
#include "apps/letters/listing.h"
#include "apps/letters/template_fields.h"
#include "platform/text.h"
#include "wordprocessor/docx_document.h"

namespace apps {
namespace {

using wordprocessor::TemplateFinding;

constexpr std::array<Listing::Column, 4> kBookmarkColumns{
    {{"name", "Bookmark"}, {"place", "Place"}, {"inner", "Holds"}, {"text", "Text"}}};

std::string OneLine(std::string text) {
  text = platform::ReplaceAll(text, "\r", " ");
  return platform::ReplaceAll(text, "\n", " ");
}

Listing Bookmarks(const wordprocessor::DocxDocument& document, bool as_json) {
  Listing listing{kBookmarkColumns, {}};
  for (const auto& place : document.BookmarkPlaces()) {
    std::string inner;
    for (const auto& name : place.bookmark.Inner) {
      if (name != place.bookmark.Name) inner += (inner.empty() ? "" : " ") + name;
    }
    listing.rows.push_back({place.bookmark.Name, std::string(PlaceName(place.where)), inner,
                            as_json ? place.bookmark.Text : OneLine(place.bookmark.Text)});
  }
  return listing;
}

void PrintAll(const Listing& bookmarks, const std::vector<TemplateFinding>& findings, bool as_json) {
  if (as_json) {
    return PrintJson(QJsonDocument(
        QJsonObject{{"bookmarks", AsJson(bookmarks)}, {"findings", AsJson(Findings(findings))}}));
  }
  Print(bookmarks, /*as_json=*/false);
  TellFindings(findings, std::cerr);
}

}  // namespace

int RunBookmarks(const QStringList& words) {
  CommandLine line("bookmarks", "Lists and checks the bookmarks of a template", "TEMPLATE.docx");
  line.JsonOption();
  line.Option("type", "CODE", "letter type whose fields it may use (default: by the template catalogue)");
  line.Option("fields", "FILE", "letter definitions (default: the product's letter_fields.tsv)");
  if (const auto status = line.Parse(words, 1, 1)) return *status;

  const std::filesystem::path file = line.Argument(0);
  const auto document = wordprocessor::DocxDocument::Open(file);
  const auto definitions =
      line.IsSet("fields") ? std::filesystem::path(line.Value("fields")) : LetterDefinitions();
  const auto fields = TemplateFields(definitions, file.filename().string(), line.Value("type"));
  const auto findings = CheckTemplate(document, fields);
  const bool as_json = line.IsSet("json");
  PrintAll(Bookmarks(document, as_json), findings, as_json);
  return ErrorsIn(findings) > 0 ? kRefused : kDone;
}

}  // namespace apps
