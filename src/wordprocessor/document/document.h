#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/parties/print_component.h"
#include "wordprocessor/bookmarks/data_context.h"
#include "wordprocessor/document/blueprint.h"
#include "wordprocessor/document/bookmark_places.h"

namespace wordprocessor {

/// A WordprocessingML document held in memory: a letter on its way from its template to a file.
///
/// One thread at a time. Documents made of one blueprint are independent of each other.
class DocxDocument {
 public:
  /// Throws Failure: kNotFound where the file is missing, kPermissionDenied where it may not be read,
  /// kDamaged where it is no (sound) WordprocessingML document, kRefused where it is protected or beyond the
  /// limits of wordprocessor/files/package.h. The text names the file and says what to do.
  static DocxDocument Open(const std::filesystem::path& file);

  /// `file_name` is what messages call the document. Throws as Open.
  static DocxDocument FromBytes(std::string bytes, const std::string& file_name);

  explicit DocxDocument(std::shared_ptr<const DocxBlueprint> blueprint);

  /// In document order: the body, then headers, footers and notes. Names that begin with "_" are the word
  /// processor's own and left out. A range's text ends its paragraphs with a carriage return and its lines
  /// with a line feed.
  std::vector<platform::DocumentBookmark> Bookmarks() const;
  std::vector<BookmarkPlace> BookmarkPlaces() const;
  std::vector<std::string> BookmarksWithoutEnd() const;
  /// The bookmarks in the table rows that the bookmark `table` repeats.
  std::vector<std::string> BookmarksInRowsOf(const std::string& table) const;

  /// Takes from the common template what the letter has none of: headers, footers, page size and margins,
  /// styles (common_template.h says which). Before anything is merged: the letter begins anew. Throws as
  /// Open where the result could not be read.
  void AttachTemplate(const DocxDocument& common);

  /// Sets each bookmark from the element of the same name; NAME__1 repeats NAME. One pass.
  ///
  /// - The text is formatted as the first run of the range, or as what stands before an empty range. "||"
  /// ends
  ///   a paragraph, line breaks and tabs become those of the document, all else is text whatever it looks
  ///   like.
  /// - An empty element empties the range. The empty (or blank) element of an optional paragraph, one with
  ///   "PARA_" in its name, takes the range out and with it the paragraphs and rows left empty; without an
  ///   element its wording stands.
  /// - A table field repeats the table rows its bookmark stands in or spans, once for every row of its
  /// element;
  ///   bookmarks in them are filled from the row's columns, else from the letter's fields.
  /// - Bookmarks inside one that is replaced go with it. Two around the same text both show theirs.
  /// - Date fields show the letter's own date, the field LTR_DT.
  ///
  /// Returns the names it could not fill, each once, in document order: no element, no end in the document,
  /// or wiped out by the bookmark around it. Throws Failure kRefused where rows make the letter grow beyond
  /// bounds.
  std::vector<std::string> MergeBookmarks(const DataContext& context);

  /// What the template's author left in it, before it was cleaned for letters.
  const DocxPackage& Source() const { return blueprint_->source; }

  /// The document as a .docx file, with the letter's office as its creator. Parts without a change are copied
  /// as they are in the template, still packed.
  std::string Bytes() const;

  /// Writes the file in one step: whatever fails leaves what was there. Throws as platform/whole_file.h says.
  void Save(const std::filesystem::path& file) const;

 private:
  const DocxTree& TreeOf(std::size_t story) const;

  std::shared_ptr<const DocxBlueprint> blueprint_;
  std::vector<std::optional<DocxTree>> edited_;  // by story; empty where it is as in the blueprint
  std::string office_;
};

}  // namespace wordprocessor
