#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace host {

/// A settings file that people write: sections in brackets, under them "key=value", a line each. A line that
/// starts with ; or # is a comment, and so is what follows a blank and a ;. Blanks around keys and values
/// mean nothing; a value in quotation marks keeps what stands between them.
struct IniFile {
  struct Entry {
    std::string section;
    std::string key;
    std::string value;
    std::size_t line = 0;
  };
  struct BadLine {
    std::size_t line = 0;
    std::string text;
  };

  /// Throws Failure kPermissionDenied or kNotFound where the file cannot be read, kDamaged where it is not
  /// written in UTF-8 (a mark at its start is passed over).
  static IniFile Read(const std::filesystem::path& file);

  std::vector<Entry> entries;      ///< in the order of the file; empty values, too
  std::vector<BadLine> bad_lines;  ///< neither section nor entry nor comment
};

}  // namespace host
