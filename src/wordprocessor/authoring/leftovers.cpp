#include "wordprocessor/authoring/leftovers.h"

#include <algorithm>
#include <array>
#include <set>
#include <string_view>
#include <utility>

#include "platform/text.h"
#include "wordprocessor/authoring/mail_merge.h"
#include "wordprocessor/cleaning/survey.h"
#include "wordprocessor/document/letter_date.h"

namespace wordprocessor {
namespace {

using Grade = TemplateFinding::Grade;
using Left = DocxLeftover::Kind;
using About = TrackedChange::About;

constexpr std::size_t kMostCharacters = 60;
constexpr std::size_t kMostPieces = 6;

/// The sentence is `begins`, what was left, and `ends`.
struct LeftoverRule {
  Left kind;
  Grade grade;
  std::string_view begins;
  std::string_view ends;
};

constexpr auto kLeftoverRules = std::to_array<LeftoverRule>({
    {Left::kHiddenText, Grade::kWarning, "The text ",
     " is hidden, and no letter has it: delete it, or show it."},
    {Left::kMergeField, Grade::kError, "The mail merge's field ",
     " is never filled: make bookmarks of such fields "
     "with \"zemlo-letters bookmarks --from-merge-fields OLD.docx NEW.docx\"."},
    {Left::kConditionField, Grade::kError, "The field ",
     " decides nothing here: every letter shows what it showed last. Make an optional paragraph of it, a "
     "bookmark, or plain text."},
    {Left::kOutsideField, Grade::kError, "The field ",
     " shows what stands outside of the document, which is never read: "
     "every letter shows what it showed last. Put that into the document as plain text."},
    {Left::kMacroField, Grade::kError, "The field ", " starts a program, which never runs: take it out."},
    {Left::kInformationField, Grade::kWarning, "The field ",
     " tells about this file or its author: "
     "every letter shows what it showed last. Write that as plain text."},
    {Left::kCutField, Grade::kError, "The field ",
     " lacks its beginning or its end: delete it and insert it anew."},
    {Left::kLinkedPicture, Grade::kError, "The picture is a link to ",
     ", which is never read: insert the picture itself."},
    {Left::kLinkedObject, Grade::kError, "The object is a link to ",
     ", which is never read: put its contents into the document."},
    {Left::kLinkedFile, Grade::kError, "The link leads to ",
     ", a file that readers do not have: take the link out."},
    {Left::kInsertedFile, Grade::kError, "The file ",
     " is to be inserted here, and no letter has it: put its text into the document."},
    {Left::kEmbeddedObject, Grade::kError, "The embedded object ",
     " does not go out; letters show its picture: put a picture or a table in its place."},
    {Left::kControl, Grade::kError, "The control ",
     " does not work in letters; they show its picture: take it out."},
    {Left::kMacro, Grade::kError, "The macro ", " never runs: take it out, or save the letter as .docx."},
});

constexpr LeftoverRule kDateRule = {
    Left::kDateField, Grade::kWarning, "The date field ",
    " shows the letter's date, the same in every reprint: use the bookmark LTR_DT to say so."};
constexpr LeftoverRule kDateWithoutFieldRule = {
    Left::kDateField, Grade::kError, "The date field ",
    " shows the letter's date, but this letter has none: give it the "
    "field LTR_DT, or write the date as text."};

/// In quotes, on one line, and not endless.
std::string InWords(const std::string& what) {
  const auto line = platform::OnOneLine(what);
  const auto shown = platform::FirstCharacters(line, kMostCharacters);
  return platform::Quoted(std::string(shown) + (shown.size() < line.size() ? "..." : ""));
}

std::string ByWhom(const std::string& who) {
  return who.empty() ? "" : " by " + platform::OnOneLine(who);
}

bool IsChange(Left kind) {
  return kind >= Left::kInserted && kind <= Left::kCellsMerged;
}

std::string_view WhatWasDone(Left kind) {
  constexpr auto kVerbs = std::to_array<std::string_view>(
      {"inserted", "deleted", "moved here", "moved away", "formatted", "merged"});
  return kVerbs[static_cast<std::size_t>(kind) - static_cast<std::size_t>(Left::kInserted)];
}

std::string_view WhatChanged(const DocxLeftover& change) {
  constexpr auto kThings = std::to_array<std::string_view>(
      {"something", "the end of a paragraph", "a table's row", "a table's cell", "the looks"});
  return change.kind == Left::kCellsMerged ? "a table's cells"
                                           : kThings[static_cast<std::size_t>(change.about)];
}

class LeftoverCheck {
 public:
  LeftoverCheck(const std::vector<DocxLeftover>& leftovers, const std::vector<TemplateField>& fields)
      : leftovers_(leftovers),
        has_date_(fields.empty() ||
                  std::ranges::find(fields, kLetterDateField, &TemplateField::name) != fields.end()) {}

