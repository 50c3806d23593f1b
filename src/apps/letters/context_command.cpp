#include <iostream>
#include <utility>

#include "apps/letters/asked_letter.h"
#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/context_text.h"
#include "apps/letters/harmless_text.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/letter_explanation.h"
#include "apps/letters/standard_streams.h"
#include "platform/whole_file.h"

namespace apps {
namespace {

void TellMissing(const std::vector<std::string>& missing) {
  if (missing.empty()) return;
  Notices() << "Only you know these values; write a field for each into the context:\n";
  for (const auto& value : missing) Notices() << "  " << value << '\n';
}

}  // namespace

int RunContext(const QStringList& words) {
  CommandLine line("context", "Writes the data of a letter to a customer as a context for \"merge\"");
  AddLetterOptions(line);
  line.Option("out", "FILE", "The file to write (default: standard output).");
  if (const auto status = line.Parse(words)) return *status;
  if (const auto fault = LetterOptionFault(line); !fault.empty()) return line.WrongUsage(fault);
  if (!line.IsSet("customer") && !line.IsSet("form"))
    return line.WrongUsage("Name --customer, or --form-type and --form.");

  HeadlessOffice::Options options;
  options.tell_left_behind = false;
  HeadlessOffice office(line.Data(), std::move(options));
  office.Start();
  if (office.refused()) return kRefused;
  const ErrorNotice error_notice(office, /*will_explain=*/false);
  std::string context;
  office.workspace().HandOutLetters([&](const workspace::LetterData& letter) { context = letter.context; });
  AskForLetter(office, line);
  if (context.empty()) return kRefused;
  const auto made = ContextText::Of(context);
  if (line.IsSet("out")) {
    platform::WriteWholeFile(std::filesystem::absolute(line.Value("out")), made.xml);
  } else {
    std::cout << WithReferences(made.xml);
  }
  TellMissing(made.missing);
  return kDone;
}

}  // namespace apps
