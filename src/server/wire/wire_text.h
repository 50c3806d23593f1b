#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// A text made of texts, each as its length in bytes, a colon, its bytes, a comma ("5:hello,"). Whatever a
/// text holds, nothing in it can be taken for structure, and a text that was cut off is noticed.
namespace server {

class WireWriter {
 public:
  /// Throws Failure kRefused for a text that is not UTF-8.
  void Text(std::string_view text);
  void Number(std::int64_t number);
  std::string Take() && { return std::move(written_); }

 private:
  std::string written_;
};

/// Reads what WireWriter wrote. Everything throws Failure kDamaged naming the place in bytes.
class WireReader {
 public:
  explicit WireReader(std::string_view written) : written_(written) {}

  std::string_view Text();
  std::int64_t Number();
  /// A number of things that follow, which the rest of the text could hold.
  std::size_t Count();
  /// Fails where something follows.
  void End() const;

 private:
  [[noreturn]] void Fail(std::string_view what) const;

  std::string_view written_;
  std::size_t position_ = 0;
};

}  // namespace server
