#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "server/storage/database.h"

namespace apps {

/// Where the letters of a run lie: a folder for each letter type and Troop/District, with a PDF for each
/// letter, one of all of them to be printed, and a list.
class NightFolder {
 public:
  static constexpr const char* kAllLetters = "all letters.pdf";
  static constexpr const char* kList = "letters.csv";

  /// `batches`: the folder of all runs.
  NightFolder(const std::filesystem::path& batches, std::int64_t run);

  /// Where a letter's pages go; the folder is made. `station`: troop and district, "" for none.
  std::filesystem::path FileFor(const std::string& letter_type, const std::string& station, std::int64_t item,
                                const std::string& customer) const;
  /// Puts PDF and list of each group together from what the run has recorded, and takes away pages of letters
  /// that were never recorded. May be called again. Throws Failure naming a file.
  void Finish(server::Database& database) const;

  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path GroupOf(const std::string& letter_type, const std::string& station) const;

  const std::filesystem::path path_;
  const std::int64_t run_;
};

}  // namespace apps
