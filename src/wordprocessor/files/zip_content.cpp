#include "wordprocessor/files/zip_content.h"

#include <zlib.h>

#include <algorithm>
#include <array>

#include "platform/failure.h"
#include "wordprocessor/files/zip_format.h"

namespace wordprocessor {
namespace {

using platform::Failure;

constexpr std::size_t kZipChunk = 65'536;
constexpr std::uint16_t kVersion = 20;  // 4.4.3: deflate and folders
// zlib's own default is 6. 3 packs the repetitive markup of a letter in half the time and some kilobytes
// larger. Decision [deflate-level].
constexpr int kDeflateLevel = 3;

[[noreturn]] void FailWithoutMemory() {
  throw Failure(Failure::Kind::kUnavailable, "There is not enough memory for the document.");
}

Bytef* In(std::string_view bytes) {
  return reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
}

std::uint32_t ChecksumOf(std::string_view bytes, std::uint32_t before = 0) {
  return static_cast<std::uint32_t>(crc32(before, In(bytes), static_cast<uInt>(bytes.size())));
}

/// Inflates the bytes it is given, and nothing behind their end.
class Inflater {
 public:
  explicit Inflater(std::string_view packed) {
    if (inflateInit2(&stream_, -MAX_WBITS) != Z_OK) FailWithoutMemory();
    stream_.next_in = In(packed);
    stream_.avail_in = static_cast<uInt>(packed.size());
  }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;
  ~Inflater() { inflateEnd(&stream_); }

  /// The next piece, good until the next call; empty at the end and where the bytes make no sense.
  std::string_view Next() {
    if (result_ != Z_OK) return {};
    stream_.next_out = reinterpret_cast<Bytef*>(chunk_.data());
    stream_.avail_out = static_cast<uInt>(chunk_.size());
    result_ = inflate(&stream_, Z_NO_FLUSH);
    if (result_ == Z_MEM_ERROR) FailWithoutMemory();
    return {chunk_.data(), chunk_.size() - stream_.avail_out};
  }
  bool ended_well() const { return result_ == Z_STREAM_END; }
  std::size_t bytes_left() const { return stream_.avail_in; }

 private:
  z_stream stream_ = {};
  int result_ = Z_OK;
  std::array<char, kZipChunk> chunk_;
};

/// Passes the pieces on as long as they are no more than the entry may have.
class EntryTaker {
 public:
  EntryTaker(const ZipEntry& entry, const std::string& file_name,
             const std::function<void(std::string_view)>& take)
      : entry_(entry), file_name_(file_name), take_(take) {}

  void Take(std::string_view piece) {
    size_ += piece.size();
    if (size_ > entry_.size) Fail("it unpacks to more than its size");
    checksum_ = ChecksumOf(piece, checksum_);
    take_(piece);
  }
  void End() const {
    if (size_ != entry_.size) Fail("it unpacks to less than its size");
    if (checksum_ != entry_.checksum) Fail("its content does not fit its checksum");
  }
  [[noreturn]] void Fail(const std::string& what) const { FailAtZipEntry(file_name_, entry_.name, what); }

 private:
  const ZipEntry& entry_;
  const std::string& file_name_;
  const std::function<void(std::string_view)>& take_;
  std::uint64_t size_ = 0;
  std::uint32_t checksum_ = 0;
};

/// `content` deflated; empty where that makes it no smaller.
std::string DeflatedZipContent(std::string_view content) {
  z_stream stream = {};
  if (deflateInit2(&stream, kDeflateLevel, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY) !=
      Z_OK) {
    FailWithoutMemory();
  }
  std::string packed(deflateBound(&stream, static_cast<uLong>(content.size())), '\0');
  stream.next_in = In(content);
  stream.avail_in = static_cast<uInt>(content.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  const int result = deflate(&stream, Z_FINISH);
  packed.resize(result == Z_STREAM_END && stream.total_out < content.size() ? stream.total_out : 0);
  deflateEnd(&stream);
  return packed;
}

void Append16(std::string& bytes, std::uint64_t number) {
  bytes += static_cast<char>(number & 0xFF);
  bytes += static_cast<char>((number >> 8) & 0xFF);
}

void Append32(std::string& bytes, std::uint64_t number) {
  Append16(bytes, number & 0xFFFF);
  Append16(bytes, number >> 16);
}

/// What the directory and the entry tell alike (4.3.7 and 4.3.12).
void AppendCommon(std::string& bytes, const ZipEntry& entry) {
  Append16(bytes, kVersion);
  Append16(bytes, entry.utf8_name ? kZipUtf8 : 0);
  Append16(bytes, static_cast<std::uint16_t>(entry.method));
  Append32(bytes, entry.time);
  Append32(bytes, entry.checksum);
  Append32(bytes, entry.packed.size());
  Append32(bytes, entry.size);
  Append16(bytes, entry.name.size());
  Append16(bytes, 0);  // extra fields
}

}  // namespace

void UnpackZipEntry(const ZipEntry& entry, const std::string& file_name,
                    const std::function<void(std::string_view)>& take) {
  EntryTaker taker(entry, file_name, take);
  if (entry.method == ZipMethod::kStored) {
    taker.Take(entry.packed);
    return taker.End();
  }
  Inflater inflater(entry.packed);
  for (auto piece = inflater.Next(); !piece.empty(); piece = inflater.Next()) taker.Take(piece);
  if (!inflater.ended_well()) taker.Fail("its packed bytes make no sense");
  if (inflater.bytes_left() != 0) taker.Fail("its packed size is more than its packed bytes");
  taker.End();
}

void ZipWriter::Copy(const ZipEntry& entry) {
  Write(entry);
}

void ZipWriter::Add(std::string_view name, std::string_view content, std::uint32_t time) {
  const auto deflated = DeflatedZipContent(content);
  ZipEntry entry;
  entry.name = name;
  entry.utf8_name =
      std::ranges::any_of(name, [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; });
  entry.method = deflated.empty() ? ZipMethod::kStored : ZipMethod::kDeflated;
  entry.time = time;
  entry.checksum = ChecksumOf(content);
  entry.size = content.size();
  entry.packed = deflated.empty() ? content : std::string_view(deflated);
  Write(entry);
}

void ZipWriter::Write(const ZipEntry& entry) {
  directory_ += kZipCentral;
  Append16(directory_, kVersion);
  AppendCommon(directory_, entry);
  directory_.append(10, '\0');  // comment, disk and attributes
  Append32(directory_, bytes_.size());
  directory_ += entry.name;

  bytes_ += kZipLocal;
  AppendCommon(bytes_, entry);
  bytes_ += entry.name;
  bytes_ += entry.packed;
  ++count_;
}

std::string ZipWriter::Finish() {
  const auto offset = bytes_.size();
  if (offset + directory_.size() >= kZipMore32) {
    throw Failure(Failure::Kind::kRefused, "The letter has grown far beyond what a document may be.");
  }
  bytes_ += directory_;
  bytes_ += kZipEnd;
  Append32(bytes_, 0);  // the only disk
  Append16(bytes_, count_);
  Append16(bytes_, count_);
  Append32(bytes_, directory_.size());
  Append32(bytes_, offset);
  Append16(bytes_, 0);  // comment
  return std::move(bytes_);
}

}  // namespace wordprocessor
