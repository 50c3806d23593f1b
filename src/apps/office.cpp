#include "apps/office.h"

#include <algorithm>
#include <chrono>
#include <future>

#include "apps/address_verification.h"
#include "apps/checked_templates.h"
#include "apps/office_check.h"
#include "apps/printing.h"
#include "host/disk_files.h"
#include "host/print_journal.h"
#include "host/server_settings.h"
#include "host/settings_file.h"
#include "host/system_clock.h"
#include "host/view_settings_file.h"
#include "platform/identity.h"
#include "reference/office_utilities.h"
#include "reference/reference_database.h"
#include "server/link/communications_client.h"
#include "server/link/customer_directory.h"
#include "server/link/data_preparation.h"
#include "server/link/server_message_component.h"
#include "wordprocessor/document/template_folder.h"

namespace apps {

/// In the order of their making: each may use those above it.
struct Office::Rooms {
  /// The server's data are ready. Made beside the thread that has to keep a window painted, if there is one.
  struct PreparedData {
    PreparedData(const host::DataFolder& folder, const OfficeHost& host) {
      constexpr std::chrono::milliseconds kNobodyNotices(100);
      auto prepared =
          std::async(std::launch::async, [&] { server::PrepareData(folder.root(), host.tell_long_work); });
      const auto is_done = [&](std::chrono::milliseconds patience) {
        return prepared.wait_for(patience) == std::future_status::ready;
      };
      if (host.wait && !is_done(kNobodyNotices)) host.wait([&] { return is_done({}); });
      prepared.get();
    }
  };

  Rooms(const host::DataFolder& data_folder, const OfficeHost& host)
      : folder(data_folder),
        settings(folder),
        server_settings(folder),
        errors(folder.ErrorLog(), clock, host.error_listener),
        reference(settings.LocalDatabasePath(), clock),
        utilities(reference, settings, server_settings, clock),
        prepared_data(folder, host),
        downloads(host.events, folder.root(), wordprocessor::RequireTemplate),
        verifier(MakeAddressVerifier(folder, server_settings)),
        messages(host.events, downloads, folder.root(), {clock, server_settings, *verifier}),
        printing(folder, settings, clock, errors, host),
        customers(folder.root()),
        print_journal(folder.Unrecorded(), errors),
        templates(folder.root()),
        view_settings(folder),
        services{messages,    downloads,  reference,     utilities, printing.component(),
                 settings,    settings,   files,         clock,     errors,
                 host.status, host.shell, print_journal, templates, view_settings},
        workspace(services) {}

  const host::DataFolder folder;
  host::SystemClock clock;
  host::SettingsFile settings;
  host::ServerSettings server_settings;
  host::ErrorLog errors;
  host::DiskFiles files;
  reference::ReferenceDatabase reference;
  reference::OfficeUtilities utilities;
  const PreparedData prepared_data;
  server::CommunicationsClientProvider downloads;
  const std::unique_ptr<platform::AddressVerifier> verifier;
  server::ServerMessageComponent messages;
  Printing printing;
  server::CustomerDirectory customers;
  host::PrintJournal print_journal;
  CheckedTemplates templates;
  host::ViewSettingsFile view_settings;
  platform::Services services;
  workspace::ZEMLO_Corresp workspace;
};

Office::Office(const host::DataFolder& folder, const OfficeHost& host)
    : rooms_(std::make_unique<Rooms>(folder, host)) {
  host::ErrorLog log(folder.ErrorLog(), rooms_->clock, nullptr);  // the start mends it: nobody has to be told
  for (const auto& mended : wordprocessor::ClearOfBrokenTemplates(rooms_->settings.TemplateFolder()))
    log.ReportError(mended, platform::kComponentTitle, "Office.Start");
}

Office::~Office() {
  rooms_->workspace.Terminate();
}

workspace::ZEMLO_Corresp& Office::workspace() {
  return rooms_->workspace;
}

const platform::Services& Office::services() const {
  return rooms_->services;
}

std::optional<platform::SelectedCustomer> Office::FindCustomer(const std::string& id) {
  constexpr std::size_t kAll = 1'000'000;
  const auto found = rooms_->customers.Find(id, kAll);
  const auto customer = std::ranges::find(found, id, &platform::SelectedCustomer::CustID);
  return customer == found.end() ? std::nullopt : std::optional(*customer);
}

void Office::TryTemplate(const std::filesystem::path& file) {
  rooms_->printing.OpenTriedTemplate(file);
  rooms_->workspace.TryTemplate({.name = file.filename().string(), .path = file.string()});
}

std::vector<std::string> Office::Faults() {
  auto faults = rooms_->server_settings.faults();
  for (auto& fault : CheckOffice(rooms_->folder, rooms_->settings, rooms_->reference, Occasion::kStart))
    faults.push_back(std::move(fault));
  for (auto& fault : AddressFaults(rooms_->folder, rooms_->server_settings, Occasion::kStart))
    faults.push_back(std::move(fault));
  return faults;
}

bool Office::HasWorkUnderWay() const {
  return rooms_->messages.HasWorkUnderWay() || rooms_->printing.HasWorkUnderWay();
}

}  // namespace apps
