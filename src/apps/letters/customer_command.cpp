#include <array>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/headless_office.h"
#include "apps/letters/listing.h"
#include "platform/agreed/record_layouts.h"
#include "platform/agreed/requests.h"
#include "platform/failure.h"
#include "platform/identity.h"
#include "platform/text.h"

namespace apps {
namespace {

using platform::Failure;
using platform::RequestRecord;

namespace record_name = platform::record_name;
namespace request_key = platform::request_key;

using Keys = std::vector<std::pair<std::string_view, std::string>>;

/// Asks the server about a customer and waits for the answer: the rows of that record, null without it.
/// Throws Failure kRefused with the server's words.
std::shared_ptr<RequestRecord> AskServer(HeadlessOffice& office, const Keys& keys, const char* record) {
  const auto& services = office.office().services();
  const auto listener = services.messages.NewListener();
  const auto message = listener->NewMessage();
  const std::string application(platform::kApplicationName);
  message->Application(application);
  message->MessageType(platform::message_type::kCustomer);
  message->UserId(services.settings.UserId());
  for (const auto& [name, value] : keys)
    message->AddKey(platform::Criterion(platform::KeyNamed(name), value));
  message->Send();
  office.RunUntilIdle();
  const auto error = services.messages.GetReplyError(application, "customer", message->MessageKey());
  if (!error.empty()) throw Failure(Failure::Kind::kRefused, error);
  return services.messages.GetRecord(application, record, message->MessageKey());
}

/// As people and programs read it: the record's own names, in its order, without what is empty.
Listing ValuesOf(const platform::RecordSet& customer) {
  static constexpr std::array<Listing::Column, 2> kColumns{{{"column", "Column"}, {"value", "Value"}}};
  Listing listing{kColumns, {}};
  for (const auto& column : customer.columns()) {
    if (const auto text = customer.Text(column); !text.empty())
      listing.rows.push_back({platform::UpperCase(column), text});
  }
  return listing;
}

Listing ChangesOf(const RequestRecord* record) {
  static constexpr std::array<Listing::Column, 6> kColumns{{{"change", "Change"},
                                                            {"time", "Time"},
                                                            {"user", "User"},
                                                            {"column", "Column"},
                                                            {"old", "Before"},
                                                            {"new", "Since"}}};
  Listing listing{kColumns, {}};
  if (record == nullptr) return listing;
  const auto& rows = *record->Recordset();
  for (std::size_t row = 0; row < rows.RecordCount(); ++row) {
    std::vector<std::string> texts;
    for (const auto column : platform::kCustomerChangeColumns) texts.push_back(rows.Text(row, column));
    listing.rows.push_back(std::move(texts));
  }
  return listing;
}

/// Where "add" or "edit" stands, behind options that every command has.
std::optional<qsizetype> WordOfMaintenance(const QStringList& words) {
  qsizetype at = 0;
  for (;;) {
    const auto option = words.value(at);
    if (option != QLatin1String("--quiet") && !option.startsWith(QLatin1String("--data"))) break;
    at += option == QLatin1String("--data") ? 2 : 1;
  }
  const auto word = words.value(at);
  if (word != QLatin1String("add") && word != QLatin1String("edit")) return std::nullopt;
  return at;
}

}  // namespace

int RunCustomer(const QStringList& words) {
  if (const auto what = WordOfMaintenance(words)) {
    auto options = words;
    options.move(*what, 0);
    return RunMaintainCustomer(options);
  }
  CommandLine line("customer",
                   "Shows a customer as it is stored, or its history of changes. \"customer add --help\" and "
                   "\"customer edit --help\" say how one is added and changed");
  line.DataOption()
      .Option("id", "NUMBER", "The customer's number.")
      .Option("history", "", "Who changed what when, the newest change first, instead of the customer.")
      .JsonOption();
  if (const auto status = line.Parse(words)) return *status;
  if (!line.IsSet("id")) return line.WrongUsage("Name the customer with --id.");

  const auto id = line.Value("id");
  HeadlessOffice::Options options;
  options.tell_left_behind = false;
  HeadlessOffice office(line.Data(), std::move(options));
  if (line.IsSet("history")) {
    const auto changes =
        AskServer(office, {{request_key::kCustomer, id}, {request_key::kCustomerChanges, "Y"}},
                  record_name::kCustomerChanges);
    if (changes != nullptr) {
      Print(ChangesOf(changes.get()), line.IsSet("json"));  // of a customer who has gone, too
      return kDone;
    }
  }
  const auto customer = AskServer(office,
                                  {{request_key::kElementName, std::string(request_key::kCustomers)},
                                   {request_key::kFirstRow, "1"},
                                   {request_key::kLastRow, "20"},
                                   {request_key::kSingleCredential, "NO"},
                                   {request_key::kCustomer, id}},
                                  record_name::kCustomer);
  if (customer == nullptr)
    throw Failure(Failure::Kind::kNotFound, "There is no customer " + platform::Quoted(id) + ".");
  Print(line.IsSet("history") ? ChangesOf(nullptr) : ValuesOf(*customer->Recordset()), line.IsSet("json"));
  return kDone;
}

}  // namespace apps
