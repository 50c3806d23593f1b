#include <QStringList>
#include <cstring>
#include <iostream>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/program.h"
#include "apps/product_files.h"

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
    {"batches", "Finds nightly batch runs", apps::RunBatches},
    {"batch-stat", "Shows a batch run's letters by letter type", apps::RunBatchStatistics},
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

}  // namespace

int main(int argc, char** argv) {
  return apps::RunProgram(argc, argv, Run);
}
