#include "apps/letters/letter_entries.h"

#include "platform/agreed/field_names.h"

namespace apps {
namespace {

using composition::ParagraphChoice;
using composition::UserBookmarks;
using platform::RecordSet;

/// How the rows of one of the form's grids are known to the person.
struct EntryKind {
  const char* one;
  const char* none;
  const char* name_column;
  const char* description_column;
};

constexpr EntryKind kBookmark = {"bookmark", "The letter has no bookmarks for the user to fill.",
                                 UserBookmarks::kName, UserBookmarks::kDescription};
constexpr EntryKind kParagraph = {"paragraph", "The letter has no optional paragraphs.",
                                  ParagraphChoice::kName, ParagraphChoice::kDescription};

std::string RefusalOf(const std::string& name, const RecordSet& rows, const EntryKind& kind) {
  auto text = "The letter has no " + std::string(kind.one) + " \"" + name + "\" to fill in. ";
  if (rows.IsEmpty()) return text + kind.none;
  text += "It has:";
  for (std::size_t row = 0; row < rows.RecordCount(); ++row) {
    text += "\n  " + rows.Text(row, kind.name_column) + "  " + rows.Text(row, kind.description_column);
  }
  return text;
}

std::optional<std::size_t> RowOf(const platform::Grid& grid, const std::string& name, const EntryKind& kind) {
  return grid.rows()->Find(kind.name_column, RecordSet::Match::kEquals, name);
}

void FillCell(composition::frmLetter& form, const std::string& bookmark, const std::string& value) {
  const auto row = RowOf(form.sdgUserBookmark, bookmark, kBookmark);
  if (row) form.sdgUserBookmark.UserEdits(*row, value);
}

void Tick(composition::frmLetter& form, const std::string& paragraph) {
  const auto row = RowOf(form.sdgGrid, paragraph, kParagraph);
  if (!row) return;
  form.sdgGrid.UserTicks(*row, true);
  form.sdgGrid.UserMovesTo(*row);
}

std::string NamesIn(const composition::MissingEntry& group) {
  std::string listed;
  for (const auto& name : group.names) {
    listed += (listed.empty() ? "" : ", ") + name;
    if (name == platform::kFreeTextParagraph) listed += " (with --free-text)";
  }
  return listed;
}

}  // namespace

std::string OptionsForMissing(const composition::frmLetter& form) {
  std::string options;
  for (const auto& entry : form.missing()) {
    options += entry.is_paragraph ? "--paragraph takes at least one of " + NamesIn(entry) + ".\n"
                                  : "--set takes " + entry.names.front() + ".\n";
  }
  return options;
}

std::optional<std::string> LetterEntries::Refusal(const composition::frmLetter& form) const {
  for (const auto& [name, value] : values) {
    if (!RowOf(form.sdgUserBookmark, name, kBookmark))
      return RefusalOf(name, *form.sdgUserBookmark.rows(), kBookmark);
  }
  auto wanted = paragraphs;
  if (free_text) wanted.emplace_back(platform::kFreeTextParagraph);
  for (const auto& name : wanted) {
    if (!RowOf(form.sdgGrid, name, kParagraph)) return RefusalOf(name, *form.sdgGrid.rows(), kParagraph);
  }
  return std::nullopt;
}

void LetterEntries::FillIn(composition::frmLetter& form) const {
  for (const auto& [name, value] : values) FillCell(form, name, value);
  for (const auto& paragraph : paragraphs) Tick(form, paragraph);
  if (!free_text) return;
  Tick(form, std::string(platform::kFreeTextParagraph));
  form.txtParagraph.UserEdits(*free_text);
  form.txtParagraph.UserLeaves();
}

}  // namespace apps
