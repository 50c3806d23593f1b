#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "wordprocessor/docx/relations.h"
#include "wordprocessor/docx/tree.h"

namespace wordprocessor {

/// Whether a link to `address` is of use to whoever reads the letter: a page, a mail address, a telephone.
/// One to a file names a place of the author's machine.
bool IsAddressForReaders(std::string_view address);

/// What a relation leads to, and so whether a letter takes it along.
enum class RelationUse : std::uint8_t {
  kPart,            ///< belongs to the letter: headers, styles, pictures, charts, typefaces, ...
  kLink,            ///< a link for its readers
  kComments,        ///< what people said about the document, and who they are
  kLinkedPicture,   ///< outside of the document
  kLinkedObject,    ///< likewise
  kLinkedFile,      ///< a link to a file
  kInsertedFile,    ///< a document that a word processor is to insert: w:altChunk, w:subDoc
  kEmbeddedObject,  ///< of another program; the letter shows its picture
  kControl,         ///< a control with a program behind it; likewise
  kMacro,           ///< programs
  kData,            ///< custom XML and properties, data of a mail merge, printer settings, previews, ...
};

RelationUse UseOf(const DocxRelation& relation);

/// Whether the relation stays in a letter.
bool IsKept(RelationUse use);

/// An element of a document part that refers to something a letter does not take along.
struct OutsideReference {
  RelationUse use;
  NodeId node;
  std::string attribute;  ///< the one that refers to it; "" of a form field's macro
  std::string target;     ///< the part or the address, or the macro
};

/// In document order.
std::vector<OutsideReference> FindOutside(const DocxTree& tree, const std::vector<DocxRelation>& relations);

/// Takes these references out: of a picture or an object what it shows stays. Returns whether there were any.
bool DropOutside(DocxTree& tree, const std::vector<DocxRelation>& relations);

}  // namespace wordprocessor
