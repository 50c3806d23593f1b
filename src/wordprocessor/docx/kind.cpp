#include "wordprocessor/docx/kind.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace wordprocessor {
namespace {

struct NamedSpace {
  std::string_view uri;
  DocxNamespace space;
};

constexpr auto kNamespaces = std::to_array<NamedSpace>({
    {"http://schemas.openxmlformats.org/wordprocessingml/2006/main", DocxNamespace::kWord},
    {"http://purl.oclc.org/ooxml/wordprocessingml/main", DocxNamespace::kWord},
    {"http://schemas.openxmlformats.org/markup-compatibility/2006", DocxNamespace::kCompatibility},
    {"http://schemas.openxmlformats.org/officeDocument/2006/math", DocxNamespace::kMath},
    {"http://purl.oclc.org/ooxml/officeDocument/math", DocxNamespace::kMath},
    {"http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing", DocxNamespace::kDrawing},
    {"http://purl.oclc.org/ooxml/drawingml/wordprocessingDrawing", DocxNamespace::kDrawing},
    {"http://schemas.microsoft.com/office/word/2012/wordml", DocxNamespace::kWord2012},
    {"http://schemas.openxmlformats.org/officeDocument/2006/relationships", DocxNamespace::kRelations},
    {"http://purl.oclc.org/ooxml/officeDocument/relationships", DocxNamespace::kRelations},
});

struct NamedKind {
  DocxNamespace space;
  std::string_view local_name;
  DocxKind kind;
};

using Ns = DocxNamespace;

constexpr auto kKinds = std::to_array<NamedKind>({
    {Ns::kWord, "body", DocxKind::kBody},
    {Ns::kWord, "p", DocxKind::kParagraph},
    {Ns::kWord, "tbl", DocxKind::kTable},
    {Ns::kWord, "tr", DocxKind::kRow},
    {Ns::kWord, "tc", DocxKind::kCell},
    {Ns::kWord, "footnote", DocxKind::kNote},
    {Ns::kWord, "endnote", DocxKind::kNote},
    {Ns::kWord, "txbxContent", DocxKind::kTextBox},
    {Ns::kWord, "sdt", DocxKind::kContentControl},
    {Ns::kWord, "sdtContent", DocxKind::kContentControlContent},
    {Ns::kWord, "customXml", DocxKind::kCustomXml},
    {Ns::kWord, "hyperlink", DocxKind::kHyperlink},
    {Ns::kWord, "smartTag", DocxKind::kInline},
    {Ns::kWord, "fldSimple", DocxKind::kSimpleField},
    {Ns::kWord, "dir", DocxKind::kInline},
    {Ns::kWord, "bdo", DocxKind::kInline},
    {Ns::kCompatibility, "AlternateContent", DocxKind::kAlternate},
    {Ns::kCompatibility, "Choice", DocxKind::kAlternate},
    {Ns::kCompatibility, "Fallback", DocxKind::kFallback},
    {Ns::kWord, "r", DocxKind::kRun},
    {Ns::kMath, "oMath", DocxKind::kMath},
    {Ns::kMath, "oMathPara", DocxKind::kMath},
    {Ns::kWord, "t", DocxKind::kText},
    {Ns::kWord, "tab", DocxKind::kTab},
    {Ns::kWord, "br", DocxKind::kBreak},
    {Ns::kWord, "cr", DocxKind::kBreak},
    {Ns::kWord, "fldChar", DocxKind::kFieldMark},
    {Ns::kWord, "instrText", DocxKind::kFieldCode},
    {Ns::kWord, "pPr", DocxKind::kParagraphProperties},
    {Ns::kWord, "rPr", DocxKind::kRunProperties},
    {Ns::kWord, "sectPr", DocxKind::kSectionProperties},
    {Ns::kWord, "sdtPr", DocxKind::kContentControlProperties},
    {Ns::kWord, "sdtEndPr", DocxKind::kOtherProperties},
    {Ns::kWord, "smartTagPr", DocxKind::kOtherProperties},
    {Ns::kWord, "customXmlPr", DocxKind::kOtherProperties},
    {Ns::kWord, "tblPr", DocxKind::kOtherProperties},
    {Ns::kWord, "tblGrid", DocxKind::kOtherProperties},
    {Ns::kWord, "tblPrEx", DocxKind::kOtherProperties},
    {Ns::kWord, "trPr", DocxKind::kOtherProperties},
    {Ns::kWord, "tcPr", DocxKind::kOtherProperties},
    {Ns::kWord, "id", DocxKind::kIdentifier},
    {Ns::kWord, "showingPlcHdr", DocxKind::kPlaceholder},
    {Ns::kWord, "lock", DocxKind::kPlaceholder},
    {Ns::kWord, "dataBinding", DocxKind::kDataBinding},
    {Ns::kWord2012, "dataBinding", DocxKind::kDataBinding},
    {Ns::kWord, "lastRenderedPageBreak", DocxKind::kRenderedBreak},
    {Ns::kDrawing, "docPr", DocxKind::kDrawingIdentity},
    {Ns::kWord, "bookmarkStart", DocxKind::kBookmarkStart},
    {Ns::kWord, "bookmarkEnd", DocxKind::kBookmarkEnd},
    {Ns::kWord, "commentRangeStart", DocxKind::kComment},
    {Ns::kWord, "commentRangeEnd", DocxKind::kComment},
    {Ns::kWord, "commentReference", DocxKind::kComment},
    {Ns::kWord, "ins", DocxKind::kInserted},
    {Ns::kWord, "moveTo", DocxKind::kInserted},
    {Ns::kWord, "cellIns", DocxKind::kInserted},
    {Ns::kWord, "del", DocxKind::kDeleted},
    {Ns::kWord, "moveFrom", DocxKind::kDeleted},
    {Ns::kWord, "cellDel", DocxKind::kDeleted},
    {Ns::kWord, "delText", DocxKind::kDeletedText},
    {Ns::kWord, "delInstrText", DocxKind::kDeletedText},
    {Ns::kWord, "cellMerge", DocxKind::kMergedCell},
    {Ns::kWord, "moveFromRangeStart", DocxKind::kChangeRange},
    {Ns::kWord, "moveFromRangeEnd", DocxKind::kChangeRange},
    {Ns::kWord, "moveToRangeStart", DocxKind::kChangeRange},
    {Ns::kWord, "moveToRangeEnd", DocxKind::kChangeRange},
    {Ns::kWord, "customXmlInsRangeStart", DocxKind::kChangeRange},
    {Ns::kWord, "customXmlInsRangeEnd", DocxKind::kChangeRange},
    {Ns::kWord, "customXmlDelRangeStart", DocxKind::kChangeRange},
    {Ns::kWord, "customXmlDelRangeEnd", DocxKind::kChangeRange},
    {Ns::kWord, "customXmlMoveFromRangeStart", DocxKind::kChangeRange},
    {Ns::kWord, "customXmlMoveFromRangeEnd", DocxKind::kChangeRange},
    {Ns::kWord, "customXmlMoveToRangeStart", DocxKind::kChangeRange},
    {Ns::kWord, "customXmlMoveToRangeEnd", DocxKind::kChangeRange},
    {Ns::kWord, "permStart", DocxKind::kChangeRange},
    {Ns::kWord, "permEnd", DocxKind::kChangeRange},
    {Ns::kWord, "pPrChange", DocxKind::kPropertyChange},
    {Ns::kWord, "rPrChange", DocxKind::kPropertyChange},
    {Ns::kWord, "sectPrChange", DocxKind::kPropertyChange},
    {Ns::kWord, "tblPrChange", DocxKind::kPropertyChange},
    {Ns::kWord, "tblPrExChange", DocxKind::kPropertyChange},
    {Ns::kWord, "tblGridChange", DocxKind::kPropertyChange},
    {Ns::kWord, "trPrChange", DocxKind::kPropertyChange},
    {Ns::kWord, "tcPrChange", DocxKind::kPropertyChange},
    {Ns::kWord, "numberingChange", DocxKind::kPropertyChange},
    {Ns::kWord, "vanish", DocxKind::kVanish},
});

std::unordered_map<std::string_view, DocxKind> KindsOf(DocxNamespace space) {
  std::unordered_map<std::string_view, DocxKind> kinds;
  for (const auto& named : kKinds) {
    if (named.space == space) kinds.emplace(named.local_name, named.kind);
  }
  return kinds;
}

}  // namespace

