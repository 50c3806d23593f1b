#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// The records of a zip file (PKWARE's APPNOTE 6.3.9), for those who read and write them.
namespace wordprocessor {

inline constexpr std::string_view kZipLocal = "PK\x03\x04";      // 4.3.7: in front of an entry's bytes
inline constexpr std::string_view kZipBehind = "PK\x07\x08";     // 4.3.9: behind them
inline constexpr std::string_view kZipCentral = "PK\x01\x02";    // 4.3.12: the directory's entry
inline constexpr std::string_view kZipSignature = "PK\x05\x05";  // 4.3.13: a signature of the directory
inline constexpr std::string_view kZipLongEnd = "PK\x06\x06";    // 4.3.14
inline constexpr std::string_view kZipLocator = "PK\x06\x07";    // 4.3.15: where the long end stands
inline constexpr std::string_view kZipEnd = "PK\x05\x06";        // 4.3.16

// Without what varies in length.
inline constexpr std::uint64_t kZipLocalSize = 30;
inline constexpr std::uint64_t kZipCentralSize = 46;
inline constexpr std::uint64_t kZipLongEndSize = 56;
inline constexpr std::uint64_t kZipLocatorSize = 20;
inline constexpr std::uint64_t kZipEndSize = 22;

// 4.4.4: flags. Any kind of encryption, of the bytes or of the directory.
inline constexpr unsigned kZipProtected = 1U << 0 | 1U << 6 | 1U << 13;
inline constexpr unsigned kZipSizesBehind = 1U << 3;
inline constexpr unsigned kZipUtf8 = 1U << 11;

// A number that stands somewhere else because it is longer.
inline constexpr std::uint64_t kZipMore16 = 0xFFFF;
inline constexpr std::uint64_t kZipMore32 = 0xFFFF'FFFF;
inline constexpr std::uint16_t kZipLongNumbers = 1;  // 4.5.3: the extra field where it does

/// Bytes read as little-endian numbers. Whoever reads a number asks Has first.
class ZipBytes {
 public:
  explicit ZipBytes(std::string_view bytes) : bytes_(bytes) {}

  std::uint64_t size() const { return bytes_.size(); }
  bool Has(std::uint64_t at, std::uint64_t size) const {
    return at <= bytes_.size() && size <= bytes_.size() - at;
  }
  bool StartsWith(std::uint64_t at, std::string_view signature) const {
    return Has(at, signature.size()) && bytes_.substr(at, signature.size()) == signature;
  }
  /// Where `signature` stands for the last time at or before `at`.
  std::optional<std::uint64_t> Last(std::string_view signature, std::uint64_t at) const {
    const auto found = bytes_.rfind(signature, at);
    return found == bytes_.npos ? std::nullopt : std::optional<std::uint64_t>(found);
  }
  std::string_view Text(std::uint64_t at, std::uint64_t size) const { return bytes_.substr(at, size); }
  std::uint16_t U16(std::uint64_t at) const { return static_cast<std::uint16_t>(Number(at, 2)); }
  std::uint32_t U32(std::uint64_t at) const { return static_cast<std::uint32_t>(Number(at, 4)); }
  std::uint64_t U64(std::uint64_t at) const { return Number(at, 8); }

 private:
  std::uint64_t Number(std::uint64_t at, unsigned bytes) const {
    std::uint64_t number = 0;
    for (unsigned i = 0; i < bytes; ++i) {
      number |= std::uint64_t{static_cast<unsigned char>(bytes_[at + i])} << (8 * i);
    }
    return number;
  }

  std::string_view bytes_;
};

/// The content of the extra field `id`; empty where there is none. A field that is cut off is none.
inline std::string_view ZipExtraField(std::string_view extra, std::uint16_t id) {
  const ZipBytes fields(extra);
  for (std::uint64_t at = 0; fields.Has(at, 4);) {
    const std::uint64_t size = fields.U16(at + 2);
    if (!fields.Has(at + 4, size)) break;
    if (fields.U16(at) == id) return fields.Text(at + 4, size);
    at += 4 + size;
  }
  return {};
}

}  // namespace wordprocessor
