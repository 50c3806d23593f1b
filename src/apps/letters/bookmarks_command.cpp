#include <QJsonObject>
#include <algorithm>
#include <array>
#include <iostream>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/listing.h"
#include "apps/letters/template_fields.h"
#include "platform/text.h"
#include "wordprocessor/docx_document.h"

namespace apps {
namespace {

using wordprocessor::TemplateFinding;

constexpr std::array<Listing::Column, 4> kBookmarkColumns{
    {{"name", "Bookmark"}, {"place", "Place"}, {"inner", "Holds"}, {"text", "Text"}}};
constexpr std::array<Listing::Column, 5> kFindingColumns{{{"grade", "Grade"},
                                                          {"bookmark", "Bookmark"},
                                                          {"place", "Place"},
                                                          {"finding", "Finding"},
                                                          {"suggestion", "Suggestion"}}};

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

Listing Findings(const std::vector<TemplateFinding>& findings) {
  Listing listing{kFindingColumns, {}};
  for (const auto& finding : findings) {
    listing.rows.push_back({finding.grade == TemplateFinding::Grade::kError ? "error" : "warning",
                            finding.bookmark, finding.place, finding.text, finding.suggestion});
  }
  return listing;
}

void PrintFinding(const std::string& grade, const std::string& bookmark, const std::string& place,
                  const std::string& text) {
  const auto both = bookmark.empty() || place.empty() ? "" : ", ";
  std::cerr << grade << ": " << bookmark << both << place << ": " << text << '\n';
}

void PrintAll(const Listing& bookmarks, const Listing& findings, bool as_json) {
  if (as_json) {
    return PrintJson(
        QJsonDocument(QJsonObject{{"bookmarks", AsJson(bookmarks)}, {"findings", AsJson(findings)}}));
  }
  Print(bookmarks, /*as_json=*/false);
  for (const auto& row : findings.rows) PrintFinding(row[0], row[1], row[2], row[3]);
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
  PrintAll(Bookmarks(document, as_json), Findings(findings), as_json);
  const bool wrong =
      std::ranges::find(findings, TemplateFinding::Grade::kError, &TemplateFinding::grade) != findings.end();
  return wrong ? kRefused : kDone;
}

}  // namespace apps
