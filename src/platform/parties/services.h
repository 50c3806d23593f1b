#pragma once

#include "platform/parties/clock.h"
#include "platform/parties/comm_client.h"
#include "platform/parties/error_reporter.h"
#include "platform/parties/file_system.h"
#include "platform/parties/host_shell.h"
#include "platform/parties/message_component.h"
#include "platform/parties/print_component.h"
#include "platform/parties/print_journal.h"
#include "platform/parties/reference_database.h"
#include "platform/parties/settings.h"
#include "platform/parties/status_display.h"
#include "platform/parties/template_judge.h"
#include "platform/parties/trap.h"
#include "platform/parties/utilities.h"
#include "platform/parties/view_settings.h"

namespace platform {

/// Everything outside, as the four inner rooms see it. The references outlive the workspace.
struct Services {
  MessageComponent& messages;
  CommClientProvider& comm_clients;
  ReferenceDatabase& reference;
  Utilities& utilities;
  PrintComponent& print;
  Settings& settings;
  SettingsStore& settings_store;
  FileSystem& files;
  Clock& clock;
  ErrorReporter& errors;
  StatusDisplay& status;
  HostShell& host;
  PrintJournal& print_journal;
  TemplateJudge& template_judge;
  ViewSettings& view_settings;
};

/// Trap with the reporter of `services`.
template <typename Work>
bool Trap(const Services& services, std::string_view procedure, Work&& work) noexcept {
  return Trap(services.errors, procedure, std::forward<Work>(work));
}

}  // namespace platform
