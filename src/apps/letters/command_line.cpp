#include "apps/letters/command_line.h"

#include <QCoreApplication>
#include <iostream>

#include "apps/letters/standard_streams.h"

namespace apps {

CommandLine::CommandLine(const char* command, const char* summary, const char* arguments)
    : command_(QLatin1String(command)) {
  parser_.setApplicationDescription(QString::fromUtf8(summary));
  const auto syntax = *arguments == '\0' ? command_ : command_ + ' ' + QLatin1String(arguments);
  parser_.addPositionalArgument(command_, QString::fromUtf8(summary), syntax);
  parser_.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Shows this help.")});
  parser_.addOption({QStringLiteral("quiet"), QStringLiteral("Tells refusals only, nothing on the way.")});
}

CommandLine& CommandLine::Option(const char* name, const char* value, const char* meaning, Takes takes) {
  if (*value != '\0') value_options_.push_back({QString::fromLatin1(name), takes});
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
  const bool understood = parser_.parse(QStringList(QCoreApplication::applicationName()) + words);
  if (!understood) return WrongUsage(parser_.errorText().toStdString());
  if (parser_.isSet(QStringLiteral("help"))) {
    std::cout << parser_.helpText().toStdString();
    return kDone;
  }
  if (IsQuiet()) DropNotices();
  arguments_ = parser_.positionalArguments();
  for (const auto& fault : {OptionFault(), ArgumentFault(least, most)}) {
    if (!fault.empty()) return WrongUsage(fault);
  }
  return std::nullopt;
}

/// "" where there is none.
std::string CommandLine::OptionFault() const {
  for (const auto& [name, takes] : value_options_) {
    const auto values = parser_.values(name);
    const auto option = "--" + name.toStdString();
    if (takes != Takes::kManyValues && values.size() > 1) return option + " is given twice. Give it once.";
    if (takes != Takes::kAnyText && values.contains(QString()))
      return option + " needs a value that is not empty.";
  }
  return "";
}

std::string CommandLine::ArgumentFault(int least, int most) const {
  if (arguments_.size() > most)
    return "\"" + arguments_.at(most).toStdString() + "\" is one argument too many.";
  if (arguments_.size() < least) return "An argument is missing.";
  return arguments_.contains(QString()) ? "An argument is empty." : "";
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
  std::cerr << what << "\nSee \"" << QCoreApplication::applicationName().toStdString() << ' '
            << command_.toStdString() << " --help\".\n";
  return kWrongUsage;
}

void PrintJson(const QJsonDocument& document) {
  std::cout << document.toJson().toStdString() << std::flush;
}

}  // namespace apps
