#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "platform/failure.h"
#include "tests/support/failing.h"
#include "tests/support/temporary_folder.h"
#include "tests/wordprocessor/docx_builder.h"
#include "tests/wordprocessor/zip_pieces.h"
#include "wordprocessor/document/document.h"

namespace {

using platform::Failure;
using testing::AllOf;
using testing::HasSubstr;
using wordprocessor::DataContext;
using wordprocessor::DocxDocument;

const auto kZipContext = DataContext::Parse("<X><NAME>value</NAME><HEAD>logo</HEAD></X>");

std::vector<DocxPart> SmallLetter() {
  return LetterParts("<w:body>" + Marked("NAME", "name", 1) + "</w:body>");
}

/// The letter made of these bytes; where they are refused, a failed test and "".
std::string MergedZip(const std::string& bytes, const std::string& what) {
  try {
    auto document = DocxDocument::FromBytes(bytes, "CTL110.docx");
    document.MergeBookmarks(kZipContext);
    return document.Bytes();
  } catch (const Failure& failure) {
    ADD_FAILURE() << what << ": " << failure.description();
    return {};
  }
}

std::string ZipRefusal(const std::string& bytes) {
  return tests::WhyNot([&] { DocxDocument::FromBytes(bytes, "CTL110.docx"); });
}

/// A picture does not get smaller, whatever its size.
std::string Picture(std::size_t size) {
  std::string pixels(size, '\0');
  std::uint32_t state = 2'463'534'242;
  for (auto& pixel : pixels) {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    pixel = static_cast<char>(state);
  }
  return pixels;
}

// Making a letter of a template with a logo and a header ended the program: the picture stood before a part
// that changes, and memory was given back that nobody had asked for.
TEST(DocxZip, ALetterIsMadeWhateverStandsBeforeThePartsThatChange) {
  auto parts = SmallLetter();
  AddRelation(parts, "image", "media/image1.png");
  AddRelatedPart(parts, "header", "header1.xml", WordPart("w:hdr", Marked("HEAD", "head", 2)));
  const std::vector<std::function<void(ZipPiece&)>> ways = {[](ZipPiece&) {}, TellSizesBehind,
                                                            TellLongSizesBehind};
  for (const std::size_t size : {1'000u, 4'096u, 70'000u, 1'000'000u, 5'000'000u}) {
    const DocxPart picture{"word/media/image1.png", Picture(size)};
    for (const bool deflated : {true, false}) {
      const auto picture_piece = PieceOf(picture, deflated);
      for (std::size_t place = 0; place <= parts.size(); ++place) {
        auto pieces = PiecesOf(parts, deflated);
        pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(place), picture_piece);
        for (auto& piece : pieces) ways[place % ways.size()](piece);
        const auto what = std::to_string(size) + " bytes at place " + std::to_string(place);
        const auto letter = MergedZip(ZipOf(pieces), what);
        EXPECT_THAT(PartOf(letter, "word/document.xml"), HasSubstr("value")) << what;
        EXPECT_THAT(PartOf(letter, "word/header1.xml"), HasSubstr("logo")) << what;
        EXPECT_TRUE(PartOf(letter, picture.name) == picture.content) << what;
      }
    }
  }
}

struct Way {
  std::string what;
  std::function<void(ZipPiece&)> write;
  ZipEnd end = {};
};

std::vector<Way> OrdinaryWays() {
  const auto as_usual = [](ZipPiece&) {};
  return {
      {"another time in front", [](ZipPiece& piece) { piece.local.time = 0; }},
      {"extra fields in front only",
       [](ZipPiece& piece) {
         piece.local.extra = ExtraField(0x5455,
                                        "\x01"
                                        "1234");
       }},
      {"padding in front",
       [](ZipPiece& piece) { piece.local.extra = ExtraField(0xA220, std::string(500, '\0')); }},
      {"an extra field that is cut off", [](ZipPiece& piece) { piece.local.extra = "\x01"; }},
      {"extra fields in the directory only",
       [](ZipPiece& piece) { piece.central.extra = ExtraField(10, std::string(32, '\0')); }},
      {"UTF-8 told in the directory only", [](ZipPiece& piece) { piece.central.flags |= 0x800; }},
      {"a level of packing told in front only", [](ZipPiece& piece) { piece.local.flags |= 6; }},
      {"sizes behind", TellSizesBehind},
      {"sizes behind without a signature", TellSizesBehindWithoutSignature},
      {"sizes behind, which the directory does not tell",
       [](ZipPiece& piece) {
         TellSizesBehind(piece);
         piece.central.flags = 0;
       }},
      {"sizes in front, said to stand behind", [](ZipPiece& piece) { piece.local.flags |= 8; }},
      {"long sizes in front", TellLongSizesInFront},
      {"long sizes behind", TellLongSizesBehind},
      {"long sizes in the directory", TellLongSizesInTheDirectory},
      {"no sizes in front",
       [](ZipPiece& piece) { piece.local.checksum = piece.local.packed_size = piece.local.size = 0; }},
      {"bytes between the entries", [](ZipPiece& piece) { piece.descriptor = "an entry that was removed"; }},
      {"a long end", as_usual, {.zip64 = true}},
      {"a comment", as_usual, {.comment = "made by a document store"}},
      {"a comment that looks like an end", as_usual, {.comment = "PK\x05\x06" + std::string(18, '\0') + "!"}},
      {"bytes behind the end", as_usual, {.behind = std::string(600, '\0')}},
  };
}

TEST(DocxZip, WhatProgramsWriteEveryDayIsOpened) {
  for (const auto& way : OrdinaryWays()) {
    auto pieces = PiecesOf(SmallLetter());
    for (auto& piece : pieces) way.write(piece);
    EXPECT_THAT(PartOf(MergedZip(ZipOf(pieces, way.end), way.what), "word/document.xml"), HasSubstr("value"))
        << way.what;
  }
}

TEST(DocxZip, FoldersInTheFileAreNoParts) {
  auto parts = SmallLetter();
  parts.insert(parts.begin(), {{"word/", ""}, {"_rels/", ""}});
  const auto letter = MergedZip(ZipOf(PiecesOf(parts, false)), "folders");
  EXPECT_THAT(PartOf(letter, "word/document.xml"), HasSubstr("value"));
}

struct Lie {
  std::string what;
  std::function<void(ZipPiece&)> tell;  ///< about the main part
  std::string says;
  ZipEnd end = {};
};

std::vector<Lie> Lies() {
  const auto nothing = [](ZipPiece&) {};
  return {
      {"another name in front", [](ZipPiece& piece) { piece.local.name[5] = 'D'; }, "\"word/Document.xml\""},
      {"another method in front", [](ZipPiece& piece) { piece.local.method = 0; }, "way of packing"},
      {"a method that no document has",
       [](ZipPiece& piece) { piece.local.method = piece.central.method = 12; }, "way of packing"},
      {"another size in front", [](ZipPiece& piece) { ++piece.local.size; }, "size"},
      {"another packed size in front", [](ZipPiece& piece) { --piece.local.packed_size; }, "size"},
      {"another checksum in front", [](ZipPiece& piece) { ++piece.local.checksum; }, "checksum"},
      {"another size everywhere",
       [](ZipPiece& piece) { piece.local.size = piece.central.size = piece.central.size - 1; }, "size"},
      {"another checksum everywhere",
       [](ZipPiece& piece) { piece.local.checksum = ++piece.central.checksum; }, "checksum"},
      {"bytes behind the packed content",
       [](ZipPiece& piece) {
         piece.packed += "more";
         piece.local.packed_size = piece.central.packed_size += 4;
       },
       "size"},
      {"another checksum behind",
       [](ZipPiece& piece) {
         TellSizesBehind(piece);
         piece.descriptor[4] ^= 1;
       },
       "behind"},
      {"another long size behind",
       [](ZipPiece& piece) {
         TellLongSizesBehind(piece);
         piece.descriptor[8] ^= 1;
       },
       "behind"},
      {"no sizes behind",
       [](ZipPiece& piece) {
         TellSizesBehind(piece);
         piece.descriptor.clear();
       },
       "behind"},
      {"long sizes that are not there",
       [](ZipPiece& piece) { piece.central.packed_size = piece.central.size = 0xFFFF'FFFF; }, "outside"},
      {"a place outside of the file", [](ZipPiece& piece) { piece.offset_change = 1'000'000; }, "outside"},
      {"a place before the file", [](ZipPiece& piece) { piece.offset_change = -1'000'000; }, "outside"},
      {"a place in the midst of it", [](ZipPiece& piece) { piece.offset_change = 1; }, "does not begin"},
      {"a size beyond the file",
       [](ZipPiece& piece) { piece.local.packed_size = piece.central.packed_size = 1'000'000; }, "outside"},
      {"a password told in front only", [](ZipPiece& piece) { piece.local.flags |= 1; }, "with a password"},
      {"a password told in the directory only", [](ZipPiece& piece) { piece.central.flags |= 1; },
       "with a password"},
      {"fewer entries than there are", nothing, "directory", {.count_change = -1}},
      {"more entries than there are", nothing, "directory", {.count_change = 1}},
      {"a directory that is somewhere else", nothing, "incomplete", {.offset_change = 3}},
      {"one disk of several", nothing, "several", {.disk = 1}},
      {"more entries than a letter has, in a long end",
       nothing,
       "2000 parts",
       {.count_change = 1'000'000'000, .zip64 = true}},
  };
}

TEST(DocxZip, WhatTheFileSaysOfItselfHasToHold) {
  for (const auto& lie : Lies()) {
    auto pieces = PiecesOf(SmallLetter());
    lie.tell(pieces[2]);
    const auto refusal = ZipRefusal(ZipOf(pieces, lie.end));
    EXPECT_THAT(refusal, AllOf(HasSubstr("\"CTL110.docx\""), HasSubstr(lie.says))) << lie.what;
    const bool about_the_file = lie.end.count_change != 0 || lie.end.offset_change != 0 || lie.end.disk != 0;
    if (!about_the_file && lie.says != "with a password") {
      EXPECT_THAT(refusal, HasSubstr("\"word/document.xml\"")) << lie.what;
    }
  }
}

// A few packed bytes that many entries share unpack to any size.
TEST(DocxZip, EntriesThatShareTheirBytesAreRefused) {
  auto pieces = PiecesOf(SmallLetter());
  const auto inner = PieceOf({"word/media/inner.png", "pixels"});
  const auto inner_alone = ZipOf({inner});
  auto outer =
      PieceOf({"word/media/outer.png", inner_alone.substr(0, inner_alone.find("PK\x01\x02"))}, false);
  outer.packed.clear();  // what follows are its bytes
  pieces.insert(pieces.end(), {outer, inner});
  EXPECT_THAT(ZipRefusal(ZipOf(pieces)),
              AllOf(HasSubstr("\"word/media/outer.png\""), HasSubstr("\"word/media/inner.png\"")));
}

TEST(DocxZip, ALetterIsWrittenAsEveryReaderTakesIt) {
  auto parts = SmallLetter();
  AddRelation(parts, "image", "media/caf\xC3\xA9.png");
  parts.push_back({"word/media/caf\xC3\xA9.png", "pixels"});
  auto pieces = PiecesOf(parts);
  for (auto& piece : pieces) {
    TellLongSizesBehind(piece);
    piece.local.flags |= 0x800;
    piece.central.flags |= 0x800;
  }
  const auto letter = MergedZip(ZipOf(pieces, {.comment = "x", .behind = "y"}), "streamed");
  EXPECT_TRUE(IsConsistentZip(letter));
  EXPECT_EQ(PartOf(letter, "word/media/caf\xC3\xA9.png"), "pixels");
}

TEST(DocxZip, DocumentsOfOtherProgramsAreMerged) {
  for (const auto* program : {"zip", "python", "7z", "bsdtar", "soffice"}) {
    const auto file = std::filesystem::path(ZEMLO_SOURCE_DIR) / "tests/wordprocessor/documents" /
                      (std::string("packed_by_") + program + ".docx");
    EXPECT_THAT(PartOf(MergedZip(tests::ReadFile(file), program), "word/document.xml"), HasSubstr("value"))
        << program;
  }
}

}  // namespace
