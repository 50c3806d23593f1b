#include <QJsonObject>
#include <array>
#include <filesystem>
#include <iostream>
#include <string>

#include "apps/letters/chosen_letters.h"
#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/item_outcomes.h"
#include "apps/letters/listing.h"
#include "apps/letters/standard_streams.h"

namespace apps {
namespace {

using workspace::TrackingPage;

/// The command is the Yes to what the page asks before it acts.
HeadlessOffice::Options Confirmed(const CommandLine& line) {
  HeadlessOffice::Options options;
  options.answers.yes = true;
  options.tell_steps = !line.IsSet("json") && IsWatched();
  return options;
}

/// Starts the office and chooses the letters. A status where there is nothing to go on with.
std::optional<int> Choose(HeadlessOffice& office, const CommandLine& line, std::size_t option) {
  office.Start();
  if (office.refused()) return kRefused;
  const auto letters = ChooseLetters(office, line);
  if (office.refused()) return kRefused;
  if (letters == 0 && !line.IsSet("json")) return kDone;
  if (letters > 0 && !line.IsSet("dry-run")) return std::nullopt;
  TellWhatWouldBeDone(office, option, line);
  return office.refused() ? kRefused : kDone;
}

void TellFiles(const std::vector<std::string>& files, const char* verb, bool as_json) {
  if (!as_json) {
    for (const auto& file : files) std::cout << verb << ": " << file << '\n';
    return;
  }
  QJsonArray list;
  for (const auto& file : files) list.append(QString::fromStdString(file));
  PrintJson(QJsonDocument(list));
}

int GiveToBatch(const char* command, const char* summary, std::size_t option, const QStringList& words) {
  CommandLine line(command, summary);
  AddLetterChoice(line.DataOption());
  line.JsonOption();
  if (const auto status = line.Parse(words)) return *status;
  if (const auto fault = LetterChoiceFault(line)) return line.WrongUsage(*fault);
  HeadlessOffice office(line.Data(), Confirmed(line));
  if (const auto status = Choose(office, line, option)) return *status;
  ActOnLetters(office, option);
  return TellItemOutcomes(office, line.IsSet("json"));
}

std::string FileOf(const CommandLine& line, const platform::RecordSet& letters, std::size_t row) {
  if (line.IsSet("out")) return std::filesystem::absolute(line.Value("out")).string();
  const auto name = "letter-" + letters.Text(row, "SEQ_NBR") + (line.IsSet("docx") ? ".docx" : ".pdf");
  return (std::filesystem::absolute(line.Value("folder")) / name).string();
}

std::optional<std::string> SaveFault(const CommandLine& line) {
  if (line.IsSet("out") == line.IsSet("folder"))
    return "Say where to: --out FILE for one letter, or --folder DIR.";
  if (line.IsSet("out") && (line.IsSet("from-search") || line.Values("letter").size() > 1))
    return "--out is for one letter; --folder takes several.";
  if (line.IsSet("out") && line.IsSet("docx")) return "--docx goes with --folder: FILE has its ending.";
  return LetterChoiceFault(line);
}

}  // namespace

int RunResubmit(const QStringList& words) {
  return GiveToBatch(
      "resubmit",
      "Gives letters to tonight's batch: made again, or printed again where that is all they lack",
      TrackingPage::kResubmit, words);
}

int RunBatchReprint(const QStringList& words) {
  return GiveToBatch("batch-reprint", "Gives letters to tonight's batch, to be printed again as they are",
                     TrackingPage::kReprintBatch, words);
}

int RunReprint(const QStringList& words) {
  CommandLine line("reprint", "Prints letters again on the local printer, as they are stored");
  AddLetterChoice(line.DataOption());
  line.JsonOption();
  if (const auto status = line.Parse(words)) return *status;
  if (const auto fault = LetterChoiceFault(line)) return line.WrongUsage(*fault);
  HeadlessOffice office(line.Data(), Confirmed(line));
  if (const auto status = Choose(office, line, TrackingPage::kReprintLocal)) return *status;
  const auto wanted = office.workspace().pages().tracking.sdgGrid.selected_rows().size();
  ActOnLetters(office, TrackingPage::kReprintLocal);
  const auto& printed = office.outcome().printed;
  TellFiles(printed, "Printed", line.IsSet("json"));
  if (printed.size() < wanted) {
    std::cerr << printed.size() << " of " << wanted << " letters were printed.\n";
    return kRefused;
  }
  return office.recorded() ? kDone : kNotRecorded;
}

int RunSave(const QStringList& words) {
  CommandLine line("save", "Saves letters that were produced, as they are stored");
  line.DataOption()
      .Option("out", "FILE", "Where one letter goes, .pdf or .docx.")
      .Option("folder", "DIR", "Where several go, each as \"letter-N.pdf\".")
      .Option("docx", "", "With --folder: as documents instead of PDF.");
  AddLetterChoice(line);
  line.JsonOption();
  if (const auto status = line.Parse(words)) return *status;
  if (const auto fault = SaveFault(line)) return line.WrongUsage(*fault);
  HeadlessOffice office(line.Data(), Confirmed(line));
  if (const auto status = Choose(office, line, TrackingPage::kSave)) return *status;
  auto& letters = office.workspace().pages().tracking.sdgGrid;
  const auto wanted = letters.rows()->RecordCount();
  for (std::size_t row = 0; row < wanted && !office.refused(); ++row) {
    office.shell().SaveTo(FileOf(line, *letters.rows(), row));
    SelectRows(office, {row});
    ActOnLetters(office, TrackingPage::kSave);
  }
  const auto& saved = office.outcome().saved;
  TellFiles(saved, "Saved", line.IsSet("json"));
  if (saved.size() == wanted && !office.refused()) return kDone;
  std::cerr << saved.size() << " of " << wanted << " letters were saved.\n";
  return kRefused;
}

int RunReturnMail(const QStringList& words) {
  CommandLine line("return-mail", "Marks the address that a letter was sent to: the letter came back");
  line.DataOption().Option("letter", "N", "The letter that came back.").JsonOption();
  if (const auto status = line.Parse(words)) return *status;
  const auto number = line.Number("letter", 1);
  if (!number) return line.WrongUsage("Say which letter came back: --letter N.");
  HeadlessOffice office(line.Data(), Confirmed(line));
  office.Start();
  if (office.refused()) return kRefused;
  ListLetters(office, {*number});
  if (office.refused()) return kRefused;
  SelectAllRows(office);
  ActOnLetters(office, TrackingPage::kReturnMail);
  const auto& answer = office.workspace().parts().return_mail.answer();
  const bool is_done = !office.refused() && !answer.empty();
  if (line.IsSet("json")) {
    PrintJson(QJsonDocument(
        QJsonObject{{"letter", *number}, {"marked", is_done}, {"answer", QString::fromStdString(answer)}}));
  } else if (is_done) {
    std::cout << answer << '\n';
  }
  return is_done ? kDone : kRefused;
}

}  // namespace apps
