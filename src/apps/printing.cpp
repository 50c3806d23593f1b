#include "apps/printing.h"

#include <utility>

namespace apps {
namespace {

wordprocessor::LayoutSettings LayoutFor(const host::DataFolder& folder, const host::SettingsFile& settings) {
  auto layout = wordprocessor::LayoutSettings::ForThisProgram();
  layout.work_folder = folder.Work();
  layout.document_time = settings.LayoutTimeOut();
  return layout;
}

}  // namespace

Printing::Printing(const host::DataFolder& folder, const host::SettingsFile& settings, platform::Clock& clock,
                   platform::ErrorReporter& errors, const OfficeHost& host)
    : layout_(LayoutFor(folder, settings)),
      printers_(queues_, settings.PdfFolder(), clock),
      component_(
          {host.shell, host.events, host.viewer, host.print_observer, errors, layout_, printers_, host.wait},
          settings.TemplateFolder(),
          {.printer = settings.Printer(), .without_asking = settings.PrintsWithoutAsking()}) {}

}  // namespace apps
