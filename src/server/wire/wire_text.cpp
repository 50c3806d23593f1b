#include "server/wire/wire_text.h"

#include <charconv>

#include "platform/failure.h"
#include "platform/text.h"

namespace server {

using platform::Failure;

void WireWriter::Text(std::string_view text) {
  if (!platform::IsValidUtf8(text)) {
    throw Failure(Failure::Kind::kRefused, "A text of the message is not valid UTF-8 and cannot be sent.");
  }
  written_ += std::to_string(text.size());
  written_ += ':';
  written_ += text;
  written_ += ',';
}

void WireWriter::Number(std::int64_t number) {
  Text(std::to_string(number));
}

std::string_view WireReader::Text() {
  const auto rest = written_.substr(position_);
  std::size_t length = 0;
  const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), length);
  const auto digits = static_cast<std::size_t>(end - rest.data());
  if (error != std::errc() || digits == rest.size() || *end != ':') Fail("no length");
  const auto body = rest.substr(digits + 1);
  if (length >= body.size()) Fail("it ends early");
  if (body[length] != ',') Fail("a text is not as long as it says");
  const auto text = body.substr(0, length);
  if (!platform::IsValidUtf8(text)) Fail("a text is not valid UTF-8");
  position_ += digits + 1 + length + 1;
  return text;
}

std::int64_t WireReader::Number() {
  const auto text = Text();
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) Fail("no number");
  return number;
}

std::size_t WireReader::Count() {
  const auto count = Number();
  // Everything counted takes at least the three bytes of an empty text.
  constexpr std::size_t kSmallest = 3;
  if (count < 0 || static_cast<std::size_t>(count) > (written_.size() - position_) / kSmallest)
    Fail("a wrong count");
  return static_cast<std::size_t>(count);
}

void WireReader::End() const {
  if (position_ != written_.size()) Fail("something follows its end");
}

void WireReader::Fail(std::string_view what) const {
  throw Failure(Failure::Kind::kDamaged, "The message cannot be read: " + std::string(what) + " at byte " +
                                             std::to_string(position_) + ".");
}

}  // namespace server
