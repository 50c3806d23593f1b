#include <algorithm>
#include <iostream>

#include "apps/letters/command_line.h"
#include "apps/letters/commands.h"
#include "apps/product_files.h"
#include "host/disk_files.h"
#include "host/settings_file.h"
#include "host/system_clock.h"
#include "reference/reference_builder.h"
#include "server/server_data.h"

namespace apps {
namespace {

constexpr int kDemoCustomers = 300;
constexpr int kDemoLetters = 5000;
/// What a customer gets in three years, where a history asks for more customers.
constexpr int kLettersACustomer = 20;

void CopyLetterhead(const std::filesystem::path& product, const host::DataFolder& folder) {
  const auto target = folder.Templates() / "kvcorr.dot";
  if (std::filesystem::exists(target)) return;
  host::DiskFiles().CopyFile((product / "templates" / "kvcorr.dot").string(), target.string());
}

}  // namespace

int RunInit(const QStringList& words) {
  CommandLine line("init", "Prepares a data folder with demo data; one that is ready is left as it is");
  line.DataOption()
      .Option("customers", "N", "How many demo customers (default: 300, or one for 20 letters).")
      .Option("letters", "N", "How many letters their history has (default: 5000).");
  if (const auto status = line.Parse(words)) return *status;
  const auto letters = line.IsSet("letters") ? line.Number("letters", 0) : kDemoLetters;
  if (!letters)
    return line.WrongUsage("--letters takes a number from 0 up, not \"" + line.Value("letters") + "\".");
  const auto customers = line.IsSet("customers") ? line.Number("customers", 1)
                                                 : std::max(kDemoCustomers, *letters / kLettersACustomer);
  if (!customers)
    return line.WrongUsage("--customers takes a number from 1 up, not \"" + line.Value("customers") + "\".");

  const auto folder = line.Data();
  const auto product = ProductDataFolder();
  folder.Create();
  reference::CreateReferenceDatabase(product, folder.ReferenceDatabase());
  server::CreateServerData({folder.root(), product, *customers, *letters, host::SystemClock().Today()});
  CopyLetterhead(product, folder);
  host::SettingsFile::CreateFor(folder);  // last: with it the folder counts as prepared
  std::cout << "The data folder is ready: " << folder.root().string() << '\n';
  return kDone;
}

}  // namespace apps
