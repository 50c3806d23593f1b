#include "apps/letters/headless_office.h"

#include <iostream>
#include <set>
#include <string>
#include <utility>

#include "apps/letters/letters_left_behind.h"
#include "apps/letters/standard_streams.h"

namespace apps {

HeadlessOffice::HeadlessOffice(const host::DataFolder& folder, Options options)
    : folder_(folder),
      options_(std::move(options)),
      shell_(loop_, {std::cerr, Notices()}, options_.answers),
      preview_(loop_, options_.entries.IsEmpty() ? options_.preview : host::WindowlessPreview::Wish::kClose),
      office_(folder, {shell_,
                       shell_,
                       loop_,
                       preview_,
                       outcome_,
                       [this](const std::string& description, const std::string& procedure) {
                         TellReport(description, procedure);
                       },
                       {},
                       [this](const std::string& text) { Notices() << text << '\n'
                                                                   << std::flush; }}) {
  for (const auto& fault : office_.Faults()) Notices() << fault << '\n';
  shell_.AnswerFormsWith([this](platform::Form& form) { return AnswerLetterForm(form); });
  if (options_.tell_steps) {
    // Files are looked at and fetched one by one: each step is told once.
    shell_.status_listener = [told = std::set<std::string>()](const std::string& text) mutable {
      if (told.insert(text).second) Notices() << "   " << text << '\n' << std::flush;
    };
  }
}

void HeadlessOffice::Start() {
  workspace().Initialize();
  auto& notes = workspace().unrecorded_letters();
  notes.OfferNothing();
  settled_ = notes.Settled.Connect([this](const std::string&, platform::PrintJournal::Outcome outcome) {
    ++(outcome == platform::PrintJournal::Outcome::kRecorded ? recorded_ : not_recorded_);
  });
  if (options_.tell_left_behind) TellLettersLeftBehind();
  workspace().Show();
  RunUntilIdle();
  has_started_ = true;
  TellOtherFaults();
  // A template that could not be fetched stops the letter that needs it, and no other.
  shell_.AskingBegins();
}

void HeadlessOffice::TellReport(const std::string& description, const std::string& procedure) {
  // A wrong line of the template catalogue, or a damaged note, is a fault of that line or note.
  if (procedure == "ZEMLO_Corresp.CopyTemplate" || procedure == "PrintJournal.LeftBehind") {
    if (description != last_report_) other_faults_.insert(description);
    if (has_started_) TellOtherFaults();
    return;
  }
  reported_ = true;
  other_faults_.erase(description);
  // One fault is met by many procedures.
  if (std::exchange(last_report_, description) != description) std::cerr << description << '\n';
}

void HeadlessOffice::TellOtherFaults() {
  for (const auto& fault : other_faults_) Notices() << fault << '\n';
  other_faults_.clear();
}

void HeadlessOffice::TellLettersLeftBehind() const {
  const auto letters = LettersLeftBehind(folder_).Count();
  if (letters == 0) return;
  Notices() << (letters == 1 ? "A letter that was printed is"
                             : std::to_string(letters) + " letters that were printed are")
            << " not recorded in the letter history. \"zemlo-letters unrecorded\" lists what waits.\n";
}

void HeadlessOffice::RunUntilIdle() {
  loop_.RunPending();
  loop_.RunUntil([this] { return !office_.HasWorkUnderWay() && !preview_.is_open(); });
  loop_.RunPending();
}

bool HeadlessOffice::AnswerLetterForm(platform::Form& form) {
  auto* letter = dynamic_cast<composition::frmLetter*>(&form);
  if (letter == nullptr) return false;
  asked_for_entries_ = true;
  if (const auto refusal = options_.entries.Refusal(*letter)) {
    std::cerr << *refusal << '\n';
    entries_refused_ = true;
  } else {
    CompleteLetter(*letter);
  }
  if (letter->shown()) letter->cmdCancel.UserClicks();
  return true;
}

/// The user confirms, and stays in the form until it closes or the preview has come to nothing.
void HeadlessOffice::CompleteLetter(composition::frmLetter& form) {
  options_.entries.FillIn(form);
  preview_.SetWish(options_.preview);
  form.cmdOK.UserClicks();
  std::cerr << OptionsForMissing(form);
  loop_.RunUntil([&] { return !form.shown() || (!office_.HasWorkUnderWay() && !preview_.is_open()); });
}

}  // namespace apps
