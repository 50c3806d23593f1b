#include "platform/xml_strictness.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "platform/text.h"
#include "platform/xml_characters.h"

namespace platform {
namespace {

constexpr ByteSet kTextStops("<&>");
constexpr ByteSet kSingleQuotedStops("'<&");
constexpr ByteSet kDoubleQuotedStops("\"<&");
constexpr auto kEntities = std::to_array<std::string_view>({"amp", "lt", "gt", "apos", "quot"});
constexpr auto kDeclarationParts = std::to_array<std::string_view>({"version", "encoding", "standalone"});

std::string Quoted(std::string_view text) {
  constexpr std::size_t kShown = 40;
  const auto start = FirstCharacters(text, kShown);
  return "\"" + std::string(start) + (start.size() < text.size() ? "...\"" : "\"");
}

/// Line and column (in characters) of the byte `at`; lines end as XML 1.0, 2.11, has it.
void Locate(std::string_view text, std::size_t at, XmlParseError& error) {
  std::size_t line_start = 0;
  error.line = 1;
  for (std::size_t i = 0; i < at; ++i) {
    const bool ends_line =
        text[i] == '\n' || (text[i] == '\r' && (i + 1 >= text.size() || text[i + 1] != '\n'));
    if (!ends_line) continue;
    ++error.line;
    line_start = i + 1;
  }
  error.column = CharacterCount(text.substr(line_start, at - line_start)) + 1;
}

/// Reads one document from its start to its end. The functions that read a thing return false once they have
/// noted a fault; what they start at is behind them.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  bool ReadDocument();
  /// The fault noted.
  XmlParseError Error() const;

 private:
  bool ReadDeclaration();
  bool ReadDeclarationPart(std::size_t& next_part);
  bool CheckDeclarationPart(std::size_t part, std::string_view value);
  bool ReadMarkup();
  bool ReadText();
  bool ReadStartTag();
  bool ReadAttribute();
  bool ReadAttributeValue();
  bool CheckAttributesDiffer();
  bool ReadEndTag();
  bool ReadComment();
  bool ReadSection();
  bool ReadInstruction();
  bool ReadReference();
  bool ReadCharacterReference();
  bool ReadName(std::string_view& name);
  bool OpenElement(std::string_view name);

  bool AtEnd() const { return at_ >= text_.size(); }
  bool LooksAt(std::string_view what) const { return text_.substr(at_).starts_with(what); }
  bool Take(std::string_view what) {
    if (!LooksAt(what)) return false;
    at_ += what.size();
    return true;
  }
  /// Returns whether there was any.
  bool SkipSpace() {
    const auto start = at_;
    while (!AtEnd() && kXmlSpace.find(text_[at_]) != std::string_view::npos) ++at_;
    return at_ > start;
  }
  bool Fail(XmlFault fault, std::string reason, std::size_t at) {
    fault_ = fault;
    reason_ = std::move(reason);
    fault_at_ = at;
    return false;
  }
  /// Something else stands here than what has to; or nothing does.
  bool FailHere(XmlFault fault, std::string reason) {
    if (AtEnd()) return Fail(XmlFault::kUnfinished, "The document ends in the middle of a tag.", at_);
    return Fail(fault, std::move(reason), at_);
  }

  const std::string_view text_;
  std::size_t at_ = 0;
  bool root_seen_ = false;
  std::size_t depth_ = 0;
  std::array<std::string_view, kDeepestElement> open_;  // names; the first depth_ of them
  std::vector<std::string_view> attributes_;            // names in the tag being read

