#include <QJsonObject>
#include <filesystem>
#include <iostream>
#include <system_error>
#include <vector>

#include "apps/checked_templates.h"
#include "apps/letters/asked_letter.h"
#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/entry_options.h"
#include "apps/letters/finding_list.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/letter_explanation.h"
#include "apps/letters/page_user.h"
#include "apps/letters/standard_streams.h"
#include "apps/letters/template_looks.h"
#include "wordprocessor/authoring/paper.h"
#include "wordprocessor/document/document.h"

namespace apps {
namespace {

using FindingsOfCheck = std::vector<wordprocessor::TemplateFinding>;

std::string OptionFault(const CommandLine& line) {
  if (!line.IsSet("save")) return "--save is missing.";
  for (const auto& fault : {LetterOptionFault(line), SubjectFault(line), EntryOptionFault(line)}) {
    if (!fault.empty()) return fault;
  }
  std::error_code absent;
  if (std::filesystem::equivalent(line.Argument(0), line.Value("save"), absent))
    return "--save \"" + line.Value("save") + "\" is the template itself. Name another file.";
  return "";
}

HeadlessOffice::Options TrialOptions(const CommandLine& line) {
  HeadlessOffice::Options options;
  options.answers.yes = true;
  options.answers.allow_unfilled = true;  // to look at is what it is made for
  options.answers.save_file = std::filesystem::absolute(line.Value("save")).string();
  options.preview = host::WindowlessPreview::Wish::kSave;
  options.entries = EntriesOf(line);
  options.tell_left_behind = false;
  return options;
}

/// Before the letter: it may never come.
void TellWhatTheCheckSays(const FindingsOfCheck& findings) {
  TellFindings(findings, Notices());
  const auto errors = ErrorsIn(findings);
  if (errors == 0) return;
  Notices() << "The template has " << (errors == 1 ? "an error" : std::to_string(errors) + " errors")
            << ". A trial is made all the same; no letter is made with it before that is mended.\n";
}

void TellOutcome(const HeadlessOffice& office, const FindingsOfCheck& findings, bool as_json) {
  const auto& saved = office.outcome().saved;
  if (!as_json) {
    TellNotFilled(office);
    for (const auto& file : saved) std::cout << "Saved: " << file << '\n';
    return;
  }
  QJsonObject result{{"findings", AsJson(Findings(findings))}};
  for (const auto& file : saved) result.insert("saved", QString::fromStdString(file));
  if (saved.empty()) result.insert("reason", QString::fromStdString(Told()));
  PrintJson(QJsonDocument(result));
}

}  // namespace

int RunTrial(const QStringList& words) {
  CommandLine line("trial",
                   "Makes a letter of a template that is not in use yet, to look at; nothing is recorded",
                   "TEMPLATE.docx");
  AddLetterOptions(line);
  AddEntryOptions(line);
  line.Option("save", "FILE", "Saves the letter as .docx or .pdf.").JsonOption();
  if (const auto status = line.Parse(words, 1, 1)) return *status;
  if (const auto fault = OptionFault(line); !fault.empty()) return line.WrongUsage(fault);

  const auto file = std::filesystem::absolute(line.Argument(0));
  // First: says what is wrong with it, whatever else is.
  const auto document = wordprocessor::DocxDocument::Open(file);
  HeadlessOffice office(line.Data(), TrialOptions(line));
  // Letters that only the system makes, too. The list reads its rows once, at the start.
  office.page().ZEMLO_LetterType.CodeType("TEMPLATES");
  office.Start();
  if (office.refused()) return kRefused;
  office.office().TryTemplate(file);
  RequireLetterType(office, office.page().ZEMLO_LetterType, line.Value("type"));
  auto findings = CheckedTemplates(line.Data().root()).FindingsIn(document, line.Value("type"));
  const std::filesystem::path templates = office.office().services().settings.TemplateFolder();
  const auto letterhead = LetterheadFor(templates / file.filename());
  for (const auto& more :
       {CheckPaper(document, letterhead), CheckPages(WithLetterhead(document, letterhead))}) {
    findings.insert(findings.end(), more.begin(), more.end());
  }
  const bool as_json = line.IsSet("json");
  if (!as_json) TellWhatTheCheckSays(findings);
  const ErrorNotice error_notice(office, /*will_explain=*/false);
  AskForLetter(office, line);
  const bool is_saved = !office.outcome().saved.empty();
  if (!EntriesOf(line).IsEmpty() && !office.refused() && !error_notice.given()) RefuseUnusedEntries(office);
  TellOutcome(office, findings, as_json);
  return is_saved ? kDone : kRefused;
}

}  // namespace apps
