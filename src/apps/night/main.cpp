#include <algorithm>
#include <array>
#include <cstring>
#include <iostream>
#include <thread>

#include "apps/letters/command_line.h"
#include "apps/letters/interruption.h"
#include "apps/letters/listing.h"
#include "apps/letters/program.h"
#include "apps/letters/standard_streams.h"
#include "apps/night/night_run.h"
#include "apps/product_files.h"
#include "host/system_clock.h"
#include "platform/failure.h"

namespace apps {
namespace {

// How a run ended.
constexpr int kAllMade = 0;
constexpr int kSomeFailed = 1;
constexpr int kNotStarted = 3;

void TellNotice(const std::string& sentence) {
  Notices() << sentence << '\n';
}

constexpr auto kDueColumns = std::to_array<Listing::Column>({{"SRC_CD", "Why"},
                                                             {"RULE_NM", "Rule"},
                                                             {"LTR_TYP_ID", "Type"},
                                                             {"CUST_ID", "Customer"},
                                                             {"FORM_TYP_CD", "Form type"},
                                                             {"FORM_NBR", "Form"},
                                                             {"SEQ_NBR", "Letter"}});
constexpr auto kRunColumns = std::to_array<Listing::Column>({{"BTCH_SEQ_NBR", "Run"},
                                                             {"BTCH_STATUS", "Status"},
                                                             {"BTCH_CRTE_TS", "Created"},
                                                             {"PRCS_END_TS", "Ended"},
                                                             {"BTCH_LTR_CNT", "Letters"},
                                                             {"LTR_PRCS_CNT", "Processed"},
                                                             {"LTR_SCS_CNT", "Successful"},
                                                             {"WRKR_TXT", "Worker"}});
constexpr auto kLetterColumns = std::to_array<Listing::Column>({{"ITM_NBR", "No."},
                                                                {"SRC_CD", "Why"},
                                                                {"RULE_NM", "Rule"},
                                                                {"LTR_TYP_ID", "Type"},
                                                                {"CUST_ID", "Customer"},
                                                                {"FORM_NBR", "Form"},
                                                                {"SEQ_NBR", "Letter"},
                                                                {"RSLT_CD", "Result"},
                                                                {"PRCS_ERR_TXT", "Reason"}});

void PrintRows(std::span<const Listing::Column> columns, const platform::RecordSet& rows, bool as_json) {
  Listing listing{columns, {}};
  for (std::size_t row = 0; row < rows.RecordCount(); ++row) {
    auto& texts = listing.rows.emplace_back();
    for (const auto& column : columns) texts.push_back(rows.Text(row, column.key));
  }
  Print(listing, as_json);
}

void PrintDue(const std::vector<server::RunItem>& due, bool as_json) {
  Listing listing{kDueColumns, {}};
  for (const auto& item : due) {
    listing.rows.push_back({item.source, item.rule, item.letter_type, item.customer, item.form_type,
                            item.form_number, item.letter ? std::to_string(*item.letter) : ""});
  }
  if (due.empty()) Notices() << "No letter is due.\n";
  Print(listing, as_json);
}

CommandLine& WithDay(CommandLine& line) {
  return line.Option("date", "DAY", "The letters' day, \"yyyy-mm-dd\" (default: today).");
}

/// The day asked for, today without; nothing where it is none.
std::optional<platform::Date> DayOf(const CommandLine& line) {
  if (!line.IsSet("date")) return host::SystemClock().Today();
  return platform::ParseDate(line.Value("date"));
}

int NoDay(const CommandLine& line) {
  return line.WrongUsage("\"" + line.Value("date") + "\" is no day; write it as \"yyyy-mm-dd\".");
}

int TellReport(const NightReport& report) {
  std::cout << "Batch run " << report.run << ": " << report.due << " due, " << report.made << " made, "
            << report.failed << " failed.\n";
  if (report.made + report.failed < report.due) {
    std::cerr << report.due - report.made - report.failed << " are left for the next run. "
              << report.ended_early.value_or("") << '\n';
  }
  return report.made == report.due ? kAllMade : kSomeFailed;
}

int RunNight(const QStringList& words) {
  CommandLine line("run", "Makes what is due tonight");
  WithDay(line.DataOption())
      .Option("workers", "N", "Layout processes, at most one a core (default: 1).")
      .Option("limit", "N", "Makes no more letters than that; the rest is due again.")
      .Option("dry-run", "", "Lists what would be made, and makes nothing.");
  if (const auto status = line.Parse(words)) return *status;
  const auto day = DayOf(line);
  if (!day) return NoDay(line);
  NightWishes wishes{.day = day, .stop = [] { return Interruption::Signal() != 0; }};
  const int cores = static_cast<int>(std::max(1U, std::thread::hardware_concurrency()));
  for (const auto* option : {"workers", "limit"}) {
    if (line.IsSet(option) && !line.Number(option, 1))
      return line.WrongUsage("--" + std::string(option) + " takes a number from 1 up, not \"" +
                             line.Value(option) + "\".");
  }
  wishes.workers = std::min(line.Number("workers", 1).value_or(1), cores);
  if (const auto limit = line.Number("limit", 1)) wishes.limit = static_cast<std::size_t>(*limit);
  try {
    Night night(line.Data(), TellNotice);
    if (line.IsSet("dry-run")) {
      PrintDue(night.Due(*day), false);
      return kAllMade;
    }
    const Interruption interruption;
    return TellReport(night.Run(wishes));
  } catch (const platform::Failure& failure) {
    std::cerr << failure.what() << '\n';
    return kNotStarted;
  }
}

int RunDue(const QStringList& words) {
  CommandLine line("due", "Lists what a run would make, and why");
  WithDay(line.DataOption()).JsonOption();
  if (const auto status = line.Parse(words)) return *status;
  const auto day = DayOf(line);
  if (!day) return NoDay(line);
  PrintDue(Night(line.Data(), TellNotice).Due(*day), line.IsSet("json"));
  return kDone;
}

int RunStatus(const QStringList& words) {
  CommandLine line("status", "Says whether a run is under way, and how the last ones ended");
  line.DataOption().JsonOption();
  if (const auto status = line.Parse(words)) return *status;
  Night night(line.Data(), TellNotice);
  if (!server::FindRunningRun(night.database())) Notices() << "No run is under way.\n";
  const auto runs = night.database().Select("SELECT * FROM batch_run ORDER BY BTCH_SEQ_NBR DESC LIMIT 10");
  PrintRows(kRunColumns, *runs, line.IsSet("json"));
  return kDone;
}

std::optional<int> RunNumber(const CommandLine& line) {
  bool is_number = false;
  const int number = QString::fromStdString(line.Argument(0)).toInt(&is_number);
  return is_number && number > 0 ? std::optional(number) : std::nullopt;
}

int RunShow(const QStringList& words) {
  CommandLine line("show", "Lists the letters of a run, and what became of each", "SEQ");
  line.DataOption().JsonOption();
  if (const auto status = line.Parse(words, 1, 1)) return *status;
  const auto run = RunNumber(line);
  if (!run) return line.WrongUsage("\"" + line.Argument(0) + "\" is no number of a run.");
  Night night(line.Data(), TellNotice);
  const auto letters = night.database().Select(
      R"(SELECT batch_letter.*, PRCS_ERR_TXT FROM batch_letter LEFT JOIN letter_history
           ON letter_history.SEQ_NBR = batch_letter.SEQ_NBR AND RSLT_CD = 'F'
         WHERE BTCH_SEQ_NBR = ? ORDER BY ITM_NBR)",
      {*run});
  const auto is_there =
      !night.database().Select("SELECT 1 FROM batch_run WHERE BTCH_SEQ_NBR = ?", {*run})->IsEmpty();
  if (!is_there) {
    std::cerr << "There is no batch run " << *run << ".\n";
    return kRefused;
  }
  PrintRows(kLetterColumns, *letters, line.IsSet("json"));
  return kDone;
}

int RunAbandon(const QStringList& words) {
  CommandLine line("abandon", "Ends a run that its program has left behind", "SEQ");
  line.DataOption();
  if (const auto status = line.Parse(words, 1, 1)) return *status;
  const auto run = RunNumber(line);
  if (!run) return line.WrongUsage("\"" + line.Argument(0) + "\" is no number of a run.");
  Night(line.Data(), TellNotice).Abandon(*run);
  return kDone;
}

struct Command {
  const char* name;
  const char* summary;
  int (*run)(const QStringList& words);
};
constexpr Command kCommands[] = {
    {"run", "Makes what is due tonight", RunNight},
    {"due", "Lists what a run would make, and why", RunDue},
    {"status", "Says whether a run is under way, and how the last ones ended", RunStatus},
    {"show", "Lists the letters of a run", RunShow},
    {"abandon", "Ends a run that its program has left behind", RunAbandon},
};

void PrintUsage(std::ostream& out) {
  out << "Makes the letters that are due, without anybody at the screen: for a timer.\n\n"
         "Usage: zemlo-night COMMAND [options]\n\n"
         "Commands:\n";
  for (const auto& command : kCommands)
    out << "  " << command.name << std::string(10 - std::strlen(command.name), ' ') << command.summary
        << '\n';
  out << R"(
"zemlo-night COMMAND --help" explains a command. Exit status of a run: 0 all letters were made; 1 some
failed, or are left for the next run; 2 wrong usage; 3 the run could not start: nothing was made.
)";
}

int Run(const QStringList& words) {
  const auto name = words.isEmpty() ? std::string() : words.first().toStdString();
  if (name == "--version") {
    std::cout << VersionText("zemlo-night");
    return kDone;
  }
  for (const auto& command : kCommands) {
    if (name == command.name) return command.run(words.mid(1));
  }
  const bool asks_help = name == "--help" || name == "-h";
  if (!asks_help && !name.empty()) std::cerr << "There is no command \"" << name << "\".\n\n";
  PrintUsage(asks_help ? std::cout : std::cerr);
  return asks_help ? kDone : kWrongUsage;
}

}  // namespace
}  // namespace apps

int main(int argc, char** argv) {
  return apps::RunProgram(argc, argv, apps::Run);
}
