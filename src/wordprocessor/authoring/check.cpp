#include "wordprocessor/authoring/check.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <set>
#include <string_view>

#include "platform/text.h"
#include "wordprocessor/authoring/bookmark_spots.h"
#include "wordprocessor/authoring/leftovers.h"
#include "wordprocessor/authoring/pictures.h"
#include "wordprocessor/authoring/placeholders.h"
#include "wordprocessor/authoring/read_template.h"
#include "wordprocessor/authoring/tables.h"
#include "wordprocessor/authoring/typefaces.h"
#include "wordprocessor/bookmarks/data_context.h"
#include "wordprocessor/bookmarks/text.h"

namespace wordprocessor {
namespace {

using Grade = TemplateFinding::Grade;
using FieldKind = TemplateField::Kind;

/// How many letters have to be put in, left out or changed to make one name of the other (Levenshtein).
std::size_t Distance(std::string_view from, std::string_view to) {
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < from.size(); ++i) {
    auto diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t j = 0; j < to.size(); ++j) {
      const auto changed = diagonal + (from[i] == to[j] ? 0 : 1);
      diagonal = row[j + 1];
      row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, changed});
    }
  }
  return row.back();
}

class TemplateCheck {
 public:
  TemplateCheck(const DocxDocument& document, const BookmarkSpots& spots,
                const std::vector<TemplateField>& fields)
      : document_(document),
        spots_(spots),
        fields_(fields),
        places_(document.BookmarkPlaces()),
        endless_(document.BookmarksWithoutEnd()) {}

  std::vector<TemplateFinding> Run() && {
    std::map<std::string, std::size_t> before;
    for (const auto& place : places_) {
      spot_ = spots_.Of(place.bookmark.Name, before[place.bookmark.Name]++);
      CheckPlace(place);
    }
    before.clear();
    for (const auto& name : endless_) {
      spot_ = spots_.Of(name, before[name]++, /*has_end=*/false);
      Find(Grade::kError, name, "The bookmark has no end, so it is never filled: set it anew.");
    }
    spot_.clear();
    CheckUse();
    return std::move(findings_);
  }

 private:
  void Find(Grade grade, const std::string& bookmark, std::string text, std::string suggestion = "") {
    findings_.push_back({grade, bookmark, std::move(text), std::move(suggestion), spot_});
  }

  void CheckPlace(const BookmarkPlace& place) {
    const auto& name = place.bookmark.Name;
    if (!names_.insert(name).second) {
      Find(Grade::kError, name, "The name is used twice: call the second one \"" + name + "__1\".");
    }
    const auto* field = FieldFor(name, fields_);
    if (field == nullptr) return ReportUnknown(name);
    if (place.crosses_cells && field->kind != FieldKind::kTable) {
      Find(Grade::kError, name, "The bookmark goes from one table cell into another: keep it within one.");
    }
    if (field->kind == FieldKind::kTable && place.where != BookmarkPlace::Where::kTable) {
      Find(Grade::kError, name, "The field has rows, but the bookmark stands in no table row.");
    }
    if (field->kind == FieldKind::kColumn && !IsInside(*field, name)) {
      Find(Grade::kError, name,
           "The bookmark is a column of \"" + field->table +
               "\", but stands outside of the rows of that bookmark.");
    }
    if (field->kind == FieldKind::kParagraph && IsBlank(place.bookmark.Text)) {
      Find(Grade::kError, name, "The optional paragraph has no wording: set the bookmark around its text.");
    }
  }

  bool IsInside(const TemplateField& column, const std::string& name) {
    auto rows = rows_of_.find(column.table);
    if (rows == rows_of_.end())
      rows = rows_of_.emplace(column.table, document_.BookmarksInRowsOf(column.table)).first;
    return std::ranges::find(rows->second, name) != rows->second.end();
  }

  void ReportUnknown(const std::string& bookmark) {
    const auto name = FieldNameOf(bookmark);
    const auto likely = LikelyField(platform::UpperCase(name));
    const auto suggestion = likely.empty() ? "" : likely + bookmark.substr(name.size());
    Find(Grade::kError, bookmark,
         "No field of the letter fills this bookmark" +
             (likely.empty() ? std::string(".") : "; did you mean \"" + suggestion + "\"?"),
         suggestion);
  }

  /// A misspelling differs in a letter or two; names that differ in more are other names, but for one that
  /// leaves out words of a single field. "" where there is none.
  std::string LikelyField(const std::string& name) const {
    const auto distance = [&](const TemplateField& field) { return Distance(name, field.name); };
    const auto nearest = std::ranges::min_element(fields_, {}, distance);
    if (nearest != fields_.end() && distance(*nearest) <= std::max<std::size_t>(1, name.size() / 4))
      return nearest->name;
    std::set<std::string> longer;
    for (const auto& field : fields_) {
      if (("_" + field.name + "_").find("_" + name + "_") != std::string::npos) longer.insert(field.name);
    }
    return longer.size() == 1 ? *longer.begin() : "";
  }

  void CheckUse() {
    std::set<std::string> used(endless_.begin(), endless_.end());
    for (const auto& place : places_) used.insert(FieldNameOf(place.bookmark.Name));
    for (const auto& field : fields_) {
      if (used.contains(field.name) || !field.asked) continue;
      if (field.kind == FieldKind::kUser)
        Find(Grade::kWarning, field.name,
             "The officer is asked for this value, but the letter does not show it.");
      if (field.kind == FieldKind::kParagraph)
        Find(Grade::kWarning, field.name, "The officer may choose this paragraph, but the letter has none.");
    }
  }

  const DocxDocument& document_;
  const BookmarkSpots& spots_;
  const std::vector<TemplateField>& fields_;
  const std::vector<BookmarkPlace> places_;
  const std::vector<std::string> endless_;
  std::map<std::string, std::vector<std::string>> rows_of_;  // bookmarks by table; read when one is asked for
  std::string spot_;                                         // of the bookmark that is looked at
  std::set<std::string> names_;
  std::vector<TemplateFinding> findings_;
};

}  // namespace

std::vector<TemplateFinding> CheckTemplate(const DocxDocument& document,
                                           const std::vector<TemplateField>& fields) {
  const auto written = StoriesAsWritten(document);
  const auto letter = StoriesOfLetters(document);
  const BookmarkSpots spots(letter);
  auto findings = TemplateCheck(document, spots, fields).Run();
  for (const auto& more :
       {FindingsOfPlaceholders(written, fields), FindingsOfLeftovers(written, fields),
        CheckTableHeads(letter, spots, fields), CheckPictures(letter), CheckTypefaces(letter)}) {
    findings.insert(findings.end(), more.begin(), more.end());
  }
  return findings;
}

}  // namespace wordprocessor
