#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/wordprocessor/docx_builder.h"

/// Zip files put together piece by piece (PKWARE's APPNOTE 6.3.9), so that a test can write what other
/// programs write, and what nobody should.
struct ZipHeader {
  std::string name;
  std::uint16_t flags = 0;
  std::uint16_t method = 8;
  std::uint32_t time = 0x58A1'6000;  ///< date and time as DOS tells them
  std::uint32_t checksum = 0;
  std::uint32_t packed_size = 0;
  std::uint32_t size = 0;
  std::string extra;
};

struct ZipPiece {
  ZipHeader local;
  std::string packed;
  std::string descriptor;  ///< what stands behind the packed bytes
  ZipHeader central;
  std::int64_t offset_change = 0;  ///< how far the directory is wrong about where the entry stands
};

/// What ends a zip file; the counts are right unless they are changed.
struct ZipEnd {
  std::int64_t count_change = 0;
  std::int64_t offset_change = 0;
  std::uint16_t disk = 0;
  bool zip64 = false;
  std::string comment = {};
  std::string behind = {};  ///< bytes that belong to nothing
};

ZipPiece PieceOf(const DocxPart& part, bool deflated = true);
std::vector<ZipPiece> PiecesOf(const std::vector<DocxPart>& parts, bool deflated = true);
std::string ZipOf(const std::vector<ZipPiece>& pieces, const ZipEnd& end = {});

/// Little-endian numbers in a row.
std::string Bytes16(std::uint16_t number);
std::string Bytes32(std::uint32_t number);
std::string Bytes64(std::uint64_t number);
/// An extra field.
std::string ExtraField(std::uint16_t id, const std::string& content);

/// The ways in which programs tell an entry's sizes.
void TellSizesBehind(ZipPiece& piece);
void TellSizesBehindWithoutSignature(ZipPiece& piece);
void TellLongSizesBehind(ZipPiece& piece);
void TellLongSizesInFront(ZipPiece& piece);
void TellLongSizesInTheDirectory(ZipPiece& piece);
