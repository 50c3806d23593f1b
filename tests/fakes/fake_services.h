#pragma once

#include <memory>

#include "platform/parties/services.h"
#include "tests/fakes/fake_comm_clients.h"
#include "tests/fakes/fake_files.h"
#include "tests/fakes/fake_print_journal.h"
#include "tests/fakes/fake_settings.h"
#include "tests/fakes/fake_template_judge.h"
#include "tests/fakes/fake_utilities.h"
#include "tests/fakes/fake_view_settings.h"
#include "tests/fakes/journal.h"
#include "tests/fakes/manual_clock.h"
#include "tests/fakes/manual_event_queue.h"
#include "tests/fakes/recording_errors.h"
#include "tests/fakes/recording_host.h"
#include "tests/fakes/recording_status.h"
#include "tests/fakes/scripted_reference_database.h"
#include "tests/fakes/scripted_server.h"

namespace fakes {

/// For tests that print nothing.
class NoPrintComponent : public platform::PrintComponent {
 public:
  std::unique_ptr<platform::PrintDocument> NewDocument() override {
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "This test has no print component.");
  }
  bool AskHow(std::size_t) override { return true; }
};

/// Everything outside, faked. Hand `services()` to what is tested.
class FakeServices {
 public:
  /// `print_component` outlives this; a test that prints gives a recording one.
  explicit FakeServices(platform::PrintComponent* print_component = nullptr)
      : services_{server,   comm_clients,   reference,     utilities,      PrintOr(print_component),
                  settings, settings_store, files,         clock,          errors,
                  status,   host,           print_journal, template_judge, view_settings} {}

  Journal journal;
  ManualEventQueue queue;
  ScriptedServer server{queue, &journal};
  FakeCommClients comm_clients{&journal};
  ScriptedReferenceDatabase reference;
  FakeUtilities utilities;
  NoPrintComponent no_print;
  FakeSettings settings;
  FakeSettingsStore settings_store;
  FakeFiles files;
  ManualClock clock;
  RecordingErrors errors;
  RecordingStatus status{&journal};
  RecordingHost host{&journal};
  FakePrintJournal print_journal;
  FakeTemplateJudge template_judge;
  FakeViewSettings view_settings;

  const platform::Services& services() const { return services_; }
  /// Lets replies and other posted work arrive.
  void RunEvents() { queue.RunAll(); }

 private:
  platform::PrintComponent& PrintOr(platform::PrintComponent* component) {
    return component != nullptr ? *component : no_print;
  }

  platform::Services services_;
};

}  // namespace fakes
