#include "wordprocessor/files/zip_directory.h"

#include <algorithm>
#include <optional>

#include "platform/failure.h"
#include "platform/text.h"
#include "wordprocessor/files/zip_format.h"

namespace wordprocessor {
namespace {

using platform::Failure;

/// Where the directory stands and how many entries it lists.
struct ZipDirectoryPlace {
  std::uint64_t offset = 0;
  std::uint64_t size = 0;
  std::uint64_t count = 0;
  bool is_one_of_several = false;  ///< of disks
};

/// What a header tells of an entry's bytes; the directory and the entry itself each have one.
struct ZipSizes {
  std::uint32_t checksum = 0;
  std::uint64_t packed = 0;
  std::uint64_t size = 0;

  bool operator==(const ZipSizes&) const = default;
};

/// The bytes that belong to one entry, or to the directory.
struct ZipRange {
  std::uint64_t begin = 0;
  std::uint64_t end = 0;
  std::string_view name;
};

class ZipDirectoryReader {
 public:
  ZipDirectoryReader(std::string_view bytes, const std::string& file_name)
      : zip_(bytes), file_name_(file_name) {}

  std::vector<ZipEntry> Read(std::uint64_t most) {
    const auto place = FindDirectory();
    if (place.is_one_of_several) FailAtDirectory("is one of several disks");
    if (place.count > most) {
      throw Failure(Failure::Kind::kRefused, "\"" + file_name_ + "\" holds more than " +
                                                 std::to_string(most) +
                                                 " parts. Save it again without extras.");
    }
    ranges_.push_back({place.offset, place.offset + place.size, "the directory"});
    auto at = place.offset;
    const auto end = place.offset + place.size;
    std::vector<ZipEntry> entries;
    for (std::uint64_t i = 0; i < place.count; ++i) entries.push_back(ReadEntry(at, end));
    if (at != end && !zip_.StartsWith(at, kZipSignature)) FailAtDirectory("lists more entries than it says");
    CheckOverlap();
    return entries;
  }

 private:
  [[noreturn]] void Fail(std::string_view name, const std::string& what) const {
    FailAtZipEntry(file_name_, name, what);
  }

  [[noreturn]] void FailAtDirectory(const std::string& what) const {
    throw Failure(Failure::Kind::kDamaged, "\"" + file_name_ + "\" is damaged: its directory " + what +
                                               ". Copy it again from where it came from.");
  }

  [[noreturn]] void FailProtected() const {
    throw Failure(Failure::Kind::kRefused,
                  "\"" + file_name_ +
                      "\" is protected with a password. Open it in the word processor "
                      "and save it without one.");
  }

  /// The end whose comment ends the file; where there is none, the last one in it. What stands behind that is
  /// passed over: document stores and mail programs fill files up.
  ZipDirectoryPlace FindDirectory() const {
    std::optional<ZipDirectoryPlace> last;
    for (auto at = zip_.Last(kZipEnd, zip_.size()); at;
         at = *at == 0 ? std::nullopt : zip_.Last(kZipEnd, *at - 1)) {
      if (!zip_.Has(*at, kZipEndSize)) continue;
      const auto end = *at + kZipEndSize + zip_.U16(*at + 20);
      const auto place = PlaceToldAt(*at);
      if (end > zip_.size() || !IsDirectory(place, *at)) continue;
      if (end == zip_.size()) return place;
      if (!last) last = place;
    }
    if (last) return *last;
    throw Failure(Failure::Kind::kDamaged, "\"" + file_name_ +
                                               "\" is damaged or incomplete: the directory that ends it is "
                                               "missing. Copy it again from where it came from.");
  }

  bool IsDirectory(const ZipDirectoryPlace& place, std::uint64_t end_at) const {
    if (place.offset > end_at || place.size > end_at - place.offset) return false;
    return place.size == 0 ? place.offset == end_at : zip_.StartsWith(place.offset, kZipCentral);
  }

