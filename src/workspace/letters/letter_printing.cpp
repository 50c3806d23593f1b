#include "workspace/letters/letter_printing.h"

#include <utility>

#include "platform/agreed/letter_record.h"
#include "platform/agreed/requests.h"
#include "workspace/letters/proposed_file_name.h"

namespace workspace {

namespace {

using platform::Trap;

constexpr std::string_view kNewLetter = "XMLRequest";
constexpr const char* kPrintDoc = "ZEMLO_Corresp.PrintDoc";

/// How a person knows the letter.
std::string NameOf(const LetterData& letter) {
  std::string name = "\"" + letter.template_name + "\"";
  if (letter.sequence_number != 0) name += ", number " + std::to_string(letter.sequence_number);
  if (!letter.customer_id.empty()) name += ", for customer " + letter.customer_id;
  if (!letter.form_number.empty()) name += ", about form " + letter.form_number;
  return name;
}

}  // namespace

composition::ZEMLO_PreviewDoc& LetterPrinting::RequirePreview() {
  if (!mclsPreview_) {
    mclsPreview_ = std::make_unique<composition::ZEMLO_PreviewDoc>(uses_.services);
    word_printed_ = mclsPreview_->WordPrinted.Connect([this] { mclsPreview_WordPrinted(); });
  }
  mclsPreview_->BadAddress = false;
  return *mclsPreview_;
}

// The one way to a preview: what is printed from it is recorded as this letter.
composition::ZEMLO_PreviewDoc& LetterPrinting::PreviewOf(const LetterData& letter,
                                                         const std::string& request_name) {
  previewed_letter_ = letter;
  previewed_request_ = request_name;
  ExpectPrint(letter, request_name);
  auto& preview = RequirePreview();
  preview.ProposedName = ProposedFileName(letter, uses_.services.clock.Today());
  return preview;
}

void LetterPrinting::Preview(const LetterData& letter, const std::string& request_name) {
  PreviewOf(letter, request_name).PreviewDoc(letter.template_path, letter.template_name, letter.context);
}

void LetterPrinting::Save(const LetterData& letter, const std::string& request_name) {
  auto& preview = PreviewOf(letter, request_name);
  preview.BadAddress = letter.print_status != platform::print_status::kAddressNotVerified;
  preview.SaveDocument(letter.template_path, letter.template_name, letter.context);
  // A save that was cancelled must not keep a print of the preview that still stands from being recorded.
  if (mclsPreview_) mclsPreview_->BadAddress = false;
}

void LetterPrinting::Print(LetterData& letter, const std::string& request_name) {
  ExpectPrint(letter, request_name);
  const bool is_printed =
      RequirePreview().PrintDocument(letter.template_path, letter.context, /*lBlnShowDialog=*/false);
  if (is_printed) {
    PrintDoc(letter, request_name);
  } else {
    TellRun(request_name, mclsPreview_->print_fault());
  }
}

void LetterPrinting::TellRun(const std::string& request_name, const platform::PrintFault& fault) const {
  if (auto* run = uses_.run_of(request_name)) run->LetterFailed(fault);
}

void LetterPrinting::mclsPreview_WordPrinted() {
  Trap(uses_.services, "ZEMLO_Corresp.mclsPreview_WordPrinted", [&] {
    PrintDoc(previewed_letter_, previewed_request_);
    ReleasePreview();
  });
}

void LetterPrinting::ReleasePreview() {
  word_printed_.Disconnect();
  mclsPreview_.reset();
  uses_.services.print_journal.Expect({});
}

void LetterPrinting::PrintDoc(LetterData& letter, const std::string& request_name) {
  auto* const run = uses_.run_of(request_name);
  std::optional<platform::PrintFault> fault;
  bool is_counted = false;
  const auto record = [&] {
    RequestDescription message{.type = platform::message_type::kChange, .status = "Saving letter history"};
    message.name = letter.from_batch_browser ? "BatchAU" : "LetterAU";
    AddRecord(message, letter, request_name);
    if (message.records.empty()) throw platform::AbandonStep();
    // Where the note cannot be brought on, the letter is recorded all the same.
    Trap(uses_.services, kPrintDoc, [&] { message.message_key = uses_.services.print_journal.Record(); });
    is_counted = true;
    ContinueRun(run, message);
    uses_.envelope.Send(message);
  };
  const bool is_recorded = Trap(uses_.services, kPrintDoc, [&] { platform::KeepFault(fault, record); });
  if (is_recorded || run == nullptr) return;
  // It has been printed all the same, and must not be printed again.
  RequestDescription unsent;
  if (!is_counted) Trap(uses_.services, kPrintDoc, [&] { run->LetterPrinted(unsent); });
  run->Stop(fault ? fault->reason : "The letter could not be recorded.");
}

void LetterPrinting::AddRecord(RequestDescription& message, LetterData& letter,
                               const std::string& request_name) const {
  if (letter.is_trial) return;
  const bool is_stored = request_name == "Letter_Preview" || request_name == "Letter_Save";
  if (request_name == kNewLetter) {
    uses_.history.SendLetterHistoryADD(message, letter);
  } else if (is_stored || uses_.run_of(request_name) != nullptr) {
    uses_.history.SendLetterHistoryUPD(message, letter);
  }
}

// The printed letter is recorded, whatever becomes of the rest of its run.
void LetterPrinting::ContinueRun(PrintRun* run, RequestDescription& message) const {
  if (run == nullptr) return;
  const auto without_run = message;
  std::optional<platform::PrintFault> fault;
  const auto go_on = [&] { platform::KeepFault(fault, [&] { run->LetterPrinted(message); }); };
  if (Trap(uses_.services, kPrintDoc, go_on)) return;
  message = without_run;
  run->Stop(fault ? fault->reason : "The next letter could not be had.");
}

void LetterPrinting::ExpectPrint(const LetterData& letter, const std::string& request_name) {
  uses_.services.print_journal.Expect([this, letter, request_name](const std::string& context) {
    auto as_printed = letter;
    as_printed.context = context;
    return NoteOf(std::move(as_printed), request_name);
  });
}

std::optional<platform::PrintNote> LetterPrinting::NoteOf(LetterData letter,
                                                          const std::string& request_name) const {
  RequestDescription message;
  AddRecord(message, letter, request_name);
  if (message.records.empty()) return std::nullopt;
  platform::PrintNote note{NameOf(letter), uses_.listener.NewMessage()->MessageKey(), {}};
  for (const auto& [column, value] : message.records.front().rows.front()) {
    if (!value.IsNull()) note.record.emplace_back(column, value.AsText());
  }
  return note;
}

}  // namespace workspace
