#include "apps/night/night_run.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QLockFile>

#include <unistd.h>

#include "apps/checked_templates.h"
#include "apps/night/night_folder.h"
#include "apps/night/night_press.h"
#include "apps/night/template_catalogue.h"
#include "host/settings_file.h"
#include "host/system_clock.h"
#include "platform/agreed/letter_record.h"
#include "platform/agreed/letter_types.h"
#include "platform/failure.h"
#include "platform/text.h"
#include "server/batch/due_letters.h"
#include "server/batch/night_letters.h"
#include "server/batch/night_record.h"
#include "server/schema/schema.h"
#include "server/storage/server_folders.h"
#include "wordprocessor/document/template_file.h"

namespace apps {
namespace {

using platform::Failure;

namespace print_status = platform::print_status;

std::string MachineName() {
  std::array<char, 256> name{};  // POSIX: no host's name is longer
  return gethostname(name.data(), name.size() - 1) == 0 ? name.data() : "this machine";
}

std::string ThisProgram() {
  return "zemlo-night, process " + std::to_string(getpid()) + " on " + MachineName();
}

std::string Letters(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " letter" : " letters");
}

/// Held by the one run that works on a data folder; given up when its program ends, however it ends.
class NightLock {
 public:
  explicit NightLock(const host::DataFolder& folder)
      : lock_(QString::fromStdString((server::ServerFolder(folder.root()) / "night.lock").string())) {
    lock_.setStaleLockTime(0);
  }
  bool Take() { return lock_.tryLock(0); }

 private:
  QLockFile lock_;
};

/// These are printed by Troop/District, from the batch page.
bool WaitsForItsPrint(const std::string& letter_type) {
  return letter_type == platform::letter_type::kTaxLiability ||
         letter_type == platform::letter_type::kTaxWarrant;
}

}  // namespace

/// One run while it is worked on.
class Night::Shift {
 public:
  Shift(Night& night, const NightWishes& wishes, platform::Date day)
      : night_(night),
        wishes_(wishes),
        settings_(night.folder_),
        catalogue_(settings_, clock_, day),
        templates_(night.folder_.root()),
        letters_(night.database_, day),
        press_(LayoutFor(night.folder_, settings_, wishes.workers)) {}

  NightReport Work(const std::vector<server::RunItem>& due) {
    auto& database = night_.database_;
    report_.due = due.size();
    {
      server::Transaction transaction(database, server::Transaction::Purpose::kChanging);
      report_.run = server::CreateRun(database, due, clock_.Now(), ThisProgram());
      transaction.Commit();
    }
    const NightFolder folder(server::BatchFolder(night_.folder_.root()), report_.run);
    try {
      MakeAll(due, folder);
    } catch (const std::exception& failure) {
      report_.ended_early = failure.what();
    }
    server::Transaction transaction(database, server::Transaction::Purpose::kChanging);
    server::EndRun(database, report_.run, clock_.Now());
    transaction.Commit();
    folder.Finish(database);
    return report_;
  }

 private:
  static wordprocessor::LayoutSettings LayoutFor(const host::DataFolder& folder,
                                                 const host::SettingsFile& settings, int workers) {
    auto layout = wordprocessor::LayoutSettings::ForThisProgram();
    layout.work_folder = folder.Work();
    layout.document_time = settings.LayoutTimeOut();
    layout.workers = workers;
    return layout;
  }

  void MakeAll(const std::vector<server::RunItem>& due, const NightFolder& folder) {
    const auto last = std::min(wishes_.limit.value_or(due.size()), due.size());
    if (last < due.size()) report_.ended_early = "It was to make no more than " + Letters(last) + ".";
    for (std::size_t place = 0; place < last; ++place) {
      if (wishes_.stop && wishes_.stop()) {
        report_.ended_early = "It was ended by a signal.";
        break;
      }
      Begin(Prepare(static_cast<std::int64_t>(place) + 1, due[place]), folder);
      RecordDone(press_.Enough() - 1);
    }
    RecordDone(0);
  }

  server::NightLetter Prepare(std::int64_t item, const server::RunItem& what) {
    server::Transaction transaction(night_.database_, server::Transaction::Purpose::kReading);
    auto letter = letters_.Prepare(item, what);
    transaction.Commit();
    return letter;
  }

  void Begin(server::NightLetter letter, const NightFolder& folder) {
    std::filesystem::path template_file;
    if (letter.failure.empty()) letter.failure = FindTemplate(letter, template_file);
    if (!letter.failure.empty()) return Record(letter, {.failure = letter.failure});
    const auto pdf =
        folder.FileFor(letter.what.letter_type, letter.station, letter.item, letter.what.customer);
    press_.Begin(std::move(letter), template_file, pdf);
  }

  /// Returns why the letter has none; "" where it has.
  std::string FindTemplate(const server::NightLetter& letter, std::filesystem::path& file) {
    const auto& type = letter.what.letter_type;
    const auto name = letter.template_file.empty() ? catalogue_.InForce(type) : letter.template_file;
    if (name.empty())
      return "Letter type " + platform::Quoted(type) +
             " has no template that is in force. Ask the administrator for one.";
    try {
      const auto folder = server::TemplateFolder(night_.folder_.root());
      file = wordprocessor::TemplateFile(folder, (folder / name).string());
    } catch (const Failure& failure) {
      return failure.what();
    }
    return templates_.FaultOf(file.string(), type);
  }

