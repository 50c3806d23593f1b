#include <algorithm>
#include <iostream>

#include "apps/address_verification.h"
#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/letters/init_plan.h"
#include "apps/letters/standard_streams.h"
#include "apps/office_check.h"
#include "apps/product_files.h"
#include "host/accounts.h"
#include "host/disk_files.h"
#include "host/server_settings.h"
#include "host/settings_file.h"
#include "host/system_clock.h"
#include "platform/agreed/template_versions.h"
#include "platform/file_access.h"
#include "platform/table_faults.h"
#include "reference/reference_builder.h"
#include "reference/reference_database.h"
#include "server/setup/demo_streets.h"
#include "server/setup/server_data.h"
#include "server/storage/server_folders.h"
#include "wordprocessor/document/template_file.h"

namespace apps {
namespace {

constexpr int kDemoCustomers = 300;
constexpr int kDemoLetters = 5000;
/// What a customer gets in three years, where a history asks for more customers.
constexpr int kLettersACustomer = 20;

/// Where the settings say that things lie; before there are settings, in the data folder.
struct Places {
  std::filesystem::path reference_database;
  std::filesystem::path templates;
};

Places PlacesOf(const host::DataFolder& folder) {
  if (!folder.IsPrepared()) return {folder.ReferenceDatabase(), folder.Templates()};
  const host::SettingsFile settings(folder);
  return {settings.LocalDatabasePath(), settings.TemplateFolder()};
}

/// The office's own where it has one: it lies where the start would fetch it.
void CopyLetterhead(const host::DataFolder& folder, const std::filesystem::path& templates) {
  const auto target = templates / platform::kCommonTemplate;
  if (platform::IsThere(target)) return;
  platform::MakeFolder(templates);
  host::DiskFiles().CopyFile((server::TemplateFolder(folder.root()) / platform::kCommonTemplate).string(),
                             target.string());
}

std::string InitOptionFault(const CommandLine& line) {
  const bool demo = line.IsSet("demo");
  const bool empty = line.IsSet("empty");
  if (demo && empty) return "--demo and --empty do not go together.";
  if (empty && (line.IsSet("customers") || line.IsSet("letters")))
    return "--customers and --letters go with --demo, not with --empty.";
  if (demo || empty || !line.Data().IsNew()) return "";
  return "\"" + line.Data().root().string() +
         "\" is a new data folder. Say --demo for invented customers and letters to try things on, or "
         "--empty for an office's own data.";
}

std::optional<host::OfficeKind> AskedKind(const CommandLine& line) {
  if (line.IsSet("demo")) return host::OfficeKind::kDemo;
  return line.IsSet("empty") ? std::optional(host::OfficeKind::kOwn) : std::nullopt;
}

/// All tables before any of them is taken in: they refer to one another.
void RequireGoodTables(const server::InitOptions& options) {
  platform::TableFaults faults;
  reference::CheckReferenceTables(options.product_data_folder, faults);
  server::CheckLetterDefinitions(options, faults);
  faults.OrFail("Nothing was taken in. Correct the tables and call init again.");
}

void TellFaults(const host::DataFolder& folder) {
  const host::SystemClock clock;
  const host::SettingsFile settings(folder);
  reference::ReferenceDatabase reference(settings.LocalDatabasePath(), clock);
  for (const auto& fault : CheckOffice(folder, settings, reference, Occasion::kInit))
    Notices() << fault << '\n';
  for (const auto& fault : AddressFaults(folder, host::ServerSettings(folder), Occasion::kInit))
    Notices() << fault << '\n';
}

void CreateStreetFile(const host::DataFolder& folder, host::OfficeKind kind) {
  const auto streets = server::StreetFolder(folder.root());
  if (kind == host::OfficeKind::kDemo)
    server::CreateDemoStreetFile(ProductDataFolder(), streets);
  else
    server::CreateEmptyStreetFile(streets);
}

}  // namespace

int RunInit(const QStringList& words) {
  CommandLine line(
      "init",
      "Prepares a new data folder; brings one that is ready up to date and leaves its data as they are");
  line.DataOption()
      .Option("demo", "", "Makes a new folder with invented customers and letters, to try things on.")
      .Option("empty", "", "Makes a new folder without customers, for an office's own data.")
      .Option("customers", "N",
              "With --demo: how many customers, from 1 up (default: 300, or one for 20 letters).")
      .Option("letters", "N", "With --demo: how many letters their history has, from 0 up (default: 5000).")
      .Option("group", "NAME",
              "Shares the folder, and all that is in it, with the group; else it is its owner's.");
  if (const auto status = line.Parse(words)) return *status;
  if (const auto fault = InitOptionFault(line); !fault.empty()) return line.WrongUsage(fault);
  const auto letters = line.IsSet("letters") ? line.Number("letters", 0) : kDemoLetters;
  if (!letters)
    return line.WrongUsage("--letters takes a number from 0 up, not \"" + line.Value("letters") + "\".");
  const auto customers = line.IsSet("customers") ? line.Number("customers", 1)
                                                 : std::max(kDemoCustomers, *letters / kLettersACustomer);
  if (!customers)
    return line.WrongUsage("--customers takes a number from 1 up, not \"" + line.Value("customers") + "\".");

  const auto folder = line.Data();
  const auto plan = PlanInit(folder, AskedKind(line));
  const auto product = ProductDataFolder();
  const auto places = PlacesOf(folder);
  const bool is_demo = plan.kind == host::OfficeKind::kDemo;
  const server::InitOptions server_data{folder.root(),
                                        product,
                                        is_demo ? *customers : 0,
                                        is_demo ? *letters : 0,
                                        host::SystemClock().Today(),
                                        [](const std::string& text) { Notices() << text << '\n'; }};
  RequireGoodTables(server_data);
  platform::MakeFolder(folder.root());
  if (line.IsSet("group")) host::ShareWithGroup(folder.root(), line.Value("group"));
  if (plan.is_new) host::LeaveOfficeMark(folder, {.kind = plan.kind, .is_whole = false});
  folder.Create();
  reference::NextReferenceDatabase next_reference(product, places.reference_database);
  server::CreateServerData(server_data);
  CreateStreetFile(folder, plan.kind);
  next_reference.PutInPlace();
  CopyLetterhead(folder, places.templates);
  host::SettingsFile::CreateFor(folder, plan.kind);
  host::ServerSettings::CreateFor(folder);
  // Last: from here on what is missing is a loss.
  if (plan.is_new || !host::ReadOfficeMark(folder)) host::LeaveOfficeMark(folder, {.kind = plan.kind});
  TellFaults(folder);
  if (!line.IsQuiet())
    std::cout << "Its tables and templates come from: " << product.string()
              << "\nThe data folder is ready: " << folder.root().string() << '\n';
  return kDone;
}

}  // namespace apps
