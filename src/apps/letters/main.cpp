#include <QCoreApplication>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iostream>

#include <langinfo.h>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"

namespace {

struct Command {
  const char* name;
  const char* summary;
  int (*run)(const QStringList& words);
};

constexpr Command kCommands[] = {
    {"init", "Prepares a data folder", apps::RunInit},
    {"customers", "Lists customers", apps::RunCustomers},
    {"types", "Lists the letter types", apps::RunTypes},
    {"letter", "Produces a letter", apps::RunLetter},
    {"history", "Finds letters that were produced", apps::RunHistory},
    {"bookmarks", "Lists the bookmarks of a template", apps::RunBookmarks},
    {"merge", "Merges templates and data contexts into documents", apps::RunMerge},
};

void PrintUsage(std::ostream& out) {
  out << "Produces official letters without a window.\n\nUsage: zemlo-letters COMMAND "
         "[options]\n\nCommands:\n";
  for (const auto& command : kCommands) {
    out << "  " << command.name << std::string(12 - std::strlen(command.name), ' ') << command.summary
        << '\n';
  }
  out << "\n\"zemlo-letters COMMAND --help\" explains a command.\n"
         "Exit status: 0 done, 1 refused (the reason is on standard error), 2 wrong usage.\n";
}

/// Names and texts are UTF-8 here, whatever the locale of a service or a cron job says.
void UseUtf8() {
  std::setlocale(LC_ALL, "");
  if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0) setenv("LC_ALL", "C.UTF-8", 1);
  std::setlocale(LC_ALL, "");
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
  for (const auto& command : kCommands) {
    if (name == command.name) return command.run(words.mid(1));
  }
  std::cerr << "There is no command \"" << name << "\".\n\n";
  PrintUsage(std::cerr);
  return apps::kWrongUsage;
}

}  // namespace

int main(int argc, char** argv) {
  UseUtf8();
  QCoreApplication application(argc, argv);
  try {
    return Run(application.arguments().mid(1));
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return apps::kRefused;
  }
}
