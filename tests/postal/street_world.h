#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

namespace postal {

/// A folder of a test's own with a small street file.
class StreetWorld : public testing::Test {
 protected:
  StreetWorld() {
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    auto name = std::string(test->test_suite_name()) + "_" + test->name() + "_" + std::to_string(getpid());
    for (auto& character : name)
      if (character == '/') character = '_';
    folder_ = std::filesystem::temp_directory_path() / name;
    std::filesystem::create_directories(folder_);
    WriteCities(
        "88312 Hartsfield P KV 13 Hartsfield\n"
        "88312 East_Hartsfield A KV 13 Hartsfield\n"
        "88321 Moss_Creek P KV 13 Hartsfield\n"
        "89214 Oakhaven P KV 22 Oakhaven\n"
        "89215 Oakhaven P KV 22 Oakhaven\n");
    WriteRanges(
        "88312 S - Depot St - 1001 1199 O 0430\n"
        "88312 S - Depot St - 1000 1200 E 0431\n"
        "88312 S N Lantern Ave - 1 99 O 1111\n"
        "88312 S S Lantern Ave - 101 199 O 1112\n"
        "88312 S - St_John St - 1 50 B 2222\n"
        "88312 S - Saint_Clair Ave - 2 98 E 3333\n"
        "88312 S - Quarry Rd - 1 99 B -\n"
        "88312 S - Quarry Ln - 1 99 B 5555\n"
        "88312 S - 5th St - 1 99 B 6666\n"
        "88312 S - Mill St NW 1 99 B 7777\n"
        "88312 S - Spring_Lake Dr - 1 99 B 8888\n"
        "88312 P - - - - 1 999 B BOX\n"
        "88312 R - 2 - - 1 90 B BOX\n"
        "88321 S - Granary Rd - 1 99 B 9999\n"
        "88321 S - Saint_Christophers Blvd - 1 9999 B 0011\n"
        "88321 S - N St - 1 49 B 0001\n"
        "88321 S - North St - 1 99 B 0002\n"
        "88321 S - East St - 1 99 B 0003\n"
        "88321 S - Avenue_W - - 1 99 B 0004\n"
        "88321 S - North_Bend Rd - 1 99 B 0005\n"
        "88321 S N Bend Rd - 1 49 B 0006\n"
        "88321 S - County_Road_S - - 1 99 B 0007\n"
        "88321 S - South_Lake Dr - 1 99 B 0008\n"
        "88321 S - Mt_Vernon Ct - 1 49 B 0009\n"
        "88321 S - Mount_Vernon Ct - 1 99 B 0010\n"
        "89214 S - Orchard Rd - 1 99 B 1234\n"
        "89215 S - Orchard Rd - 101 199 B 1235\n"
        "89215 S - Birch Ave - 1 99 B 1236\n"
        "89214 S - Birch Ave - 1 99 B 1237\n");
  }
  ~StreetWorld() override { std::filesystem::remove_all(folder_); }

  /// Cells are parted by blanks; "-" is an empty cell, "_" a blank.
  void WriteCities(const std::string& rows) {
    Write("cities.tsv", "ZIP_CD CITY_NM CITY_USE ST CNTY_CD CNTY_NM\n", rows);
  }
  void WriteRanges(const std::string& rows) {
    Write("ranges.tsv", "ZIP_CD KIND PRE_DIR STREET_NM SUFFIX POST_DIR LOW_NBR HIGH_NBR PARITY PLUS4\n",
          rows);
  }
  const std::filesystem::path& Folder() const { return folder_; }

 private:
  void Write(const char* file, const std::string& headings, const std::string& rows) {
    // The names of the columns have underscores of their own.
    std::string text = headings;
    for (auto& character : text)
      if (character == ' ') character = '\t';
    for (std::size_t at = 0; at < rows.size(); ++at) {
      const bool is_empty = rows[at] == '-' && (at == 0 || rows[at - 1] == ' ') &&
                            (rows[at + 1] == ' ' || rows[at + 1] == '\n');
      if (!is_empty) text += rows[at] == ' ' ? '\t' : rows[at] == '_' ? ' ' : rows[at];
    }
    std::ofstream(folder_ / file, std::ios::binary) << text;
  }

  std::filesystem::path folder_;
};

}  // namespace postal