  std::vector<TemplateFinding> Run() && {
    for (const auto& leftover : leftovers_) {
      if (IsChange(leftover.kind)) {
        TellChangesLike(leftover);
      } else {
        Tell(leftover);
      }
    }
    return std::move(findings_);
  }

 private:
  void Tell(const DocxLeftover& leftover) {
    if (leftover.kind == Left::kLostBookmark) {
      return Find(Grade::kError, leftover,
                  "The bookmark goes with text that is deleted or hidden, "
                  "so that the letter does not show its value: settle the text, or delete the bookmark.",
                  leftover.what);
    }
    if (leftover.kind == Left::kComment) {
      const auto words = leftover.what.empty() ? "" : ": " + InWords(leftover.what);
      return Find(
          Grade::kWarning, leftover,
          "Comment" + ByWhom(leftover.who) + words + ". Letters go out without it: settle it and delete it.");
    }
    const auto reason =
        leftover.kind == Left::kMergeField ? ReasonAgainstBookmark(leftover.what) : std::string_view();
    if (!reason.empty()) {
      return Find(
          Grade::kError, leftover,
          "The mail merge's field " + InWords(leftover.what) + " is never filled. " + std::string(reason));
    }
    const auto* rule = RuleOf(leftover.kind);
    if (rule != nullptr) {
      Find(rule->grade, leftover,
           std::string(rule->begins) + InWords(leftover.what) + std::string(rule->ends));
    }
  }

  const LeftoverRule* RuleOf(Left kind) const {
    if (kind == Left::kDateField) return has_date_ ? &kDateRule : &kDateWithoutFieldRule;
    const auto rule = std::ranges::find(kLeftoverRules, kind, &LeftoverRule::kind);
    return rule == kLeftoverRules.end() ? nullptr : &*rule;
  }

  /// All that one person changed in one paragraph, where the first of it stands.
  void TellChangesLike(const DocxLeftover& first) {
    if (!told_.emplace(first.paragraph, first.who).second) return;
    std::vector<const DocxLeftover*> changes;
    for (const auto& other : leftovers_) {
      if (IsChange(other.kind) && other.paragraph == first.paragraph && other.who == first.who)
        changes.push_back(&other);
    }
    const bool looks_only = std::ranges::all_of(changes, [](const auto* change) {
      return change->kind == Left::kFormatted || (change->about == About::kLooks && change->what.empty());
    });
    Find(looks_only ? Grade::kWarning : Grade::kError, first,
         "Tracked changes" + ByWhom(first.who) + ": " + Listed(changes) + ". Accept or reject them.");
  }

  static std::string Listed(const std::vector<const DocxLeftover*>& changes) {
    std::string list;
    for (const auto& piece : Pieces(changes)) list += (list.empty() ? "" : ", ") + piece;
    return list;
  }

  /// Ends of paragraphs and rows go without saying where words came or went with them.
  static std::vector<std::string> Pieces(const std::vector<const DocxLeftover*>& changes) {
    std::vector<std::string> pieces;
    for (const auto* change : changes) {
      const bool said = change->what.empty() && std::ranges::any_of(changes, [&](const auto* other) {
                          return other->kind == change->kind && !other->what.empty();
                        });
      if (said) continue;
      auto piece = std::string(WhatWasDone(change->kind)) + " " +
                   (change->what.empty() ? std::string(WhatChanged(*change)) : InWords(change->what));
      if (std::ranges::find(pieces, piece) == pieces.end()) pieces.push_back(std::move(piece));
    }
    if (pieces.size() <= kMostPieces) return pieces;
    const auto more = pieces.size() - (kMostPieces - 1);
    pieces.resize(kMostPieces - 1);
    pieces.push_back("and " + std::to_string(more) + " more");
    return pieces;
  }

  void Find(Grade grade, const DocxLeftover& leftover, std::string text, std::string bookmark = {}) {
    findings_.push_back({grade, std::move(bookmark), std::move(text), {}, leftover.place});
  }

  const std::vector<DocxLeftover>& leftovers_;
  const bool has_date_;
  std::set<std::pair<std::size_t, std::string>> told_;  // paragraph and who
  std::vector<TemplateFinding> findings_;
};

}  // namespace

std::vector<TemplateFinding> FindingsOfLeftovers(const DocxStories& written,
                                                 const std::vector<TemplateField>& fields) {
  const auto leftovers = FindLeftovers(written);
  return LeftoverCheck(leftovers, fields).Run();
}

}  // namespace wordprocessor
