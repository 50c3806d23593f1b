#include <array>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/listing.h"
#include "platform/agreed/letter_types.h"

namespace apps {
namespace {

struct OnlineIndicator {
  std::string_view code;
  const char* meaning;
};

constexpr std::array<OnlineIndicator, 4> kOnlineIndicators{
    {{platform::made_where::kOnline, "on line"},
     {platform::made_where::kBatch, "batch only"},
     {platform::made_where::kElsewhere, "electronic, no template"},
     {platform::made_where::kSystem, "system"}}};

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
  office.Start();  // templates that are missing on this machine are fetched: none of them is a reason
  auto& list = office.page().ZEMLO_LetterType;
  list.UserOpens();
  static constexpr std::array<Listing::Column, 6> kColumns{{{"type", "Type"},
                                                            {"name", "Name"},
                                                            {"production", "Produced"},
                                                            {"form_types", "Form types"},
                                                            {"template", "Template"},
                                                            {"fault", "Why no letter can be made"}}};
  Listing listing{kColumns, {}};
  for (std::size_t row = 0; list.rows() && row < list.rows()->RecordCount(); ++row) {
    const auto code = list.rows()->Text(row, "CD_TBL_CD");
    if (code.empty()) continue;
    const auto indicator = list.rows()->Text(row, "LTR_IND");
    const auto in_force = indicator == platform::made_where::kElsewhere ? workspace::TemplateInForce()
                                                                        : office.workspace().TemplateOf(code);
    listing.rows.push_back({code, list.rows()->Text(row, "CD_TBL_DES"), MeaningOf(indicator),
                            workspace::RequiredFormTypes(office.office().services().utilities, code),
                            in_force.name, in_force.fault});
  }
  if (office.refused()) return kRefused;
  Print(listing, line.IsSet("json"));
  return kDone;
}

}  // namespace apps
