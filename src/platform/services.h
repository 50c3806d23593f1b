#pragma once

#include "platform/clock.h"
#include "platform/comm_client.h"
#include "platform/error_reporter.h"
#include "platform/file_system.h"
#include "platform/host_shell.h"
#include "platform/message_component.h"
#include "platform/print_component.h"
#include "platform/print_journal.h"
#include "platform/reference_database.h"
#include "platform/settings.h"
#include "platform/status_display.h"
#include "platform/template_judge.h"
#include "platform/trap.h"
#include "platform/utilities.h"

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
};

/// Trap with the reporter of `services`.
template <typename Work>
bool Trap(const Services& services, std::string_view procedure, Work&& work) noexcept {
  return Trap(services.errors, procedure, std::forward<Work>(work));
}

}  // namespace platform