  XmlFault fault_ = XmlFault::kParser;
  std::string reason_;
  std::size_t fault_at_ = 0;
};

bool Reader::ReadDocument() {
  const auto good = XmlCharactersLength(text_);
  if (good < text_.size()) {
    const bool valid = IsValidUtf8(text_.substr(good, 1)) || ValidUtf8Length(text_.substr(good)) > 0;
    return Fail(
        XmlFault::kCharacter,
        valid ? "A character stands here that XML does not allow." : "The text is no valid UTF-8 here.",
        good);
  }
  Take("\xEF\xBB\xBF");
  if (!ReadDeclaration()) return false;
  while (!AtEnd()) {
    if (text_[at_] == '<' ? !ReadMarkup() : !ReadText()) return false;
  }
  if (depth_ > 0) {
    return Fail(XmlFault::kUnfinished, "The element " + Quoted(open_[depth_ - 1]) + " has no end tag.", at_);
  }
  return root_seen_ || Fail(XmlFault::kNoRoot, "The document has no element.", at_);
}

XmlParseError Reader::Error() const {
  XmlParseError error;
  error.code = static_cast<int>(fault_);
  error.reason = reason_;
  Locate(text_, fault_at_, error);
  return error;
}

bool Reader::ReadDeclaration() {
  constexpr std::string_view kStart = "<?xml";
  const auto after = text_.substr(std::min(text_.size(), at_ + kStart.size()), 1);
  if (!LooksAt(kStart) || after.empty() || kXmlSpace.find(after.front()) == std::string_view::npos)
    return true;
  at_ += kStart.size();
  std::size_t next_part = 0;
  for (;;) {
    const bool space = SkipSpace();
    if (next_part > 0 && Take("?>")) return true;
    if (!space) return FailHere(XmlFault::kDeclaration, "A blank is missing in the XML declaration.");
    if (!ReadDeclarationPart(next_part)) return false;
  }
}

bool Reader::ReadDeclarationPart(std::size_t& next_part) {
  const auto start = at_;
  std::string_view name;
  if (!ReadName(name)) return false;
  const auto found = std::ranges::find(kDeclarationParts, name);
  const auto part = static_cast<std::size_t>(found - kDeclarationParts.begin());
  // The version comes first and is the only one that must be there.
  if (part < next_part || found == kDeclarationParts.end() || (next_part == 0 && part != 0)) {
    return Fail(XmlFault::kDeclaration, Quoted(name) + " must not stand here in the XML declaration.", start);
  }
  next_part = part + 1;
  SkipSpace();
  if (!Take("=")) return FailHere(XmlFault::kDeclaration, "\"=\" is missing in the XML declaration.");
  SkipSpace();
  const auto value_start = at_ + 1;
  if (!ReadAttributeValue()) return false;
  return CheckDeclarationPart(part, text_.substr(value_start, at_ - 1 - value_start));
}

bool Reader::CheckDeclarationPart(std::size_t part, std::string_view value) {
  const auto at = at_ - 1 - value.size();
  switch (part) {
    case 0:
      if (value.size() > 2 && value.starts_with("1.") &&
          value.find_first_not_of("0123456789", 2) == std::string_view::npos) {
        return true;
      }
      return Fail(XmlFault::kDeclaration,
                  "The document is of the XML version " + Quoted(value) + ", not 1.0.", at);
    case 1:
      if (EqualsIgnoringCase(value, "utf-8")) return true;
      return Fail(XmlFault::kEncoding,
                  "The document declares the encoding " + Quoted(value) + ". Write it in UTF-8.", at);
    default:
      if (value == "yes" || value == "no") return true;
      return Fail(XmlFault::kDeclaration, "\"standalone\" is " + Quoted(value) + ", not \"yes\" or \"no\".",
                  at);
  }
}

bool Reader::ReadMarkup() {
  if (Take("</")) return ReadEndTag();
  if (Take("<!--")) return ReadComment();
  if (Take("<![CDATA[")) return ReadSection();
  if (Take("<?")) return ReadInstruction();
  if (LooksAt("<!DOCTYPE")) {
    return Fail(XmlFault::kDoctype, "The document has a DOCTYPE, which is not taken. Remove it.", at_);
  }
  if (LooksAt("<!")) return Fail(XmlFault::kMarkup, "\"<!\" starts no comment and no section here.", at_);
  ++at_;
  return ReadStartTag();
}

bool Reader::ReadText() {
  if (depth_ == 0) {
    SkipSpace();
    if (AtEnd() || text_[at_] == '<') return true;
    return Fail(XmlFault::kOutsideRoot, "There is text outside the root element.", at_);
  }
  for (const auto start = at_;; ++at_) {
    at_ = kTextStops.FindIn(text_, at_);
    if (AtEnd() || text_[at_] == '<') return true;
    if (text_[at_] == '&') {
      if (!ReadReference()) return false;
      --at_;
    } else if (at_ >= start + 2 && text_.substr(at_ - 2, 2) == "]]") {
      return Fail(XmlFault::kMarkup, "\"]]>\" stands in a text. Write \"]]&gt;\".", at_ - 2);
    }
  }
}

bool Reader::ReadStartTag() {
  const auto start = at_ - 1;
  std::string_view name;
  if (!ReadName(name)) return false;
  if (depth_ == 0 && root_seen_) {
    return Fail(XmlFault::kOutsideRoot, "The document has a second root element " + Quoted(name) + ".",
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
      return FailHere(XmlFault::kMarkup, "A blank or \">\" is missing in the tag " + Quoted(name) + ".");
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
  if (!Take("=")) return FailHere(XmlFault::kAttribute, "The attribute " + Quoted(name) + " has no \"=\".");
  SkipSpace();
  return ReadAttributeValue();
}

bool Reader::ReadAttributeValue() {
  const char quote = AtEnd() ? '\0' : text_[at_];
  if (quote != '"' && quote != '\'') return FailHere(XmlFault::kAttribute, "A value in quotes is missing.");
  const auto& stops = quote == '"' ? kDoubleQuotedStops : kSingleQuotedStops;
  for (++at_;;) {
    at_ = stops.FindIn(text_, at_);
    if (AtEnd()) return Fail(XmlFault::kUnfinished, "The document ends in the middle of a value.", at_);
    if (Take({&quote, 1})) return true;
    if (text_[at_] == '<') return FailHere(XmlFault::kAttribute, "\"<\" stands in a value. Write \"&lt;\".");
    if (!ReadReference()) return false;
  }
}

bool Reader::CheckAttributesDiffer() {
  if (attributes_.size() < 2) return true;
  std::ranges::sort(attributes_);
  const auto twice = std::ranges::adjacent_find(attributes_);
  if (twice == attributes_.end()) return true;
  const auto later = std::max(twice->data(), std::next(twice)->data());
  return Fail(XmlFault::kDuplicateAttribute, "The attribute " + Quoted(*twice) + " is given twice.",
              static_cast<std::size_t>(later - text_.data()));
}

bool Reader::ReadEndTag() {
  const auto start = at_ - 2;
  std::string_view name;
  if (!ReadName(name)) return false;
  if (depth_ == 0)
    return Fail(XmlFault::kTagMismatch, "The end tag " + Quoted(name) + " closes nothing.", start);
  if (open_[depth_ - 1] != name) {
    return Fail(XmlFault::kTagMismatch,
                "The end tag " + Quoted(name) + " stands where " + Quoted(open_[depth_ - 1]) + " has to end.",
                start);
  }
  SkipSpace();
  if (!Take(">")) return FailHere(XmlFault::kMarkup, "\">\" is missing in the end tag " + Quoted(name) + ".");
  --depth_;
  return true;
}

bool Reader::ReadComment() {
  const auto end = text_.find("--", at_);
  if (end == std::string_view::npos) {
    return Fail(XmlFault::kUnfinished, "The document ends in the middle of a comment.", text_.size());
  }
  at_ = end + 2;
  return Take(">") || FailHere(XmlFault::kMarkup, "\"--\" stands in a comment.");
}

bool Reader::ReadSection() {
  if (depth_ == 0) {
    return Fail(XmlFault::kOutsideRoot, "There is a CDATA section outside the root element.", at_);
  }
  const auto end = text_.find("]]>", at_);
  if (end == std::string_view::npos) {
    return Fail(XmlFault::kUnfinished, "The document ends in the middle of a CDATA section.", text_.size());
  }
  at_ = end + 3;
  return true;
}

bool Reader::ReadInstruction() {
  const auto start = at_ - 2;
  std::string_view target;
  if (!ReadName(target)) return false;
  if (EqualsIgnoringCase(target, "xml")) {
    return Fail(XmlFault::kDeclaration, "An XML declaration stands elsewhere than at the start.", start);
  }
  if (Take("?>")) return true;
  if (!SkipSpace()) return FailHere(XmlFault::kMarkup, "A blank is missing in a processing instruction.");
  const auto end = text_.find("?>", at_);
  if (end == std::string_view::npos) {
    return Fail(XmlFault::kUnfinished, "The document ends in the middle of an instruction.", text_.size());
  }
  at_ = end + 2;
  return true;
}

bool Reader::ReadReference() {
  const auto start = at_++;
  if (Take("#")) return ReadCharacterReference();
  const auto name = text_.substr(at_, XmlNameLength(text_.substr(at_)));
  at_ += name.size();
  if (name.empty() || !Take(";")) {
    return Fail(XmlFault::kReference, "\"&\" starts no reference here. Write \"&amp;\".", start);
  }
  if (std::ranges::find(kEntities, name) != kEntities.end()) return true;
  return Fail(XmlFault::kReference, "The entity " + Quoted(name) + " is not declared.", start);
}

bool Reader::ReadCharacterReference() {
  const auto start = at_ - 2;
  const char32_t base = Take("x") ? 16 : 10;
  const auto digits = text_.substr(
      at_, text_.find_first_not_of(base == 16 ? "0123456789abcdefABCDEF" : "0123456789", at_) - at_);
  at_ += digits.size();
  char32_t character = 0;
  for (const char digit : digits) {
    const auto value = digit <= '9' ? digit - '0' : (digit | 0x20) - 'a' + 10;
    character = std::min<char32_t>(character * base + static_cast<char32_t>(value), 0x11'0000);
  }
  if (digits.empty() || !Take(";")) {
    return Fail(XmlFault::kReference, "A character reference needs digits and \";\".", start);
  }
  if (IsXmlCharacter(character)) return true;
  return Fail(XmlFault::kReference, "A character is referred to that XML does not allow.", start);
}

bool Reader::ReadName(std::string_view& name) {
  name = text_.substr(at_, XmlNameLength(text_.substr(at_)));
  if (name.empty())
    return FailHere(XmlFault::kName, "A name has to stand here. Write a plain \"<\" as \"&lt;\".");
  at_ += name.size();
  return true;
}

}  // namespace

std::optional<XmlParseError> FindXmlFault(std::string_view text) {
  Reader reader(text);
  if (reader.ReadDocument()) return std::nullopt;
  return reader.Error();
}

}  // namespace platform