  void RecordDone(std::size_t allowed) {
    while (const auto pressed = press_.Next(allowed)) {
      // What is not the letter's own would fail all others too; this one is due again.
      if (pressed->failure && pressed->failure->kind() == Failure::Kind::kUnavailable)
        throw *pressed->failure;
      server::NightOutcome outcome{.template_file = pressed->template_file};
      if (pressed->failure) outcome.failure = pressed->failure->what();
      outcome.print_status =
          WaitsForItsPrint(pressed->letter.what.letter_type) ? print_status::kMerged : print_status::kPrinted;
      Record(pressed->letter, outcome);
    }
  }

  void Record(const server::NightLetter& letter, const server::NightOutcome& outcome) {
    auto& database = night_.database_;
    server::Transaction transaction(database, server::Transaction::Purpose::kChanging);
    const auto number = server::RecordNightLetter(database, report_.run, letter, outcome, clock_.Now());
    transaction.Commit();
    ++(outcome.failure.empty() ? report_.made : report_.failed);
    if (!outcome.failure.empty())
      night_.tell_("Letter " + std::to_string(number) + " failed: " + outcome.failure);
  }

  Night& night_;
  const NightWishes& wishes_;
  host::SystemClock clock_;
  host::SettingsFile settings_;
  TemplateCatalogue catalogue_;
  CheckedTemplates templates_;
  server::NightLetters letters_;
  NightPress press_;
  NightReport report_;
};

Night::Night(const host::DataFolder& folder, std::function<void(const std::string&)> tell)
    : folder_(folder),
      tell_(std::move(tell)),
      database_(server::DatabaseFile(folder.root()), server::Database::Opening::kExisting) {
  server::PrepareSchema(database_, tell_);
}

std::vector<server::BatchRule> Night::Rules(platform::Date day) {
  const auto file = server::RuleFile(folder_.root());
  if (!std::filesystem::exists(file)) {
    throw Failure(Failure::Kind::kNotFound,
                  "There are no rules for the night: \"" + file.string() +
                      "\" is missing. \"zemlo-letters init\" puts the usual ones there.");
  }
  platform::TableFaults faults;
  auto rules = server::ReadBatchRules(file, database_, day, faults);
  RequireTemplates(rules, day, faults);
  faults.OrFail("No letter was made.");
  return rules;
}

void Night::RequireTemplates(const std::vector<server::BatchRule>& rules, platform::Date day,
                             platform::TableFaults& faults) const {
  const host::SettingsFile settings(folder_);
  const host::SystemClock clock;
  const TemplateCatalogue catalogue(settings, clock, day);
  for (const auto& rule : rules) {
    if (catalogue.InForce(rule.letter_type).empty()) {
      faults.Add(rule.place, "Letter type " + platform::Quoted(rule.letter_type) +
                                 " has no template that is in force on " + platform::DateText(day) + ".");
    }
  }
}

std::vector<server::RunItem> Night::Due(platform::Date day) {
  const auto rules = Rules(day);
  server::Transaction transaction(database_, server::Transaction::Purpose::kReading);
  auto due = server::FindDueLetters(database_, rules, day);
  transaction.Commit();
  return due;
}

void Night::EndLeftBehind() {
  const host::SystemClock clock;
  while (const auto left = server::FindRunningRun(database_)) {
    server::Transaction transaction(database_, server::Transaction::Purpose::kChanging);
    server::EndRun(database_, left->number, clock.Now());
    transaction.Commit();
    NightFolder(server::BatchFolder(folder_.root()), left->number).Finish(database_);
    tell_("Batch run " + std::to_string(left->number) + " of " + left->started + " (" + left->worker +
          ") ended before its letters were made. What it left is due again.");
  }
}

NightReport Night::Run(const NightWishes& wishes) {
  const host::SystemClock clock;
  const auto day = wishes.day.value_or(clock.Today());
  NightLock lock(folder_);
  if (!lock.Take()) {
    const auto running = server::FindRunningRun(database_);
    throw Failure(Failure::Kind::kUnavailable,
                  running ? "Batch run " + std::to_string(running->number) + " is running since " +
                                running->started + " (" + running->worker + "). This one has made nothing."
                          : "Another run is about to begin, or to end. This one has made nothing.");
  }
  EndLeftBehind();
  return Shift(*this, wishes, day).Work(Due(day));
}

void Night::Abandon(std::int64_t run) {
  NightLock lock(folder_);
  const auto running = server::FindRunningRun(database_);
  if (!running || running->number != run)
    throw Failure(Failure::Kind::kNotFound, "No batch run " + std::to_string(run) + " is running.");
  if (!lock.Take()) {
    throw Failure(Failure::Kind::kUnavailable, "Batch run " + std::to_string(run) + " is being worked on (" +
                                                   running->worker + "). End that program first.");
  }
  EndLeftBehind();
}

}  // namespace apps
