#include <array>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/listing.h"

namespace apps {
namespace {

struct OnlineIndicator {
  std::string_view code;
  const char* meaning;
};

constexpr std::array<OnlineIndicator, 4> kOnlineIndicators{
    {{"O", "on line"}, {"B", "batch only"}, {"E", "electronic, no template"}, {"S", "system"}}};

std::string MeaningOf(std::string_view code) {
  for (const auto& indicator : kOnlineIndicators) {
    if (indicator.code == code) return indicator.meaning;
  }
  return std::string(code);
}

}  // namespace

int RunTypes(const QStringList& words) {
  CommandLine line("types", "Lists the letter types a letter can be asked for");
  line.DataOption().JsonOption();
  if (const auto status = line.Parse(words)) return *status;

  HeadlessOffice office(line.Data(), {});
  auto& list = office.page().ZEMLO_LetterType;
  list.UserOpens();
  static constexpr std::array<Listing::Column, 4> kColumns{
      {{"type", "Type"}, {"name", "Name"}, {"production", "Produced"}, {"form_types", "Form types"}}};
  Listing listing{kColumns, {}};
  for (std::size_t row = 0; list.rows() && row < list.rows()->RecordCount(); ++row) {
    const auto code = list.rows()->Text(row, "CD_TBL_CD");
    if (code.empty()) continue;
    listing.rows.push_back({code, list.rows()->Text(row, "CD_TBL_DES"),
                            MeaningOf(list.rows()->Text(row, "LTR_IND")),
                            workspace::RequiredFormTypes(office.office().services().utilities, code)});
  }
  if (office.refused()) return kRefused;
  Print(listing, line.IsSet("json"));
  return kDone;
}

}  // namespace apps
