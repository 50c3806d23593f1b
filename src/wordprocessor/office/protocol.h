#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// What this program and its layout process say to each other over two pipes: one line each, fields parted by
/// tabs. Control characters and "%" inside a field are written "%XX". A line that does not read as one of
/// these is nonsense, and who sends nonsense is not listened to any further.
///
///     program   layout <id> <document> <pdf>
///     process   ready                              the office is up; sent once, before anything else
///               broken <why>                       no office: the process ends after it
///               done <id> <resident KiB>
///               failed <id> <resident KiB> <why>   this document only; the process goes on
///               spent                              the last document has left something behind that others must
///                                                  not meet: the process ends, orders not answered go elsewhere
namespace wordprocessor {

/// Lay out one document. Orders are answered in the order they were given.
struct LayoutOrder {
  std::uint64_t id = 0;
  std::string document;  ///< absolute path
  std::string pdf;       ///< absolute path in the same folder

  bool operator==(const LayoutOrder&) const = default;
};

std::string LineOf(const LayoutOrder& order);
std::optional<LayoutOrder> ParseOrder(std::string_view line);

struct LayoutReport {
  enum class Kind { kReady, kBroken, kDone, kFailed, kSpent };

  Kind kind = Kind::kReady;
  std::uint64_t id = 0;            ///< of the order, with kDone and kFailed
  std::uint64_t resident_kib = 0;  ///< memory of the process in RAM, with kDone and kFailed
  std::string why = {};            ///< with kBroken and kFailed

  bool operator==(const LayoutReport&) const = default;
};

std::string LineOf(const LayoutReport& report);
std::optional<LayoutReport> ParseReport(std::string_view line);

/// Cuts what arrives on a pipe into lines.
class LineReader {
 public:
  /// No line of ours is longer; who sends a longer one sends nonsense.
  static constexpr std::size_t kLongestLine = std::size_t{64} * 1024;

  explicit LineReader(int descriptor) : descriptor_(descriptor) {}

  /// Reads once (blocking where the descriptor blocks). False at the end of the pipe, on an error, and when a
  /// line grows too long.
  bool Fill();
  /// The next whole line without its end, or nothing until Fill has brought one.
  std::optional<std::string> TakeLine();

 private:
  int descriptor_;
  std::string arrived_;
};

/// Writes all of `text`; false when nobody reads it any more.
bool WriteAll(int descriptor, std::string_view text);

}  // namespace wordprocessor
