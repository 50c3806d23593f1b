#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/data_folder.h"
#include "host/error_log.h"
#include "platform/agreed/customer_record.h"
#include "platform/parties/host_shell.h"
#include "platform/parties/print_component.h"
#include "platform/parties/services.h"
#include "platform/parties/status_display.h"
#include "workspace/document/zemlo_corresp.h"

namespace apps {

/// What a host brings along: a window, or answers from the command line. Outlives the office.
struct OfficeHost {
  platform::HostShell& shell;
  platform::StatusDisplay& status;
  platform::EventQueue& events;
  platform::PreviewViewer& viewer;
  platform::PrintObserver& print_observer;
  host::ErrorLog::Listener error_listener;
  /// Returns when `done` holds and keeps the window painted until then; nothing just waits.
  std::function<void(const std::function<bool()>& done)> wait = {};
  /// Gets a sentence when the office is about to work for minutes before it can begin; from any thread.
  std::function<void(const std::string& text)> tell_long_work = {};
};

/// One workspace with its outside parties, on one data folder: the only place where the rooms are joined.
class Office {
 public:
  /// Throws Failure where the data folder has not been prepared.
  Office(const host::DataFolder& folder, const OfficeHost& host);
  ~Office();

  workspace::ZEMLO_Corresp& workspace();
  const platform::Services& services() const;
  /// Nothing where there is no customer of that id.
  std::optional<platform::SelectedCustomer> FindCustomer(const std::string& id);
  /// From now on letters are made of this file, wherever it lies, and never recorded. Comes after the
  /// workspace's Initialize.
  void TryTemplate(const std::filesystem::path& file);
  /// What is wrong with the office although it runs: see CheckOffice.
  std::vector<std::string> Faults();
  /// Whether a reply, a download or a layout is still to come.
  bool HasWorkUnderWay() const;

 private:
  struct Rooms;
  std::unique_ptr<Rooms> rooms_;
};

}  // namespace apps
