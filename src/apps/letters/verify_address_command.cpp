#include <algorithm>
#include <array>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>

#include <QJsonDocument>
#include <QJsonObject>

#include "apps/address_verification.h"
#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/interruption.h"
#include "apps/letters/standard_streams.h"
#include "host/settings_file.h"
#include "platform/failure.h"
#include "platform/whole_file.h"
#include "postal/address_list.h"

namespace apps {
namespace {

using platform::AddressVerdict;
using platform::PostalAddress;

struct AddressOption {
  const char* name;  // of the option, and of the JSON member
  const char* meaning;
  std::string PostalAddress::*part;
};
constexpr auto kAddressOptions = std::to_array<AddressOption>({
    {"line1", "The line with house number and street, or the post office box.", &PostalAddress::line1},
    {"line2", "The second line: a unit, or whom it is for.", &PostalAddress::line2},
    {"city", "The city.", &PostalAddress::city},
    {"state", "The state's two letters.", &PostalAddress::state},
    {"zip", "The zip, five or nine digits.", &PostalAddress::zip},
});

bool NamesAddress(const CommandLine& line) {
  return std::ranges::any_of(kAddressOptions,
                             [&](const AddressOption& option) { return line.IsSet(option.name); });
}

int VerifyOne(const CommandLine& line, platform::AddressVerifier& verifier) {
  PostalAddress address;
  for (const auto& option : kAddressOptions) address.*option.part = line.Value(option.name);
  const auto verdict = verifier.Verify(address);
  const auto word = postal::VerdictWord(verdict.kind);
  if (line.IsSet("json")) {
    QJsonObject result{{"verdict", QString::fromStdString(std::string(word))}};
    if (verdict.kind != AddressVerdict::Kind::kUnknown) {
      for (const auto& option : kAddressOptions)
        result.insert(QLatin1String(option.name), QString::fromStdString(verdict.address.*option.part));
      result.insert(QLatin1String("county_code"), QString::fromStdString(verdict.address.county_code));
      result.insert(QLatin1String("county"), QString::fromStdString(verdict.address.county));
    }
    PrintJson(QJsonDocument(result));
    return kDone;
  }
  std::cout << word << '\n';
  if (verdict.kind == AddressVerdict::Kind::kUnknown) return kDone;
  const auto& found = verdict.address;
  std::cout << found.line1 << '\n';
  if (!found.line2.empty()) std::cout << found.line2 << '\n';
  std::cout << found.city << ' ' << found.state << ' ' << found.zip.substr(0, 5)
            << (found.zip.size() > 5 ? "-" + found.zip.substr(5) : "") << '\n';
  if (!found.county.empty()) std::cout << "County: " << found.county << '\n';
  return kDone;
}

std::string ReadList(const std::string& file) {
  std::ostringstream bytes;
  if (file == "-") {
    bytes << std::cin.rdbuf();
    return bytes.str();
  }
  return platform::ReadWholeFile(file);
}

std::string Summary(const postal::AddressCounts& counts) {
  return std::to_string(counts.Verified()) + " addresses: " + std::to_string(counts.passed) + " passed, " +
         std::to_string(counts.suggested) + " suggested, " + std::to_string(counts.none) + " none";
}

/// Where the result goes: to standard output as it comes, or whole into a file.
class ResultFile {
 public:
  explicit ResultFile(std::string file) : file_(std::move(file)) {}
  void Take(const std::string& record) {
    if (file_.empty())
      std::cout << record;
    else
      text_ += record;
  }
  void Close() {
    if (!file_.empty()) platform::WriteWholeFile(file_, text_);
  }

 private:
  const std::string file_;
  std::string text_;
};

int VerifyList(const CommandLine& line, platform::AddressVerifier& verifier) {
  const Interruption interruption;
  const auto list = ReadList(line.Value("csv"));
  ResultFile result(line.Value("output"));
  const bool is_watched = IsWatched() && !line.IsQuiet();
  const postal::AddressListUser user = {.take = [&](const std::string& record) { result.Take(record); },
                                        .tell = [](const std::string& fault) { std::cerr << fault << '\n'; },
                                        .progress =
                                            [&](const postal::AddressCounts& counts) {
                                              if (is_watched) Notices() << Summary(counts) << std::endl;
                                            },
                                        .is_stopped = [] { return Interruption::Signal() != 0; }};
  const auto counts = postal::VerifyAddressList(list, verifier, user);
  result.Close();
  const bool is_interrupted = Interruption::Signal() != 0;
  if (is_interrupted) std::cerr << "Ended by a signal; the result holds what was verified until then.\n";
  const auto left_out =
      counts.bad_lines == 0 ? "" : "; " + std::to_string(counts.bad_lines) + " lines are left out";
  Notices() << Summary(counts) << left_out << ".\n";
  if (is_interrupted) return kInterrupted;
  return counts.bad_lines > 0 ? kRefused : kDone;
}

}  // namespace

int RunVerifyAddress(const QStringList& words) {
  CommandLine line("verify-address",
                   "Verifies an address, or a list of them, as a save would: passed, suggested or none. "
                   "Nothing is stored");
  line.DataOption();
  for (const auto& option : kAddressOptions)
    line.Option(option.name, "TEXT", option.meaning, Takes::kAnyText);
  line.Option("csv", "FILE",
              "Verifies a list of comma-separated values (\"-\" for standard input). Its first line names "
              "the columns "
              "line1, line2, city, state and zip; others may be among them. Lines that are wrong are named "
              "and left "
              "out, and the exit status is 1 then. The result has the list's columns, \"verdict\", and the "
              "address passed or suggested in \"verified_line1\" and so on.")
      .Option("output", "FILE", "With --csv: writes the result there instead of to standard output.")
      .JsonOption();
  if (const auto status = line.Parse(words)) return *status;
  const bool has_list = line.IsSet("csv");
  if (has_list == NamesAddress(line))
    return line.WrongUsage(
        "Give an address (--line1, --city, --state, --zip), or a list of them (--csv FILE).");
  if (line.IsSet("output") && !has_list) return line.WrongUsage("--output goes with --csv.");
  if (line.IsSet("json") && has_list) return line.WrongUsage("--json does not go with --csv.");
  const auto folder = line.Data();
  const host::SettingsFile office(folder);  // a folder without an office is called that
  const host::ServerSettings settings(folder);
  for (const auto& fault : settings.faults()) Notices() << fault << '\n';
  const auto verifier = MakeAddressVerifier(folder, settings);
  return has_list ? VerifyList(line, *verifier) : VerifyOne(line, *verifier);
}

}  // namespace apps
