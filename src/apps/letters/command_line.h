#pragma once

#include <QCommandLineParser>
#include <QJsonDocument>
#include <QStringList>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "host/data_folder.h"

namespace apps {

/// How a command of zemlo-letters ended. Decision [exit-status].
enum ExitStatus : int {
  kDone = 0,
  kRefused = 1,  ///< nothing was printed or saved
  kWrongUsage = 2,
  kOutputLost = 3,     ///< done, but standard output could not be written
  kNotRecorded = 4,    ///< printed or saved, but not recorded in the letter history
  kInterrupted = 128,  ///< ended by a signal, whose number a shell adds
};

/// How often an option may be given, and what as.
enum class Takes {
  kOneValue,    ///< once, and not empty
  kManyValues,  ///< any number of times, none empty
  kAnyText,     ///< once; may be empty
};

/// One command's options, arguments and help.
class CommandLine {
 public:
  /// `arguments` is what follows the options in the usage line ("TEMPLATE CONTEXT OUT"); "" for none.
  CommandLine(const char* command, const char* summary, const char* arguments = "");

  /// `value` names the option's value in the help; "" for a switch.
  CommandLine& Option(const char* name, const char* value, const char* meaning,
                      Takes takes = Takes::kOneValue);
  CommandLine& DataOption();
  CommandLine& JsonOption();

  /// Reads the words after the command's name. Help and wrong usage are told and answered with the status to
  /// exit with; nothing when the command can go on. `least` and `most` count the arguments. With --quiet
  /// notices (standard_streams.h) are dropped from here on.
  std::optional<int> Parse(const QStringList& words, int least = 0, int most = 0);

  bool IsSet(const char* option) const { return parser_.isSet(QLatin1String(option)); }
  std::string Value(const char* option) const { return parser_.value(QLatin1String(option)).toStdString(); }
  /// Of an option that may be given several times, in the order given.
  std::vector<std::string> Values(const char* option) const;
  /// The option as a whole number from `least` up; nothing when it is none.
  std::optional<int> Number(const char* option, int least) const;
  int ArgumentCount() const { return static_cast<int>(arguments_.size()); }
  std::string Argument(int index) const { return arguments_.at(index).toStdString(); }

  /// The folder named by --data, else the user's own.
  host::DataFolder Data() const;

  /// Whether only refusals are to be told on standard error (--quiet).
  bool IsQuiet() const { return IsSet("quiet"); }

  /// Tells wrong usage, with the way to the help.
  int WrongUsage(const std::string& what) const;

 private:
  std::string OptionFault() const;
  std::string ArgumentFault(int least, int most) const;

  struct ValueOption {
    QString name;
    Takes takes;
  };
  const QString command_;
  QCommandLineParser parser_;
  QStringList arguments_;
  std::vector<ValueOption> value_options_;
};

/// Writes a document to standard output, for other programs.
void PrintJson(const QJsonDocument& document);

}  // namespace apps
