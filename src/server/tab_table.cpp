#include "server/tab_table.h"

#include <algorithm>
#include <fstream>

#include "platform/failure.h"
#include "platform/text.h"

namespace server {
namespace {

using platform::Failure;

std::vector<std::string> Split(std::string_view line) {
  std::vector<std::string> values;
  for (;;) {
    const auto tab = line.find('\t');
    values.emplace_back(platform::Trim(line.substr(0, tab)));
    if (tab == std::string_view::npos) return values;
    line.remove_prefix(tab + 1);
  }
}

}  // namespace

TabTable TabTable::Read(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    throw Failure(Failure::Kind::kNotFound,
                  "The file \"" + file.string() + "\" cannot be read. Install the program's data again.");
  }
  TabTable table;
  table.file_ = file;
  std::string line;
  for (std::size_t number = 1; std::getline(stream, line); ++number) {
    if (line.ends_with('\r')) line.pop_back();
    if (line.empty()) continue;
    auto values = Split(line);
    if (table.columns_.empty()) {
      table.columns_ = std::move(values);
      continue;
    }
    if (values.size() != table.columns_.size() || !platform::IsValidUtf8(line)) {
      throw Failure(Failure::Kind::kDamaged, "\"" + file.string() + "\", line " + std::to_string(number) +
                                                 ", is no row of " + std::to_string(table.columns_.size()) +
                                                 " values in UTF-8.");
    }
    table.rows_.push_back({number, std::move(values)});
  }
  return table;
}

const std::string& TabTable::Text(std::size_t row, std::string_view column) const {
  const auto found = std::ranges::find(columns_, column);
  if (found == columns_.end()) {
    throw Failure(Failure::Kind::kDamaged,
                  "\"" + file_.string() + "\" has no column \"" + std::string(column) + "\".");
  }
  return rows_[row].values[static_cast<std::size_t>(found - columns_.begin())];
}

void TabTable::Refuse(std::size_t row, std::string_view column, const std::string& what) const {
  throw Failure(Failure::Kind::kDamaged, what + " (\"" + file_.string() + "\", line " +
                                             std::to_string(rows_[row].line) + ", column " +
                                             std::string(column) + ")");
}

}  // namespace server
