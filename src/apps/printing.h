#pragma once

#include <filesystem>

#include "apps/office.h"
#include "host/data_folder.h"
#include "host/settings_file.h"
#include "platform/parties/clock.h"
#include "platform/parties/error_reporter.h"
#include "wordprocessor/layout/pool.h"
#include "wordprocessor/printing/print_component.h"
#include "wordprocessor/printing/printer_queues.h"
#include "wordprocessor/printing/printers.h"

namespace apps {

/// The word processor's side of an office: one warm layout process, the printers, the print component.
class Printing {
 public:
  Printing(const host::DataFolder& folder, const host::SettingsFile& settings, platform::Clock& clock,
           platform::ErrorReporter& errors, const OfficeHost& host);

  platform::PrintComponent& component() { return component_; }
  void OpenTriedTemplate(const std::filesystem::path& file) { component_.OpenTriedTemplate(file); }
  bool HasWorkUnderWay() const { return component_.HasWorkUnderWay(); }
  /// Starts the layout process ahead of the first letter.
  void WarmUp() { layout_.WarmUp(); }

 private:
  wordprocessor::LayoutPool layout_;
  wordprocessor::CupsQueues queues_;
  wordprocessor::Printers printers_;
  wordprocessor::OfficePrintComponent component_;
};

}  // namespace apps
