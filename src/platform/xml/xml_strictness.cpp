#include "platform/xml/xml_strictness.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "platform/text.h"
#include "platform/xml/xml_characters.h"
#include "platform/xml/xml_cursor.h"
#include "platform/xml/xml_declaration.h"

namespace platform {
namespace {

constexpr ByteSet kTextStops("<&>");

/// Reads one document from its start to its end. The functions that read a thing return false once they have
/// noted a fault; what they start at is behind them.
class Reader : private XmlCursor {
 public:
  explicit Reader(std::string_view text) : XmlCursor(text) {}

  bool ReadDocument();
  using XmlCursor::Error;

 private:
  bool ReadMarkup();
  bool ReadText();
  bool ReadStartTag();
  bool ReadAttribute();
  bool CheckAttributesDiffer();
  bool ReadEndTag();
  bool ReadComment();
  bool ReadSection();
  bool ReadInstruction();
  bool ReadPast(std::string_view end, std::string_view thing);
  bool OpenElement(std::string_view name);

  bool root_seen_ = false;
  std::size_t depth_ = 0;
  std::array<std::string_view, kDeepestElement> open_;  // names; the first depth_ of them
  std::vector<std::string_view> attributes_;            // names in the tag being read
};

bool Reader::ReadDocument() {
  const auto good = XmlCharactersLength(text());
  if (good < text().size()) {
    const bool valid = ValidUtf8Length(text().substr(good)) > 0;
    return Fail(
        XmlFault::kCharacter,
        valid ? "A character stands here that XML does not allow." : "The text is no valid UTF-8 here.",
        good);
  }
  Take("\xEF\xBB\xBF");
  if (!ReadXmlDeclaration(*this)) return false;
  while (!AtEnd()) {
    if (LooksAt("<") ? !ReadMarkup() : !ReadText()) return false;
  }
  if (depth_ > 0) {
    return Fail(XmlFault::kUnfinished, "The element " + XmlQuoted(open_[depth_ - 1]) + " has no end tag.",
                at());
  }
  return root_seen_ || Fail(XmlFault::kNoRoot, "The document has no element.", at());
}

bool Reader::ReadMarkup() {
  if (Take("</")) return ReadEndTag();
  if (Take("<!--")) return ReadComment();
  if (Take("<![CDATA[")) return ReadSection();
  if (Take("<?")) return ReadInstruction();
  if (LooksAt("<!DOCTYPE")) {
    return Fail(XmlFault::kDoctype, "The document has a DOCTYPE, which is not taken. Remove it.", at());
  }
  if (LooksAt("<!")) return Fail(XmlFault::kMarkup, "\"<!\" starts no comment and no section here.", at());
  Take("<");
  return ReadStartTag();
}

bool Reader::ReadText() {
  if (depth_ == 0) {
    SkipSpace();
    if (AtEnd() || LooksAt("<")) return true;
    return Fail(XmlFault::kOutsideRoot, "There is text outside the root element.", at());
  }
  for (auto start = at();;) {
    MoveTo(kTextStops.FindIn(text(), at()));
    if (AtEnd() || LooksAt("<")) return true;
    if (LooksAt("&")) {
      if (!ReadReference()) return false;
      start = at();
    } else if (text().substr(start, at() - start).ends_with("]]")) {
      return Fail(XmlFault::kMarkup, "\"]]>\" stands in a text. Write \"]]&gt;\".", at() - 2);
    } else {
      Take(">");
    }
  }
}

bool Reader::ReadStartTag() {
  const auto start = at() - 1;
  std::string_view name;
  if (!ReadName(name)) return false;
  if (depth_ == 0 && root_seen_) {
    return Fail(XmlFault::kOutsideRoot, "The document has a second root element " + XmlQuoted(name) + ".",
                start);
  }
  if (depth_ == kDeepestElement) {
    return Fail(XmlFault::kTooDeep, "The elements are nested more than 256 deep.", start);
  }
  root_seen_ = true;
  attributes_.clear();
  for (;;) {
    const bool space = SkipSpace();
    if (Take("/>")) return CheckAttributesDiffer();
    if (Take(">")) return OpenElement(name);
    if (!space)
      return FailHere(XmlFault::kMarkup, "A blank or \">\" is missing in the tag " + XmlQuoted(name) + ".");
    if (!ReadAttribute()) return false;
  }
}

bool Reader::OpenElement(std::string_view name) {
  open_[depth_++] = name;
  return CheckAttributesDiffer();
}

bool Reader::ReadAttribute() {
  std::string_view name;
  if (!ReadName(name)) return false;
  attributes_.push_back(name);
  SkipSpace();
  if (!Take("="))
    return FailHere(XmlFault::kAttribute, "The attribute " + XmlQuoted(name) + " has no \"=\".");
  SkipSpace();
  std::string_view value;
  return ReadValue(value);
}

bool Reader::CheckAttributesDiffer() {
  if (attributes_.size() < 2) return true;
  std::ranges::sort(attributes_);
  const auto twice = std::ranges::adjacent_find(attributes_);
  if (twice == attributes_.end()) return true;
  const auto later = std::max(twice->data(), std::next(twice)->data());
  return Fail(XmlFault::kDuplicateAttribute, "The attribute " + XmlQuoted(*twice) + " is given twice.",
              static_cast<std::size_t>(later - text().data()));
}

bool Reader::ReadEndTag() {
  const auto start = at() - 2;
  std::string_view name;
  if (!ReadName(name)) return false;
  if (depth_ == 0)
    return Fail(XmlFault::kTagMismatch, "The end tag " + XmlQuoted(name) + " closes nothing.", start);
  if (open_[depth_ - 1] != name) {
    return Fail(
        XmlFault::kTagMismatch,
        "The end tag " + XmlQuoted(name) + " stands where " + XmlQuoted(open_[depth_ - 1]) + " has to end.",
        start);
  }
  SkipSpace();
  if (!Take(">"))
    return FailHere(XmlFault::kMarkup, "\">\" is missing in the end tag " + XmlQuoted(name) + ".");
  --depth_;
  return true;
}

bool Reader::ReadComment() {
  return ReadPast("--", "a comment") &&
         (Take(">") || FailHere(XmlFault::kMarkup, "\"--\" stands in a comment."));
}

bool Reader::ReadSection() {
  if (depth_ > 0) return ReadPast("]]>", "a CDATA section");
  return Fail(XmlFault::kOutsideRoot, "There is a CDATA section outside the root element.", at());
}

bool Reader::ReadInstruction() {
  const auto start = at() - 2;
  std::string_view target;
  if (!ReadName(target)) return false;
  if (EqualsIgnoringCase(target, "xml")) {
    return Fail(XmlFault::kDeclaration, "An XML declaration stands elsewhere than at the start.", start);
  }
  if (Take("?>")) return true;
  if (!SkipSpace()) return FailHere(XmlFault::kMarkup, "A blank is missing in a processing instruction.");
  return ReadPast("?>", "a processing instruction");
}

bool Reader::ReadPast(std::string_view end, std::string_view thing) {
  const auto found = text().find(end, at());
  if (found == std::string_view::npos) {
    const auto reason = "The document ends in the middle of " + std::string(thing) + ".";
    return Fail(XmlFault::kUnfinished, reason, text().size());
  }
  MoveTo(found + end.size());
  return true;
}

}  // namespace

std::optional<XmlParseError> FindXmlFault(std::string_view text) {
  Reader reader(text);
  if (reader.ReadDocument()) return std::nullopt;
  return reader.Error();
}

}  // namespace platform
