#include "apps/night/night_folder.h"

#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "platform/file_access.h"
#include "platform/text.h"
#include "platform/whole_file.h"
#include "wordprocessor/printing/pdf_pages.h"

namespace apps {
namespace {

namespace fs = std::filesystem;

/// A customer's number as part of a file's name.
std::string InFileName(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return c == '/' || c == '\\' || c == '.'; }, '-');
  return text;
}

std::string Padded(std::int64_t number) {
  constexpr std::size_t kDigits = 6;
  auto digits = std::to_string(number);
  return std::string(kDigits - std::min(kDigits, digits.size()), '0') + digits;
}

/// A value of a CSV file: quoted, quotes twice (RFC 4180, 2.).
std::string CsvText(const std::string& text) {
  return '"' + platform::ReplaceAll(text, "\"", "\"\"") + '"';
}

/// The letters of one group in the order of the run.
struct Group {
  std::vector<fs::path> files;
  std::string list = "Letter,Type,Customer,Form type,Form,Troop/District,File\r\n";
};

}  // namespace

NightFolder::NightFolder(const fs::path& batches, std::int64_t run)
    : path_(batches / std::to_string(run)), run_(run) {}

fs::path NightFolder::GroupOf(const std::string& letter_type, const std::string& station) const {
  return path_ / InFileName(letter_type) / (station.empty() ? "no district" : InFileName(station));
}

fs::path NightFolder::FileFor(const std::string& letter_type, const std::string& station, std::int64_t item,
                              const std::string& customer) const {
  const auto group = GroupOf(letter_type, station);
  platform::MakeFolder(group);
  return group / (Padded(item) + " " + InFileName(customer) + ".pdf");
}

void NightFolder::Finish(server::Database& database) const {
  const auto letters = database.Select(
      R"(SELECT ITM_NBR, batch_letter.SEQ_NBR, batch_letter.LTR_TYP_ID, batch_letter.CUST_ID, batch_letter.FORM_TYP_CD,
           batch_letter.FORM_NBR, COALESCE(county.TRP_ID || county.TRP_DIST_ID, '') AS STATION
         FROM batch_letter LEFT JOIN customer ON customer.CUST_ID = batch_letter.CUST_ID
           LEFT JOIN county ON county.QZ_CNTY_NBR = customer.QZ_CNTY_NBR
         WHERE BTCH_SEQ_NBR = ? AND RSLT_CD = 'S' ORDER BY ITM_NBR)",
      {run_});
  std::map<fs::path, Group> groups;
  std::set<fs::path> recorded;
  for (std::size_t row = 0; row < letters->RecordCount(); ++row) {
    const auto text = [&](const char* column) { return letters->Text(row, column); };
    const auto file = FileFor(text("LTR_TYP_ID"), text("STATION"), letters->Get(row, "ITM_NBR").AsInteger(),
                              text("CUST_ID"));
    auto& group = groups[file.parent_path()];
    group.files.push_back(file);
    recorded.insert(file);
    for (const auto* column : {"SEQ_NBR", "LTR_TYP_ID", "CUST_ID", "FORM_TYP_CD", "FORM_NBR", "STATION"})
      group.list += CsvText(text(column)) + ",";
    group.list += CsvText(file.filename().string()) + "\r\n";
  }
  for (const auto& [folder, group] : groups) {
    platform::RemoveUnfinishedFiles(folder);
    wordprocessor::JoinPdfs(group.files, folder / kAllLetters);
    platform::ReplaceFile(folder / kList, group.list);
    recorded.insert({folder / kAllLetters, folder / kList});
  }
  if (!fs::exists(path_)) return;
  std::vector<fs::path> left;
  for (const auto& entry : fs::recursive_directory_iterator(path_)) {
    if (entry.is_regular_file() && !recorded.contains(entry.path())) left.push_back(entry.path());
  }
  for (const auto& file : left) fs::remove(file);
}

}  // namespace apps
