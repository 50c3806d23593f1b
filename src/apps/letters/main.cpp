#include <QCoreApplication>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iostream>

#include <langinfo.h>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/interruption.h"
#include "apps/letters/standard_streams.h"
#include "apps/product_files.h"
#include "platform/text.h"

namespace {

struct Command {
  const char* name;
  const char* summary;
  int (*run)(const QStringList& words);
};

constexpr Command kCommands[] = {
    {"init", "Prepares a data folder", apps::RunInit},
    {"customers", "Lists customers", apps::RunCustomers},
    {"customer", "Shows a customer and its history of changes", apps::RunCustomer},
    {"types", "Lists the letter types", apps::RunTypes},
    {"letter", "Produces a letter", apps::RunLetter},
    {"history", "Finds letters that were produced", apps::RunHistory},
    {"reprint", "Prints letters again on the local printer", apps::RunReprint},
    {"resubmit", "Gives letters to tonight's batch", apps::RunResubmit},
    {"batch-reprint", "Gives letters to tonight's batch, to be printed as they are", apps::RunBatchReprint},
    {"save", "Saves letters that were produced", apps::RunSave},
    {"return-mail", "Marks the address that a letter came back from", apps::RunReturnMail},
    {"waiting", "Lists what waits for the batch run, and takes it back", apps::RunWaiting},
    {"unrecorded", "Lists printed letters that are not recorded, and records them", apps::RunUnrecorded},
    {"bookmarks", "Lists the bookmarks of a template", apps::RunBookmarks},
    {"trial", "Makes a letter of a template that is not in use yet", apps::RunTrial},
    {"context", "Writes a customer's data for merge", apps::RunContext},
    {"verify-address", "Verifies an address, or a list of them", apps::RunVerifyAddress},
    {"merge", "Merges templates and data contexts into documents", apps::RunMerge},
};

void PrintUsage(std::ostream& out) {
  out << "Produces official letters without a window.\n\n"
         "Usage: zemlo-letters COMMAND [options]\n\n"
         "Commands:\n";
  for (const auto& command : kCommands) {
    out << "  " << command.name << std::string(16 - std::strlen(command.name), ' ') << command.summary
        << '\n';
  }
  out << R"(
"zemlo-letters COMMAND --help" explains a command, "zemlo-letters --version" says which tables it reads.
Exit status: 0 done; 1 refused: nothing was printed or saved, the reason is on standard error; 2 wrong
usage; 3 done, but standard output could not be written; 4 printed or saved, but not recorded in the
letter history ("zemlo-letters unrecorded"); 128 and more: ended by a signal. Of a job list, or of
several letters, 1 says that at least one failed or was refused.
)";
}

/// Names and texts are UTF-8 here, whatever the locale of a service or a cron job says.
void UseUtf8() {
  std::setlocale(LC_ALL, "");
  if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) setenv("LC_ALL", "C.UTF-8", 1);
  std::setlocale(LC_ALL, "");
}

/// The option or argument with bytes that are not UTF-8, which would come in as another text; "" for none.
std::string WordThatIsNoText(int count, char** words) {
  for (int place = 1; place < count; ++place) {
    const std::string_view word = words[place];
    if (platform::IsValidUtf8(word)) continue;
    if (word.starts_with("--")) return std::string(word.substr(0, word.find('=')));
    const std::string_view before = words[place - 1];
    return before.starts_with("--") ? std::string(before) : "Argument " + std::to_string(place);
  }
  return "";
}

int Run(const QStringList& words) {
  if (words.isEmpty()) {
    PrintUsage(std::cerr);
    return apps::kWrongUsage;
  }
  const auto name = words.first().toStdString();
  if (name == "--help" || name == "-h") {
    PrintUsage(std::cout);
    return apps::kDone;
  }
  if (name == "--version") {
    std::cout << apps::VersionText("zemlo-letters");
    return apps::kDone;
  }
  for (const auto& command : kCommands) {
    if (name == command.name) return command.run(words.mid(1));
  }
  std::cerr << "There is no command \"" << name << "\".\n\n";
  PrintUsage(std::cerr);
  return apps::kWrongUsage;
}

int RunOrExplain(int argc, char** argv) {
  if (const auto word = WordThatIsNoText(argc, argv); !word.empty()) {
    std::cerr << word << " has bytes that are not UTF-8. Give it as UTF-8 text.\n";
    return apps::kWrongUsage;
  }
  try {
    return Run(QCoreApplication::arguments().mid(1));
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return apps::kRefused;
  }
}

}  // namespace

int main(int argc, char** argv) {
  apps::StandardStreams streams;
  UseUtf8();
  const QCoreApplication application(argc, argv);
  const int status = RunOrExplain(argc, argv);
  const int ended = streams.End(status, QCoreApplication::arguments().contains(QStringLiteral("--json")));
  if (ended == apps::kInterrupted) apps::Interruption::EndBySignal();
  return ended;
}
