#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What a zip file says of itself (PKWARE's APPNOTE 6.3.9). Decision [own-zip].
namespace wordprocessor {

/// The ways of packing that a document may use (ECMA-376, part 2, annex B).
enum class ZipMethod : std::uint16_t { kStored = 0, kDeflated = 8 };

/// One entry. Its views point into the bytes of the zip file.
struct ZipEntry {
  std::string_view name;   ///< as it stands in the file: UTF-8, or of an older code page
  bool utf8_name = false;  ///< said to be UTF-8
  ZipMethod method = ZipMethod::kStored;
  std::uint32_t time = 0;  ///< date and time as DOS tells them
  std::uint32_t checksum = 0;
  std::uint64_t size = 0;  ///< unpacked
  std::string_view packed;
};

/// The entries in the order of the directory, each compared with what stands before and behind its bytes:
/// name, method, sizes and checksum agree wherever they are told, and no byte belongs to two entries. Times,
/// extra fields and unused bytes may be as they like: programs differ there every day. The packed bytes
/// themselves are not looked at.
///
/// `file_name` is what messages call the file. Throws Failure kDamaged, naming the entry and what differs,
/// and kRefused for more than `most` entries or a password.
std::vector<ZipEntry> ReadZipDirectory(std::string_view bytes, const std::string& file_name,
                                       std::uint64_t most);

/// An entry's name for a message: what is no text in it is shown as "?".
std::string ShownZipName(std::string_view name);

/// A Failure kDamaged about an entry: `"file" is damaged at "name": what differs. ...`
[[noreturn]] void FailAtZipEntry(const std::string& file_name, std::string_view name,
                                 const std::string& what);

}  // namespace wordprocessor
