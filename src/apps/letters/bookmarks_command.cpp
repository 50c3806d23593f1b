#include <QJsonObject>
#include <algorithm>
#include <array>
#include <iostream>
#include <iterator>

#include "apps/checked_templates.h"
#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/finding_list.h"
#include "apps/letters/listing.h"
#include "apps/letters/standard_streams.h"
#include "apps/letters/template_looks.h"
#include "apps/template_fields.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "platform/whole_file.h"
#include "wordprocessor/authoring/mail_merge.h"
#include "wordprocessor/authoring/paper.h"
#include "wordprocessor/authoring/placeholders.h"
#include "wordprocessor/document/document.h"
#include "wordprocessor/files/package_file.h"

namespace apps {
namespace {

using wordprocessor::DocxDocument;
using wordprocessor::TemplateField;
using wordprocessor::TemplateFinding;

namespace fs = std::filesystem;

constexpr std::array<Listing::Column, 4> kBookmarkColumns{
    {{"name", "Bookmark"}, {"place", "Place"}, {"inner", "Holds"}, {"text", "Text"}}};
constexpr std::array<Listing::Column, 4> kMadeColumns{
    {{"field", "Merge field"}, {"bookmark", "Bookmark"}, {"place", "Place"}, {"note", "Note"}}};
constexpr std::array<Listing::Column, 3> kRepairedColumns{
    {{"bookmark", "Repaired bookmark"}, {"placeholder", "Now around"}, {"place", "Place"}}};

std::string OneLine(std::string text) {
  text = platform::ReplaceAll(text, "\r", " ");
  return platform::ReplaceAll(text, "\n", " ");
}

Listing Bookmarks(const DocxDocument& document, bool as_json) {
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

void PrintAll(const Listing& changes, const Listing& bookmarks, const Listing& typefaces,
              const std::vector<TemplateFinding>& findings, bool as_json) {
  if (as_json) {
    QJsonObject all{{"bookmarks", AsJson(bookmarks)},
                    {"typefaces", AsJson(typefaces)},
                    {"findings", AsJson(Findings(findings))}};
    if (!changes.columns.empty()) all.insert("changes", AsJson(changes));
    return PrintJson(QJsonDocument(all));
  }
  if (!changes.columns.empty()) {
    Print(changes, /*as_json=*/false);
    std::cout << '\n';
  }
  Print(bookmarks, /*as_json=*/false);
  std::cout << '\n';
  Print(typefaces, /*as_json=*/false);
  TellFindings(findings, std::cerr);
}

void WriteTemplate(const fs::path& made, const fs::path& from, const std::string& bytes) {
  std::error_code none;
  if (fs::equivalent(made, from, none)) {
    throw platform::Failure(
        platform::Failure::Kind::kRefused,
        platform::Quoted(made.string()) +
            " is the file it would be made of, which stays as it is. Give it another name.");
  }
  platform::WriteWholeFile(made, bytes);
}

/// Returns what has become of the merge fields.
Listing WriteFromMergeFields(const fs::path& from, const fs::path& made,
                             const std::vector<TemplateField>& fields) {
  const auto package =
      wordprocessor::DocxPackage::FromBytes(wordprocessor::ReadFile(from).bytes, from.string());
  const auto bookmarks = BookmarksOfMergeFields(package, fields);
  if (bookmarks.made.empty()) {
    throw platform::Failure(platform::Failure::Kind::kRefused,
                            platform::Quoted(from.string()) +
                                " has no merge field that a bookmark could stand for. Nothing was written.");
  }
  Listing listing{kMadeColumns, {}};
  for (const auto& made_of : bookmarks.made) {
    listing.rows.push_back({made_of.field, made_of.bookmark, made_of.place, made_of.note});
  }
  WriteTemplate(made, from, bookmarks.bytes);
  return listing;
}

/// Returns what was repaired; without columns where there was nothing to repair, and nothing was written.
Listing WriteRepaired(const fs::path& from, const fs::path& made, const std::vector<TemplateField>& fields) {
  const auto repaired = RepairPlaceholders(DocxDocument::Open(from), fields);
  if (repaired.repaired.empty()) {
    Notices() << "No bookmark stands before its placeholder: there is nothing to repair, and "
              << platform::Quoted(made.string()) << " was not written.\n";
    return {};
  }
  Listing listing{kRepairedColumns, {}};
  for (const auto& miss : repaired.repaired) {
    listing.rows.push_back({miss.bookmark, miss.placeholder, miss.place});
  }
  WriteTemplate(made, from, repaired.bytes);
  return listing;
}

}  // namespace

int RunBookmarks(const QStringList& words) {
  CommandLine line("bookmarks", "Lists and checks the bookmarks of a template", "TEMPLATE.docx [NEW.docx]");
  line.JsonOption();
  line.Option("type", "CODE", "letter type whose fields it may use (default: by the template catalogue)");
  line.Option("fields", "FILE", "letter definitions (default: the product's letter_fields.tsv)");
  line.Option(
      "repair", "NEW.docx",
      "Writes NEW.docx, where bookmarks that end right before their placeholder \"[...]\" stand around it, "
      "and checks that. TEMPLATE.docx stays as it is.");
  line.Option(
      "from-merge-fields", "",
      "Makes a template of a mail merge's document: with TEMPLATE.docx and NEW.docx as arguments, writes "
      "NEW.docx, where each merge field is a bookmark, and checks that.");
  line.Option("quick", "",
              "does not lay the letter out, which takes a second: the place of its address is not checked");
  if (const auto status = line.Parse(words, 1, 2)) return *status;
  const bool from_merge = line.IsSet("from-merge-fields");
  if (from_merge && line.IsSet("repair")) {
    return line.WrongUsage(
        "--from-merge-fields and --repair do not go together. Repair what the first one writes.");
  }
  if (line.ArgumentCount() != (from_merge ? 2 : 1)) {
    return line.WrongUsage(from_merge ? "Name the mail merge's document and the template to write."
                                      : "Name one template, or add --from-merge-fields.");
  }

  const fs::path file = line.Argument(0);
  const fs::path made = from_merge ? line.Argument(1) : line.Value("repair");
  const auto definitions = line.IsSet("fields") ? fs::path(line.Value("fields")) : LetterDefinitions();
  const auto name = from_merge ? made.filename().string() : file.filename().string();
  const auto fields = TemplateFields(definitions, name, line.Value("type"));
  Listing changes;
  if (from_merge) changes = WriteFromMergeFields(file, made, fields);
  if (line.IsSet("repair")) changes = WriteRepaired(file, made, fields);
  const auto& checked = changes.columns.empty() ? file : made;
  const auto document = DocxDocument::Open(checked);
  const auto letterhead = LetterheadFor(checked);
  const auto letter = WithLetterhead(document, letterhead);
  auto findings = CheckTemplate(document, fields);
  std::ranges::move(CheckPaper(document, letterhead), std::back_inserter(findings));
  if (!line.IsSet("quick")) std::ranges::move(CheckPages(letter), std::back_inserter(findings));
  const bool as_json = line.IsSet("json");
  PrintAll(changes, Bookmarks(document, as_json), TypefaceList(letter), findings, as_json);
  return ErrorsIn(findings) > 0 ? kRefused : kDone;
}

}  // namespace apps
