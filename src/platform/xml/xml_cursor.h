#pragma once

#include <string>
#include <string_view>

#include "platform/xml/xml.h"
#include "platform/xml/xml_strictness.h"

namespace platform {

/// `text` in quotes for a message; the start of it where it is long.
std::string XmlQuoted(std::string_view text);

/// A place in a document that is being read, and the fault met there.
///
/// The functions that read a thing leave it behind them, or note a fault and return false. The text holds
/// only characters that XML allows.
class XmlCursor {
 public:
  explicit XmlCursor(std::string_view text) : text_(text) {}

  std::string_view text() const { return text_; }
  /// The place, in bytes from the start of the text.
  std::size_t at() const { return at_; }
  void MoveTo(std::size_t at) { at_ = at; }

  bool AtEnd() const { return at_ >= text_.size(); }
  bool LooksAt(std::string_view what) const { return text_.substr(at_).starts_with(what); }
  /// Returns whether `what` stood here.
  bool Take(std::string_view what) {
    if (!LooksAt(what)) return false;
    at_ += what.size();
    return true;
  }
  /// Returns whether there was any.
  bool SkipSpace();

  bool ReadName(std::string_view& name);
  /// A value in either kind of quotes, as it stands between them.
  bool ReadValue(std::string_view& value);
  /// From the "&" to the ";".
  bool ReadReference();

  /// Notes a fault at a place, and returns false.
  bool Fail(XmlFault fault, std::string reason, std::size_t at);
  /// The same at this place: something else stands here than what has to, or nothing does.
  bool FailHere(XmlFault fault, std::string reason);
  /// The fault noted.
  XmlParseError Error() const;

 private:
  bool ReadCharacterReference();

  const std::string_view text_;
  std::size_t at_ = 0;
  XmlFault fault_ = XmlFault::kParser;
  std::string reason_;
  std::size_t fault_at_ = 0;
};

}  // namespace platform
