#include <algorithm>
#include <array>
#include <iostream>
#include <limits>
#include <string>
#include <vector>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/letters_left_behind.h"
#include "apps/letters/listing.h"
#include "apps/letters/page_user.h"
#include "apps/letters/standard_streams.h"

namespace apps {
namespace {

using platform::PrintJournal;
using Letters = std::vector<PrintJournal::Left>;

constexpr auto kColumns = std::to_array<Listing::Column>(
    {{"note", "Note"}, {"letter", "Letter"}, {"state", "State"}, {"user", "User"}});
constexpr auto kResultColumns = std::to_array<Listing::Column>({{"note", "Note"},
                                                                {"letter", "Letter"},
                                                                {"state", "State"},
                                                                {"user", "User"},
                                                                {"result", "Result"},
                                                                {"reason", "Reason"}});

std::vector<std::string> Arguments(const CommandLine& line) {
  std::vector<std::string> arguments;
  arguments.reserve(static_cast<std::size_t>(line.ArgumentCount()));
  for (int place = 0; place < line.ArgumentCount(); ++place) arguments.push_back(line.Argument(place));
  return arguments;
}

/// The letters of those notes; all where none is named. Refuses a note that is not there.
Letters Chosen(const Letters& letters, const std::vector<std::string>& keys) {
  if (keys.empty()) return letters;
  Letters chosen;
  for (const auto& key : keys) {
    const auto found = std::ranges::find_if(
        letters, [&](const PrintJournal::Left& letter) { return letter.note.message_key == key; });
    if (found == letters.end()) {
      Refuse("There is no note \"" + key +
             "\" that waits for you. \"zemlo-letters unrecorded\" lists the notes.");
    }
    chosen.push_back(*found);
  }
  return chosen;
}

void AddResult(Listing& listing, const PrintJournal::Left& letter, const char* result,
               const std::string& reason = "") {
  auto row = LettersLeftBehind::Row(letter);
  row.insert(row.end(), {result, reason});
  listing.rows.push_back(std::move(row));
}

int List(const host::DataFolder& folder, bool as_json) {
  const LettersLeftBehind left(folder);
  Listing listing{kColumns, {}};
  std::ranges::transform(left.letters(), std::back_inserter(listing.rows), LettersLeftBehind::Row);
  std::ranges::copy(left.Others(), std::back_inserter(listing.rows));
  Print(listing, as_json);
  return kDone;
}

int Forget(const host::DataFolder& folder, const std::vector<std::string>& keys, bool as_json) {
  LettersLeftBehind left(folder);
  Listing listing{kResultColumns, {}};
  for (const auto& letter : Chosen(left.letters(), keys)) {
    left.Forget(letter.note.message_key);
    AddResult(listing, letter, "forgotten");
  }
  Print(listing, as_json);
  return kDone;
}

/// Whether the server has confirmed the record.
bool IsRecorded(HeadlessOffice& office, const PrintJournal::Left& letter) {
  auto& letters = office.workspace().unrecorded_letters();
  bool is_recorded = false;
  const auto settled = letters.Settled.Connect([&](const std::string& key, PrintJournal::Outcome outcome) {
    is_recorded |= key == letter.note.message_key && outcome == PrintJournal::Outcome::kRecorded;
  });
  letters.RecordAgain(letter.note);
  office.RunUntilIdle();
  return is_recorded;
}

int Record(const host::DataFolder& folder, const std::vector<std::string>& keys, bool as_json) {
  HeadlessOffice::Options options;
  options.tell_left_behind = false;
  HeadlessOffice office(folder, std::move(options));
  office.Start();
  if (office.refused()) return kRefused;
  const auto letters = office.office().services().print_journal.LeftBehind();
  Listing listing{kResultColumns, {}};
  bool all_recorded = true;
  for (const auto& letter : Chosen(letters, keys)) {
    if (keys.empty() && letter.stage == platform::PrintStage::kHandingOver) {
      AddResult(listing, letter, "left", "Look whether it was printed, and name the note to record it.");
      continue;
    }
    const Telling telling;
    const bool is_recorded = IsRecorded(office, letter);
    AddResult(listing, letter, is_recorded ? "recorded" : "not recorded", is_recorded ? "" : telling.Text());
    all_recorded = all_recorded && is_recorded;
  }
  Print(listing, as_json);
  return all_recorded ? kDone : kNotRecorded;
}

}  // namespace

int RunUnrecorded(const QStringList& words) {
  CommandLine line(
      "unrecorded",
      "Lists printed letters that are not recorded in the letter history, and records or forgets them",
      "[NOTE...]");
  line.DataOption()
      .Option("record", "", "Records those letters; without NOTE all that were printed for certain.")
      .Option("forget", "", "Forgets those letters: they will not be in the letter history. NOTE is needed.")
      .JsonOption();
  if (const auto status = line.Parse(words, 0, std::numeric_limits<int>::max())) return *status;
  const auto keys = Arguments(line);
  const bool records = line.IsSet("record");
  const bool forgets = line.IsSet("forget");
  if (records && forgets) return line.WrongUsage("--record and --forget do not go together.");
  if (forgets && keys.empty()) return line.WrongUsage("Name the notes of the letters to forget.");
  if (!records && !forgets && !keys.empty()) return line.WrongUsage("Say --record or --forget.");

  const bool as_json = line.IsSet("json");
  if (records) return Record(line.Data(), keys, as_json);
  return forgets ? Forget(line.Data(), keys, as_json) : List(line.Data(), as_json);
}

}  // namespace apps
