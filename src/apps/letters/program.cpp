#include "apps/letters/program.h"

#include <QCoreApplication>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iostream>

#include <langinfo.h>

#include "apps/letters/command_line.h"
#include "apps/letters/interruption.h"
#include "apps/letters/standard_streams.h"
#include "platform/text.h"

namespace apps {
namespace {

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

int RunOrExplain(int argc, char** argv, int (*run)(const QStringList& words)) {
  if (const auto word = WordThatIsNoText(argc, argv); !word.empty()) {
    std::cerr << word << " has bytes that are not UTF-8. Give it as UTF-8 text.\n";
    return kWrongUsage;
  }
  try {
    return run(QCoreApplication::arguments().mid(1));
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return kRefused;
  }
}

}  // namespace

int RunProgram(int argc, char** argv, int (*run)(const QStringList& words)) {
  StandardStreams streams;
  UseUtf8();
  const QCoreApplication application(argc, argv);
  const int status = RunOrExplain(argc, argv, run);
  const int ended = streams.End(status, QCoreApplication::arguments().contains(QStringLiteral("--json")));
  if (ended == kInterrupted) Interruption::EndBySignal();
  return ended;
}

}  // namespace apps
