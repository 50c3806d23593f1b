#pragma once

#include <cstdint>
#include <string_view>

namespace wordprocessor {

/// The namespaces whose elements this room knows, the transitional and the strict one of each alike
/// (ECMA-376, part 1 and part 4).
enum class DocxNamespace : std::uint8_t {
  kOther,
  kWord,
  kWord2012,
  kCompatibility,
  kMath,
  kDrawing,
  kRelations
};

DocxNamespace DocxNamespaceOf(std::string_view uri);

/// What an element of a document part is to the merge. Everything else is kOther and stays as it is.
enum class DocxKind : std::uint8_t {
  kOther,
  kMarkup,  ///< character data, a comment or an instruction: no element
  // Blocks and what holds them.
  kBody,
  kParagraph,
  kTable,
  kRow,
  kCell,
  kNote,
  kTextBox,
  kContentControl,  ///< w:sdt, around blocks, rows, cells or runs
  kContentControlContent,
  kCustomXml,
  // Around runs.
  kHyperlink,
  kInline,       ///< w:smartTag, w:dir, w:bdo
  kSimpleField,  ///< w:fldSimple
  kAlternate,    ///< mc:AlternateContent and its branches
  kFallback,
  // Content.
  kRun,
  kMath,
  kText,
  kTab,
  kBreak,
  kFieldMark,  ///< w:fldChar
  kFieldCode,  ///< w:instrText
  // Properties.
  kParagraphProperties,
  kRunProperties,
  kSectionProperties,
  kContentControlProperties,
  kOtherProperties,
  kIdentifier,       ///< w:id, of a content control inside its properties
  kPlaceholder,      ///< w:showingPlcHdr and w:lock: the content is not the control's own, or stays as it is
  kDataBinding,      ///< w:dataBinding: the content comes from elsewhere
  kRenderedBreak,    ///< w:lastRenderedPageBreak
  kDrawingIdentity,  ///< wp:docPr
  // Marks without extent.
  kBookmarkStart,
  kBookmarkEnd,
  // What the author's work on the document has left in it. Cleaned documents have none of it.
  kComment,         ///< w:commentRangeStart, w:commentRangeEnd, w:commentReference
  kInserted,        ///< w:ins, w:moveTo and w:cellIns: around runs, and in the properties of what came in
  kDeleted,         ///< w:del, w:moveFrom and w:cellDel, likewise
  kDeletedText,     ///< w:delText and w:delInstrText
  kMergedCell,      ///< w:cellMerge
  kChangeRange,     ///< where a tracked move, a change of tags or somebody's right to edit starts or ends
  kPropertyChange,  ///< what properties were before a tracked change
  kVanish,          ///< w:vanish, of hidden text
};

DocxKind DocxKindOf(DocxNamespace space, std::string_view local_name);

/// Whether a body, cell, header, note or text box may hold it next to paragraphs.
bool IsBlock(DocxKind kind);
/// Whether it may stand between a paragraph and its runs.
bool IsAroundRuns(DocxKind kind);
bool IsProperties(DocxKind kind);

}  // namespace wordprocessor