  ZipDirectoryPlace PlaceToldAt(std::uint64_t at) const {
    ZipDirectoryPlace place = {zip_.U32(at + 16), zip_.U32(at + 12), zip_.U16(at + 10), IsOneOfSeveral(at)};
    const bool is_short = place.offset != kZipMore32 && place.size != kZipMore32 && place.count != kZipMore16;
    if (is_short || at < kZipLocatorSize || !zip_.StartsWith(at - kZipLocatorSize, kZipLocator)) return place;
    const auto long_end = zip_.U64(at - kZipLocatorSize + 8);
    if (!zip_.Has(long_end, kZipLongEndSize) || !zip_.StartsWith(long_end, kZipLongEnd)) return place;
    place.offset = zip_.U64(long_end + 48);
    place.size = zip_.U64(long_end + 40);
    place.count = zip_.U64(long_end + 32);
    return place;
  }

  bool IsOneOfSeveral(std::uint64_t at) const {
    const auto is_other = [](std::uint16_t disk) { return disk != 0 && disk != kZipMore16; };
    return is_other(zip_.U16(at + 4)) || is_other(zip_.U16(at + 6));
  }

  /// Reads the directory's entry at `at` and moves `at` behind it.
  ZipEntry ReadEntry(std::uint64_t& at, std::uint64_t end) {
    if (end - at < kZipCentralSize || !zip_.StartsWith(at, kZipCentral)) {
      FailAtDirectory("lists fewer entries than it says");
    }
    const std::uint64_t name_size = zip_.U16(at + 28);
    const std::uint64_t extra_size = zip_.U16(at + 30);
    const auto whole = kZipCentralSize + name_size + extra_size + zip_.U16(at + 32);
    if (end - at < whole) FailAtDirectory("breaks off");
    ZipEntry entry;
    entry.name = zip_.Text(at + kZipCentralSize, name_size);
    entry.utf8_name = (zip_.U16(at + 8) & kZipUtf8) != 0;
    if ((zip_.U16(at + 8) & kZipProtected) != 0) FailProtected();
    entry.method = MethodOf(entry.name, zip_.U16(at + 10));
    entry.time = zip_.U32(at + 12);
    ZipSizes sizes = {zip_.U32(at + 16), zip_.U32(at + 20), zip_.U32(at + 24)};
    std::uint64_t offset = zip_.U32(at + 42);
    const auto extra = zip_.Text(at + kZipCentralSize + name_size, extra_size);
    ReadLong(extra, {&sizes.size, &sizes.packed, &offset});
    entry.checksum = sizes.checksum;
    entry.size = sizes.size;
    ReadBytes(entry, sizes, offset);
    at += whole;
    return entry;
  }

  ZipMethod MethodOf(std::string_view name, std::uint16_t method) const {
    if (method == static_cast<std::uint16_t>(ZipMethod::kStored)) return ZipMethod::kStored;
    if (method == static_cast<std::uint16_t>(ZipMethod::kDeflated)) return ZipMethod::kDeflated;
    throw Failure(Failure::Kind::kDamaged,
                  "\"" + file_name_ + "\" is packed at \"" + ShownZipName(name) + "\" in a way of packing (" +
                      std::to_string(method) +
                      ") that no document has. Open it in the word processor and save it again.");
  }

  /// The numbers that did not fit into 32 bits stand in an extra field, in this order, those that fit left
  /// out.
  void ReadLong(std::string_view extra, std::initializer_list<std::uint64_t*> numbers) const {
    ZipBytes field(ZipExtraField(extra, kZipLongNumbers));
    std::uint64_t at = 0;
    for (auto* number : numbers) {
      if (*number != kZipMore32 || !field.Has(at, 8)) continue;
      *number = field.U64(at);
      at += 8;
    }
  }

  /// Finds the entry's packed bytes and compares what stands around them.
  void ReadBytes(ZipEntry& entry, const ZipSizes& sizes, std::uint64_t offset) {
    if (!zip_.Has(offset, kZipLocalSize)) Fail(entry.name, "its bytes lie outside of the file");
    if (!zip_.StartsWith(offset, kZipLocal)) Fail(entry.name, "it does not begin where the directory says");
    const std::uint64_t name_size = zip_.U16(offset + 26);
    const std::uint64_t extra_size = zip_.U16(offset + 28);
    const auto begin = offset + kZipLocalSize + name_size + extra_size;
    if (!zip_.Has(begin, sizes.packed)) Fail(entry.name, "its bytes lie outside of the file");
    const auto name = zip_.Text(offset + kZipLocalSize, name_size);
    if (name != entry.name)
      Fail(entry.name, "in front of its bytes it is called \"" + ShownZipName(name) + "\"");
    const auto flags = zip_.U16(offset + 6);
    if ((flags & kZipProtected) != 0) FailProtected();
    if (zip_.U16(offset + 8) != static_cast<std::uint16_t>(entry.method)) {
      Fail(entry.name, "the directory tells another way of packing than stands in front of its bytes");
    }
    entry.packed = zip_.Text(begin, sizes.packed);
    auto end = begin + sizes.packed;
    const auto extra = zip_.Text(offset + kZipLocalSize + name_size, extra_size);
    if (!IsToldInFront(entry, sizes, offset, extra)) end += SizeOfWhatIsToldBehind(entry, sizes, flags, end);
    ranges_.push_back({offset, end, entry.name});
  }

