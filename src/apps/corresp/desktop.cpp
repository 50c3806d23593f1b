#include "apps/corresp/desktop.h"

#include "desktop/forms/form_views.h"
#include "desktop/look/qt_text.h"
#include "desktop/look/screen_fit.h"
#include "desktop/pages/workspace_view.h"
#include "desktop/shell/help_box.h"
#include "platform/identity.h"

namespace apps {
namespace {

constexpr auto kWelcome =
    "New here? With the demo data: press Select Customer and find 100001, "
    "choose \"Registration Confirmation\" under Correspondence Names, then Create Letter. F1 tells more.";
constexpr auto kWelcomeRead = "Window/WelcomeRead";
constexpr auto kGeometry = "Window/Geometry";
constexpr QSize kUsualSize(1240, 780);

/// The button of the host's toolbar that helps; those before kPages turn the pages.
constexpr int kHelpButton = 15;
constexpr int kPages = 3;

}  // namespace

Desktop::Desktop(const host::DataFolder& folder)
    : own_settings_(desktop::ToQt((folder.Config() / "desktop.ini").string()), QSettings::IniFormat),
      view_settings_(folder),
      shell_(events_, &view_settings_),
      preview_(events_, shell_.guard(), shell_.window()),
      notices_(shell_),
      office_(folder, {shell_, shell_, events_, preview_, notices_,
                       [this](const std::string& description, const std::string&) { TellError(description); },
                       [this](const std::function<bool()>& done) { shell_.WaitUntil(done); },
                       [this](const std::string& text) { TellLongWork(text); }}) {
  desktop::RegisterFormViews(shell_);
  shell_.guard().awaits_reply = [this] { return office_.workspace().pending_request().IsAwaited(); };
}

Desktop::~Desktop() {
  shell_.guard().awaits_reply = nullptr;  // the workspace goes before the window that asks it
}

void Desktop::Open() {
  auto& workspace = office_.workspace();
  workspace.Initialize();
  view_ = std::make_unique<desktop::WorkspaceView>(workspace.pages(), view_settings_);
  window().ShowDocument(view_.get());
  window().toolbar_pressed = [this](int button) { Pressed(button); };
  window().may_close = [this] { return Close(); };
  OpenWindow();
  workspace.Show();
  TellFaults();
}

void Desktop::OpenWindow() {
  desktop::FitToScreen(window(), kUsualSize);
  window().restoreGeometry(own_settings_.value(QLatin1String(kGeometry)).toByteArray());
  if (!own_settings_.value(QLatin1String(kWelcomeRead), false).toBool()) {
    window().ShowNotice(QLatin1String(kWelcome), desktop::HostWindow::Stays::kYes);
    window().notice_dismissed = [this] { own_settings_.setValue(QLatin1String(kWelcomeRead), true); };
  }
  window().show();
  view_->FocusFirstField();
}

void Desktop::Pressed(int button) {
  if (button == kHelpButton) desktop::ShowHelp(window());
  if (button < 1 || button > kPages) return;
  office_.workspace().pages().tabs.Select(static_cast<workspace::PageIndex>(button - 1));
}

bool Desktop::Close() {
  own_settings_.setValue(QLatin1String(kGeometry), window().saveGeometry());
  return office_.workspace().CloseDocument();
}

void Desktop::TellFaults() {
  const auto faults = office_.Faults();
  if (faults.empty()) return;
  for (const auto& fault : faults)
    office_.services().errors.ReportError(fault, platform::kComponentTitle, "Desktop.Open");
  const auto others = faults.size() - 1;
  if (others > 0)
    TellError(faults.front() + " There are " + std::to_string(others) + " more faults like it.");
}

// From any thread, before there is anything else to show. Not through events_: the wait for that work holds
// it.
void Desktop::TellLongWork(const std::string& text) {
  const auto show = [this, text] {
    desktop::FitToScreen(window(), kUsualSize);
    window().ShowStatus(desktop::ToQt(text));
    window().show();
  };
  QMetaObject::invokeMethod(&window(), show, Qt::QueuedConnection);
}

// From any thread.
void Desktop::TellError(const std::string& description) {
  events_.Post([this, description] {
    shell_.ShowNotice(desktop::ToQt(description + " (The error log has the details.)"));
  });
}

}  // namespace apps
