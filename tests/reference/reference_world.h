#pragma once

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/record_set.h"
#include "reference/reference_builder.h"
#include "reference/reference_database.h"
#include "tests/fakes/manual_clock.h"

namespace reference_tests {

namespace fs = std::filesystem;

/// An installation of its own: table files, the database made from them, and a clock.
class ReferenceWorld : public testing::Test {
 protected:
  ReferenceWorld() {
    fs::create_directories(installation_ / "reference");
    for (const auto& [file, header] : kHeaders) Write(file, header);
    clock.SetToday(platform::Date{std::chrono::year(2026) / 11 / 22});
  }
  ~ReferenceWorld() override { fs::remove_all(folder_); }

  /// Appends a line; "|" separates the cells.
  void GivenRow(const std::string& file, const std::string& row) {
    std::ofstream stream(Source(file), std::ios::app | std::ios::binary);
    for (const char c : row) stream << (c == '|' ? '\t' : c);
    stream << '\n';
  }
  /// An entry of region K1.
  void GivenCode(const std::string& table, const std::string& code, const std::string& description,
                 const std::string& value = "", const std::string& from = "2020-01-01",
                 const std::string& to = "") {
    GivenRow("codes.tsv", "K1|" + table + "|" + code + "|2020-01-01 06.00.00|" + description + "|" + value +
                              "||" + from + "|" + to + "||||| ");
  }
  bool Build() { return reference::CreateReferenceDatabase(installation_, database_file_); }

  platform::ReferenceDatabase& Database() {
    if (!database_) {
      Build();
      database_ = std::make_unique<reference::ReferenceDatabase>(database_file_, clock);
    }
    return *database_;
  }
  /// The cells of a column, from the first row to the last.
  std::vector<std::string> Column(const std::string& statement, const std::string& column) {
    const auto rows = Database().Select(statement);
    std::vector<std::string> cells;
    for (std::size_t row = 0; row < rows->RecordCount(); ++row) cells.push_back(rows->Text(row, column));
    return cells;
  }

  fs::path Source(const std::string& file) const { return installation_ / "reference" / file; }
  void Write(const std::string& file, const std::string& text) {
    std::ofstream(Source(file), std::ios::binary) << text;
  }

  const fs::path folder_ = MakeFolder();
  const fs::path installation_ = folder_ / "installation";
  const fs::path database_file_ = folder_ / "user" / "reference.db";
  fakes::ManualClock clock;

 private:
  static fs::path MakeFolder() {
    std::string pattern = (fs::temp_directory_path() / "reference-XXXXXX").string();
    return ::mkdtemp(pattern.data());
  }

  inline static const std::map<std::string, std::string> kHeaders = {
      {"letters.tsv", "REGION\tLTR_TYP_ID\tLTR_NM\tLTR_ONLN_IND\n"},
      {"templates.tsv", "REGION\tLTR_TYP_ID\tDCMT_NM\tTMPLT_TS\tEFCTV_DT\tEXPRTN_DT\n"},
      {"codes.tsv",
       "REGION\tCD_TBL_ID\tCD_TBL_CD\tSYS_TS\tCD_TBL_DES\tADTL_INFO_TXT\tRSN_FOR_CHNG_TXT\tEFCTV_DT\tEND_DT\t"
       "ENTR_OFCR_ID\tLST_UPDT_TS\tACTN\tUNT_NBR\tSFTYNT_VLTN_CD\n"},
      {"counties.tsv", "CNTY_CD\tCNTY_NM\tCNTY_SEAT_NM\tZIP_PRFX\tTRP_ID\tTRP_DIST_ID\n"},
      {"officers.tsv", "OFCR_ID\tOFCR_NM\n"},
  };

  std::unique_ptr<reference::ReferenceDatabase> database_;
};

}  // namespace reference_tests