DocxNamespace DocxNamespaceOf(std::string_view uri) {
  const auto found = std::ranges::find(kNamespaces, uri, &NamedSpace::uri);
  return found == kNamespaces.end() ? DocxNamespace::kOther : found->space;
}

DocxKind DocxKindOf(DocxNamespace space, std::string_view local_name) {
  static const auto word = KindsOf(Ns::kWord);
  static const auto compatibility = KindsOf(Ns::kCompatibility);
  static const auto math = KindsOf(Ns::kMath);
  static const auto drawing = KindsOf(Ns::kDrawing);
  static const auto word_2012 = KindsOf(Ns::kWord2012);
  static const std::unordered_map<std::string_view, DocxKind> none;
  const auto& kinds = space == Ns::kWord            ? word
                      : space == Ns::kCompatibility ? compatibility
                      : space == Ns::kMath          ? math
                      : space == Ns::kDrawing       ? drawing
                      : space == Ns::kWord2012      ? word_2012
                                                    : none;
  const auto found = kinds.find(local_name);
  return found == kinds.end() ? DocxKind::kOther : found->second;
}

bool IsBlock(DocxKind kind) {
  return kind == DocxKind::kParagraph || kind == DocxKind::kTable || kind == DocxKind::kContentControl ||
         kind == DocxKind::kCustomXml;
}

bool IsAroundRuns(DocxKind kind) {
  return kind == DocxKind::kHyperlink || kind == DocxKind::kInline || kind == DocxKind::kSimpleField ||
         kind == DocxKind::kInserted || kind == DocxKind::kDeleted || kind == DocxKind::kAlternate ||
         kind == DocxKind::kFallback || kind == DocxKind::kContentControl ||
         kind == DocxKind::kContentControlContent || kind == DocxKind::kCustomXml;
}

bool IsProperties(DocxKind kind) {
  return kind >= DocxKind::kParagraphProperties && kind <= DocxKind::kOtherProperties;
}

}  // namespace wordprocessor
