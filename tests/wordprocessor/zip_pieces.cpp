#include "tests/wordprocessor/zip_pieces.h"

#include <zlib.h>

#include <stdexcept>

namespace {

constexpr std::uint16_t kSizesBehind = 8;
constexpr std::uint32_t kSeeExtraField = 0xFFFF'FFFF;

std::string Number(std::uint64_t number, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i) text += static_cast<char>((number >> (8 * i)) & 0xFF);
  return text;
}

std::string Deflated(const std::string& content) {
  z_stream stream{};
  if (deflateInit2(&stream, 6, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::runtime_error("zlib");
  }
  std::string packed(deflateBound(&stream, content.size()), '\0');
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
  stream.avail_in = static_cast<uInt>(content.size());
  stream.next_out = reinterpret_cast<Bytef*>(packed.data());
  stream.avail_out = static_cast<uInt>(packed.size());
  deflate(&stream, Z_FINISH);
  packed.resize(stream.total_out);
  deflateEnd(&stream);
  return packed;
}

std::string Common(const ZipHeader& header) {
  return Bytes16(header.flags) + Bytes16(header.method) + Bytes32(header.time) + Bytes32(header.checksum) +
         Bytes32(header.packed_size) + Bytes32(header.size) +
         Bytes16(static_cast<std::uint16_t>(header.name.size())) +
         Bytes16(static_cast<std::uint16_t>(header.extra.size()));
}

void SayThatSizesStandBehind(ZipPiece& piece) {
  piece.local.flags |= kSizesBehind;
  piece.central.flags |= kSizesBehind;
  piece.local.checksum = piece.local.packed_size = piece.local.size = 0;
}

std::string LongEnd(std::uint64_t count, std::uint64_t size, std::uint64_t offset, std::uint64_t at) {
  return "PK\x06\x06" + Bytes64(44) + Bytes16(45) + Bytes16(45) + Bytes64(0) + Bytes64(count) +
         Bytes64(count) + Bytes64(size) + Bytes64(offset) + "PK\x06\x07" + Bytes32(0) + Bytes64(at) +
         Bytes32(1);
}

}  // namespace

std::string Bytes16(std::uint16_t number) {
  return Number(number, 2);
}

std::string Bytes32(std::uint32_t number) {
  return Number(number, 4);
}

std::string Bytes64(std::uint64_t number) {
  return Number(number, 8);
}

std::string ExtraField(std::uint16_t id, const std::string& content) {
  return Bytes16(id) + Bytes16(static_cast<std::uint16_t>(content.size())) + content;
}

ZipPiece PieceOf(const DocxPart& part, bool deflated) {
  ZipPiece piece;
  piece.packed = deflated ? Deflated(part.content) : part.content;
  piece.local.name = part.name;
  piece.local.method = deflated ? 8 : 0;
  piece.local.checksum = static_cast<std::uint32_t>(
      crc32(0, reinterpret_cast<const Bytef*>(part.content.data()), static_cast<uInt>(part.content.size())));
  piece.local.packed_size = static_cast<std::uint32_t>(piece.packed.size());
  piece.local.size = static_cast<std::uint32_t>(part.content.size());
  piece.central = piece.local;
  return piece;
}

std::vector<ZipPiece> PiecesOf(const std::vector<DocxPart>& parts, bool deflated) {
  std::vector<ZipPiece> pieces;
  for (const auto& part : parts) pieces.push_back(PieceOf(part, deflated));
  return pieces;
}

std::string ZipOf(const std::vector<ZipPiece>& pieces, const ZipEnd& end) {
  std::string bytes;
  std::string directory;
  for (const auto& piece : pieces) {
    const auto offset = static_cast<std::int64_t>(bytes.size()) + piece.offset_change;
    bytes += "PK\x03\x04" + Bytes16(20) + Common(piece.local) + piece.local.name + piece.local.extra +
             piece.packed + piece.descriptor;
    directory += "PK\x01\x02" + Bytes16(20) + Bytes16(20) + Common(piece.central) + Bytes16(0) + Bytes16(0) +
                 Bytes16(0) + Bytes32(0) + Bytes32(static_cast<std::uint32_t>(offset)) + piece.central.name +
                 piece.central.extra;
  }
  const auto offset = static_cast<std::uint64_t>(static_cast<std::int64_t>(bytes.size()) + end.offset_change);
  const auto count = static_cast<std::uint64_t>(static_cast<std::int64_t>(pieces.size()) + end.count_change);
  bytes += directory;
  if (end.zip64) bytes += LongEnd(count, directory.size(), offset, bytes.size());
  const auto short_count = Bytes16(end.zip64 ? 0xFFFF : static_cast<std::uint16_t>(count));
  return bytes + "PK\x05\x06" + Bytes16(end.disk) + Bytes16(end.disk) + short_count + short_count +
         Bytes32(end.zip64 ? kSeeExtraField : static_cast<std::uint32_t>(directory.size())) +
         Bytes32(end.zip64 ? kSeeExtraField : static_cast<std::uint32_t>(offset)) +
         Bytes16(static_cast<std::uint16_t>(end.comment.size())) + end.comment + end.behind;
}

void TellSizesBehind(ZipPiece& piece) {
  TellSizesBehindWithoutSignature(piece);
  piece.descriptor = "PK\x07\x08" + piece.descriptor;
}

void TellSizesBehindWithoutSignature(ZipPiece& piece) {
  SayThatSizesStandBehind(piece);
  piece.descriptor =
      Bytes32(piece.central.checksum) + Bytes32(piece.central.packed_size) + Bytes32(piece.central.size);
}

void TellLongSizesBehind(ZipPiece& piece) {
  SayThatSizesStandBehind(piece);
  piece.local.packed_size = piece.local.size = kSeeExtraField;
  piece.local.extra = ExtraField(1, Bytes64(0) + Bytes64(0));
  piece.descriptor = "PK\x07\x08" + Bytes32(piece.central.checksum) + Bytes64(piece.central.packed_size) +
                     Bytes64(piece.central.size);
}

void TellLongSizesInFront(ZipPiece& piece) {
  piece.local.extra = ExtraField(1, Bytes64(piece.local.size) + Bytes64(piece.local.packed_size));
  piece.local.packed_size = piece.local.size = kSeeExtraField;
}

void TellLongSizesInTheDirectory(ZipPiece& piece) {
  piece.central.extra = ExtraField(1, Bytes64(piece.central.size) + Bytes64(piece.central.packed_size));
  piece.central.packed_size = piece.central.size = kSeeExtraField;
}
