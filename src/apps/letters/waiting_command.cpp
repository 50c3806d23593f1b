#include <algorithm>
#include <array>
#include <vector>

#include "apps/letters/chosen_letters.h"
#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/item_outcomes.h"
#include "apps/letters/listing.h"
#include "apps/letters/standard_streams.h"
#include "platform/agreed/letter_record.h"
#include "server/link/waiting_items.h"

namespace apps {
namespace {

constexpr auto kWaitingColumns = std::to_array<Listing::Column>({{"SEQ_NBR", "Letter"},
                                                                 {"ACTION", "Action"},
                                                                 {"RQST_TS", "Asked for"},
                                                                 {"RQST_USER_ID", "By"},
                                                                 {"BTCH_SEQ_NBR", "Run"},
                                                                 {"LTR_TYP_ID", "Type"},
                                                                 {"CUST_ID", "Customer"},
                                                                 {"FORM_NBR", "Document"},
                                                                 {"PRNT_STTS_CD", "Status"}});

int ListWaiting(const CommandLine& line) {
  const auto items = server::WaitingItems(line.Data().root());
  Listing listing{kWaitingColumns, {}};
  for (std::size_t row = 0; row < items->RecordCount(); ++row) {
    auto& texts = listing.rows.emplace_back();
    for (const auto& column : kWaitingColumns) texts.push_back(items->Text(row, column.key));
  }
  if (listing.rows.empty()) Notices() << "No letter waits for the batch run.\n";
  Print(listing, line.IsSet("json"));
  return kDone;
}

int CancelWaiting(const CommandLine& line) {
  std::vector<std::int64_t> numbers;
  for (int place = 1; place < line.ArgumentCount(); ++place) {
    const auto number = QString::fromStdString(line.Argument(place)).toLongLong();
    if (number < 1)
      return line.WrongUsage("\"cancel\" takes numbers of letters, not \"" + line.Argument(place) + "\".");
    if (std::ranges::find(numbers, number) == numbers.end()) numbers.push_back(number);
  }
  if (numbers.empty()) return line.WrongUsage("Say which letters: \"waiting cancel N\".");
  HeadlessOffice office(line.Data(), {});
  office.Start();
  if (office.refused()) return kRefused;
  ListLetters(office, numbers);
  if (office.refused()) return kRefused;
  SelectAllRows(office);
  office.workspace().SubmitBatch(std::string(platform::batch_action::kCancel));
  office.RunUntilIdle();
  return TellItemOutcomes(office, line.IsSet("json"));
}

}  // namespace

int RunWaiting(const QStringList& words) {
  CommandLine line("waiting",
                   "Lists the letters that wait for the batch run; \"cancel N ...\" takes them back",
                   "[cancel N ...]");
  line.DataOption().JsonOption();
  constexpr int kMostArguments = 1'001;
  if (const auto status = line.Parse(words, 0, kMostArguments)) return *status;
  if (line.ArgumentCount() == 0) return ListWaiting(line);
  if (line.Argument(0) != "cancel")
    return line.WrongUsage("After \"waiting\" comes \"cancel\" or nothing, not \"" + line.Argument(0) +
                           "\".");
  return CancelWaiting(line);
}

}  // namespace apps