  /// Whether the numbers in front of the bytes are the directory's. Zeros tell nothing.
  bool IsToldInFront(const ZipEntry& entry, const ZipSizes& sizes, std::uint64_t offset,
                     std::string_view extra) const {
    ZipSizes told = {zip_.U32(offset + 14), zip_.U32(offset + 18), zip_.U32(offset + 22)};
    ReadLong(extra, {&told.size, &told.packed});
    if (told == sizes) return true;
    const bool streamed = (zip_.U16(offset + 6) & kZipSizesBehind) != 0;
    const auto differs = [streamed](std::uint64_t number, std::uint64_t in_directory) {
      return number != in_directory && number != 0 && !(streamed && number == kZipMore32);
    };
    const auto in_front = " in front of its bytes is not that of the directory";
    if (differs(told.checksum, sizes.checksum)) Fail(entry.name, std::string("the checksum") + in_front);
    if (differs(told.size, sizes.size) || differs(told.packed, sizes.packed)) {
      Fail(entry.name, std::string("the size") + in_front);
    }
    return false;
  }

  /// Programs that do not know the sizes beforehand tell them behind the bytes: with a signature or without,
  /// in 32 or 64 bits. Returns how many bytes that takes.
  std::uint64_t SizeOfWhatIsToldBehind(const ZipEntry& entry, const ZipSizes& sizes, std::uint16_t flags,
                                       std::uint64_t at) const {
    if ((flags & kZipSizesBehind) == 0) return 0;
    for (const std::uint64_t signature : {4U, 0U}) {
      if (signature != 0 && !zip_.StartsWith(at, kZipBehind)) continue;
      for (const std::uint64_t width : {4U, 8U}) {
        const auto size = signature + 4 + 2 * width;
        if (!zip_.Has(at, size)) continue;
        const auto packed_at = at + signature + 4;
        const auto number = [&](std::uint64_t place) {
          return width == 4 ? zip_.U32(place) : zip_.U64(place);
        };
        if (zip_.U32(at + signature) == sizes.checksum && number(packed_at) == sizes.packed &&
            number(packed_at + width) == sizes.size) {
          return size;
        }
      }
    }
    Fail(entry.name, "checksum or sizes behind its bytes are not those of the directory");
  }

  void CheckOverlap() {
    std::ranges::sort(ranges_, {}, &ZipRange::begin);
    for (std::size_t i = 1; i < ranges_.size(); ++i) {
      if (ranges_[i].begin >= ranges_[i - 1].end) continue;
      Fail(ranges_[i - 1].name, "it shares bytes with \"" + ShownZipName(ranges_[i].name) + "\"");
    }
  }

  const ZipBytes zip_;
  const std::string& file_name_;
  std::vector<ZipRange> ranges_;
};

}  // namespace

std::vector<ZipEntry> ReadZipDirectory(std::string_view bytes, const std::string& file_name,
                                       std::uint64_t most) {
  return ZipDirectoryReader(bytes, file_name).Read(most);
}

std::string ShownZipName(std::string_view name) {
  std::string shown(name);
  const bool is_text = platform::IsValidUtf8(name);
  for (auto& byte : shown) {
    const auto code = static_cast<unsigned char>(byte);
    if (code < 0x20 || code == 0x7F || (code >= 0x80 && !is_text)) byte = '?';
  }
  return shown;
}

void FailAtZipEntry(const std::string& file_name, std::string_view name, const std::string& what) {
  throw Failure(Failure::Kind::kDamaged, "\"" + file_name + "\" is damaged at \"" + ShownZipName(name) +
                                             "\": " + what + ". Copy it again from where it came from.");
}

}  // namespace wordprocessor
