#include "apps/letters/command_line.h"

#include <iostream>

namespace apps {

CommandLine::CommandLine(const char* command, const char* summary, const char* arguments)
    : command_(QLatin1String(command)) {
  parser_.setApplicationDescription(QString::fromUtf8(summary));
  const auto syntax = *arguments == '\0' ? command_ : command_ + ' ' + QLatin1String(arguments);
  parser_.addPositionalArgument(command_, QString::fromUtf8(summary), syntax);
  parser_.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Shows this help.")});
}

CommandLine& CommandLine::Option(const char* name, const char* value, const char* meaning) {
  parser_.addOption({QString::fromLatin1(name), QString::fromUtf8(meaning), QString::fromLatin1(value)});
  return *this;
}

CommandLine& CommandLine::DataOption() {
  return Option("data", "DIR", "The data folder (default: the user's own).");
}

CommandLine& CommandLine::JsonOption() {
  return Option("json", "", "Writes JSON to standard output.");
}

std::optional<int> CommandLine::Parse(const QStringList& words, int least, int most) {
  const bool understood = parser_.parse(QStringList(QStringLiteral("zemlo-letters")) + words);
  if (!understood) return WrongUsage(parser_.errorText().toStdString());
  if (parser_.isSet(QStringLiteral("help"))) {
    std::cout << parser_.helpText().toStdString();
    return kDone;
  }
  arguments_ = parser_.positionalArguments();
  if (arguments_.size() > most) {
    return WrongUsage("\"" + arguments_.at(most).toStdString() + "\" is one argument too many.");
  }
  if (arguments_.size() < least) return WrongUsage("An argument is missing.");
  return std::nullopt;
}

std::vector<std::string> CommandLine::Values(const char* option) const {
  std::vector<std::string> values;
  for (const auto& value : parser_.values(QLatin1String(option))) values.push_back(value.toStdString());
  return values;
}

std::optional<int> CommandLine::Number(const char* option, int least) const {
  bool is_number = false;
  const int number = parser_.value(QLatin1String(option)).toInt(&is_number);
  if (!is_number || number < least) return std::nullopt;
  return number;
}

host::DataFolder CommandLine::Data() const {
  if (!IsSet("data")) return host::DataFolder::OfUser();
  return host::DataFolder(std::filesystem::absolute(Value("data")));
}

int CommandLine::WrongUsage(const std::string& what) const {
  std::cerr << what << "\nSee \"zemlo-letters " << command_.toStdString() << " --help\".\n";
  return kWrongUsage;
}

void PrintJson(const QJsonDocument& document) {
  std::cout << document.toJson().toStdString() << std::flush;
}

}  // namespace apps
