#include <QJsonObject>
#include <iostream>

#include "apps/letters/asked_letter.h"
#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/entry_options.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/letter_explanation.h"
#include "apps/letters/standard_streams.h"

namespace apps {
namespace {

using Wish = host::WindowlessPreview::Wish;

bool IsMade(const HeadlessOffice& office) {
  return !office.outcome().printed.empty() || !office.outcome().saved.empty();
}

/// One that is printed must not look refused, whatever came after it: it would be printed again.
int StatusOf(const HeadlessOffice& office, const ErrorNotice& error_notice) {
  if (IsMade(office)) return office.recorded() ? kDone : kNotRecorded;
  return office.refused() || error_notice.given() ? kRefused : kDone;
}

/// Of a letter that shows placeholders and was not printed or saved for that reason.
void TellWayOut(const HeadlessOffice& office) {
  if (office.outcome().not_filled.empty() || !office.refused() || IsMade(office)) return;
  std::cerr << "The letter did not go out. Mend its template; "
               "or --allow-unfilled prints or saves it with its placeholders.\n";
}

void Tell(const HeadlessOffice& office, bool is_done, const CommandLine& line) {
  const auto& outcome = office.outcome();
  TellNotFilled(office);
  if (IsMade(office) && !office.recorded()) {
    std::cerr << "The letter is not recorded in the letter history. "
                 "\"zemlo-letters unrecorded --record\" records it.\n";
  }
  if (line.IsSet("json")) {
    QJsonObject result;
    for (const auto& file : outcome.printed) result.insert("printed", QString::fromStdString(file));
    for (const auto& file : outcome.saved) result.insert("saved", QString::fromStdString(file));
    if (IsMade(office)) result.insert("recorded", office.recorded());
    if (!is_done) result.insert("reason", QString::fromStdString(Told()));
    return PrintJson(QJsonDocument(result));
  }
  for (const auto& file : outcome.printed) std::cout << "Printed: " << file << '\n';
  for (const auto& file : outcome.saved) std::cout << "Saved: " << file << '\n';
}

std::optional<std::string> OptionFault(const CommandLine& line) {
  if (auto fault = LetterOptionFault(line); !fault.empty()) return fault;
  if (auto fault = SubjectFault(line); !fault.empty()) return fault;
  if (line.IsSet("print") && line.IsSet("save")) return "--print and --save do not go together.";
  if (line.IsSet("explain") && line.IsSet("json")) return "--explain and --json do not go together.";
  if (auto fault = EntryOptionFault(line); !fault.empty()) return fault;
  return std::nullopt;
}

}  // namespace

int RunLetter(const QStringList& words) {
  CommandLine line("letter", "Produces a letter; without --print and --save it is only previewed");
  AddLetterOptions(line);
  AddEntryOptions(line);
  line.Option("print", "", "Prints the letter and records it.")
      .Option("save", "FILE", "Saves the letter as .docx or .pdf.")
      .Option("explain", "", "Shows what the server sent for the letter, and what is in error.")
      .Option(
          "allow-unfilled", "",
          "Prints or saves the letter with placeholders where bookmarks that overlap others are not filled. "
          "Of a template with a bookmark that has no field no letter is made.")
      .Option("yes", "", "Answers every other question about the letter with Yes.")
      .JsonOption();
  if (const auto status = line.Parse(words)) return *status;
  if (const auto fault = OptionFault(line)) return line.WrongUsage(*fault);

  HeadlessOffice::Options options;
  options.answers.yes = line.IsSet("yes");
  options.answers.allow_unfilled = line.IsSet("allow-unfilled");
  if (line.IsSet("save")) options.answers.save_file = std::filesystem::absolute(line.Value("save")).string();
  options.preview = line.IsSet("print") ? Wish::kPrint : line.IsSet("save") ? Wish::kSave : Wish::kClose;
  options.entries = EntriesOf(line);
  const bool has_entries = !options.entries.IsEmpty();
  options.tell_steps = !line.IsSet("json") && IsWatched();
  HeadlessOffice office(line.Data(), std::move(options));
  office.Start();
  if (office.refused()) return kRefused;
  const ErrorNotice error_notice(office, line.IsSet("explain"));
  AskForLetter(office, line);
  if (line.IsSet("explain")) ExplainLetter(office, std::cout);
  if (has_entries && !office.refused() && !error_notice.given()) RefuseUnusedEntries(office);
  TellWayOut(office);
  const int status = StatusOf(office, error_notice);
  Tell(office, status == kDone, line);
  return status;
}

}  // namespace apps
