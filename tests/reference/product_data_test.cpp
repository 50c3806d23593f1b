#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <zip.h>

#include "composition/pick_list_source.h"
#include "platform/text.h"
#include "platform/xml/xml.h"
#include "reference/reference_builder.h"
#include "reference/reference_database.h"
#include "tests/fakes/manual_clock.h"
#include "tests/support/temporary_folder.h"
#include "workspace/letters/statements.h"

// The data an installation starts from: what the tables, the letter fields and the templates say of one
// another.
namespace {

namespace fs = std::filesystem;

const fs::path kData = fs::path(ZEMLO_SOURCE_DIR) / "data";

struct LetterField {
  std::string name;
  std::string parent;
  std::string kind;
  std::string source;
};

std::map<std::string, std::vector<LetterField>> ReadLetterFields() {
  std::map<std::string, std::vector<LetterField>> fields;
  std::ifstream stream(kData / "server" / "letter_fields.tsv");
  std::string line;
  std::getline(stream, line);
  while (std::getline(stream, line)) {
    std::vector<std::string> cells;
    std::istringstream cell_stream(line);
    for (std::string cell; std::getline(cell_stream, cell, '\t');) cells.push_back(cell);
    cells.resize(9);  // trailing empty cells are not split off
    fields[cells[0]].push_back({cells[1], cells[2], cells[4], cells[5]});
  }
  return fields;
}

/// The text of every part of the document; nothing where it is no package.
std::vector<std::string> Parts(const fs::path& document) {
  std::vector<std::string> parts;
  zip_t* const archive = zip_open(document.c_str(), ZIP_RDONLY | ZIP_CHECKCONS, nullptr);
  if (archive == nullptr) return parts;
  for (zip_int64_t i = 0; i < zip_get_num_entries(archive, 0); ++i) {
    zip_stat_t entry;
    zip_stat_index(archive, static_cast<zip_uint64_t>(i), 0, &entry);
    std::string& text = parts.emplace_back(entry.size, '\0');
    zip_file_t* const file = zip_fopen_index(archive, static_cast<zip_uint64_t>(i), 0);
    zip_fread(file, text.data(), entry.size);
    zip_fclose(file);
  }
  zip_discard(archive);
  return parts;
}

void AddBookmarks(const platform::XmlElement& element, std::vector<std::string>& names) {
  for (const auto& child : element.Children()) {
    const auto name = child.Name() == "w:bookmarkStart" ? child.Attribute("w:name").value_or("") : "_";
    if (!name.starts_with("_")) names.push_back(name);
    AddBookmarks(child, names);
  }
}

/// The bookmarks of the document, those a word processor sets for itself (they begin with "_") left out.
std::vector<std::string> Bookmarks(const fs::path& document) {
  std::vector<std::string> names;
  for (const auto& part : Parts(document))
    AddBookmarks(platform::XmlDocument::Parse(part).OrFail().Root(), names);
  return names;
}

/// NAME for NAME and for its repeats NAME__1, NAME__2.
std::string FieldOf(const std::string& bookmark) {
  const auto repeat = bookmark.rfind("__");
  const bool is_repeat = repeat != std::string::npos &&
                         bookmark.find_first_not_of("0123456789", repeat + 2) == std::string::npos;
  return is_repeat ? bookmark.substr(0, repeat) : bookmark;
}

class ProductData : public testing::Test {
 protected:
  ProductData() {
    reference::CreateReferenceDatabase(kData, folder_ / "reference.db");
    clock_.SetToday(platform::Date{std::chrono::year(2026) / 11 / 22});
    templates_ = database_.Select("select LTR_TYP_ID, DCMT_NM from FLS_LTR_TEMPLATE");
  }

  const tests::TemporaryFolder folder_;
  fakes::ManualClock clock_;
  reference::ReferenceDatabase database_{folder_ / "reference.db", clock_};
  std::shared_ptr<platform::RecordSet> templates_;
  const std::map<std::string, std::vector<LetterField>> fields_ = ReadLetterFields();
};

TEST_F(ProductData, EveryBookmarkOfEveryTemplateIsAFieldOfItsLetter) {
  ASSERT_GE(templates_->RecordCount(), 16U);
  EXPECT_EQ(database_.Select("select CNTY_CD from MVR_COUNTY_TAX")->RecordCount(), 30U);
  for (std::size_t row = 0; row < templates_->RecordCount(); ++row) {
    const auto name = templates_->Text(row, "DCMT_NM");
    const auto bookmarks = Bookmarks(kData / "templates" / name);
    EXPECT_FALSE(bookmarks.empty()) << name << " is missing or no letter";
    EXPECT_EQ(std::set<std::string>(bookmarks.begin(), bookmarks.end()).size(), bookmarks.size())
        << name << " uses a bookmark name twice";
    const auto letter = fields_.find(templates_->Text(row, "LTR_TYP_ID"));
    ASSERT_NE(letter, fields_.end()) << name << " belongs to a letter without fields";
    for (const auto& bookmark : bookmarks) {
      EXPECT_TRUE(std::ranges::count(letter->second, FieldOf(bookmark), &LetterField::name) == 1)
          << bookmark << " of " << name << " is no field of letter " << letter->first;
    }
  }
}

TEST_F(ProductData, TwoOfTheLettersThatAreOfferedHaveNoTemplateToShowWhatIsSaidThen) {
  const auto offered = database_.Select(composition::PickListStatement("ONLINE", "K1"));
  ASSERT_GE(offered->RecordCount(), 10U);
  std::vector<std::string> without;
  for (std::size_t row = 1; row < offered->RecordCount(); ++row) {  // the first one is blank
    const auto type = offered->Text(row, "CD_TBL_CD");
    auto statement = platform::ReplaceAll(workspace::kTemplateOfToday, "{R}", "'K1'");
    statement = platform::ReplaceAll(statement, "{T}", "2026-11-22");
    statement = platform::ReplaceAll(statement, "{L}", "'" + type + "'");
    if (database_.Select(statement)->IsEmpty()) without.push_back(type);
  }
  EXPECT_THAT(without, testing::UnorderedElementsAre("116", "117"));
  EXPECT_GE(database_.Select(composition::PickListStatement("REFDOCTYP", "K1"))->RecordCount(), 2U);
}

TEST_F(ProductData, EveryFieldSaysWhereItsValueComesFrom) {
  const std::set<std::string> entered = {"USER", "PARAGRAPH"};
  const std::set<std::string> fetched = {"SYSTEM", "DATA", "TABLE", "COLUMN", "QUERY", "FUNCTION", "LOCAL"};
  for (const auto& [letter, fields] : fields_) {
    for (const auto& field : fields) {
      const auto where = letter + " " + field.name;
      EXPECT_EQ(field.source.empty(), entered.contains(field.kind)) << where;
      EXPECT_TRUE(entered.contains(field.kind) || fetched.contains(field.kind)) << where;
      EXPECT_EQ(field.kind == "COLUMN", !field.parent.empty()) << where;
      EXPECT_EQ(field.kind == "PARAGRAPH", field.name.starts_with("PARA_")) << where;
      EXPECT_EQ(field.kind == "USER", field.name.starts_with("U_")) << where;
      if (field.parent.empty()) continue;
      EXPECT_EQ(std::ranges::count(fields, field.parent, &LetterField::name), 1) << where;
    }
  }
}

}  // namespace
