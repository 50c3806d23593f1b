#include <exception>
#include <filesystem>
#include <iostream>
#include <optional>

#include <QApplication>
#include <QCommandLineParser>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QSettings>

#include "apps/office.h"
#include "desktop/help_box.h"
#include "desktop/office_style.h"
#include "desktop/print_notices.h"
#include "desktop/qt_event_queue.h"
#include "desktop/qt_host_shell.h"
#include "desktop/qt_preview_viewer.h"
#include "desktop/qt_text.h"
#include "desktop/workspace_view.h"

namespace {

constexpr auto kWelcome =
    "New here? Choose a customer, then a letter under Correspondence Names, then Create Letter. F1 tells "
    "more.";
constexpr auto kWelcomeRead = "Window/WelcomeRead";
constexpr auto kGeometry = "Window/Geometry";
constexpr QSize kUsualSize(1240, 780);

/// The pages behind the first three buttons of the host's toolbar, and the button that helps.
constexpr int kHelpButton = 15;

/// The desktop of one data folder.
class Desktop {
 public:
  explicit Desktop(const host::DataFolder& folder)
      : own_settings_(desktop::ToQt((folder.Config() / "desktop.ini").string()), QSettings::IniFormat),
        shell_(events_),
        preview_(events_, shell_.window()),
        notices_(shell_.window()),
        office_(folder,
                {shell_, shell_, events_, preview_, notices_,
                 [this](const std::string& description, const std::string&) { TellError(description); }}) {}

  int Run() {
    auto& window = shell_.window();
    auto& workspace = office_.workspace();
    workspace.Initialize();
    auto* view = new desktop::WorkspaceView(workspace.pages());
    window.ShowDocument(view);
    window.toolbar_pressed = [this](int button) { Pressed(button); };
    window.may_close = [&] { return Close(); };
    OpenWindow();
    workspace.Show();
    const int status = QApplication::exec();
    delete view;  // before the controls it shows
    return status;
  }

 private:
  void OpenWindow() {
    auto& window = shell_.window();
    window.resize(kUsualSize);
    window.restoreGeometry(own_settings_.value(QLatin1String(kGeometry)).toByteArray());
    if (!own_settings_.value(QLatin1String(kWelcomeRead), false).toBool()) {
      window.ShowNotice(QLatin1String(kWelcome));
      window.notice_dismissed = [this] { own_settings_.setValue(QLatin1String(kWelcomeRead), true); };
    }
    window.show();
  }

  void Pressed(int button) {
    if (button == kHelpButton) desktop::ShowHelp(shell_.window());
    if (button < 1 || button > 3) return;
    office_.workspace().pages().tabs.Select(static_cast<workspace::PageIndex>(button - 1));
  }

  bool Close() {
    own_settings_.setValue(QLatin1String(kGeometry), shell_.window().saveGeometry());
    return office_.workspace().CloseDocument();
  }

  /// From any thread.
  void TellError(const std::string& description) {
    events_.Post([this, description] {
      shell_.window().ShowNotice(desktop::ToQt(description + " (The error log has the details.)"));
    });
  }

  QSettings own_settings_;
  desktop::QtEventQueue events_;
  desktop::QtHostShell shell_;
  desktop::QtPreviewViewer preview_;
  desktop::PrintNotices notices_;
  apps::Office office_;  // last: it uses all of the above
};

constexpr int kRefused = 1;
constexpr int kWrongUsage = 2;

/// What the words after the program's name say; read before there is a screen, which help does not need.
class CommandLine {
 public:
  CommandLine() {
    options_.setApplicationDescription(QStringLiteral("Produces and tracks official letters."));
    options_.addHelpOption();
    options_.addOption({QStringLiteral("data"),
                        QStringLiteral("The data folder. Without it, the user's own."),
                        QStringLiteral("DIR")});
  }

  /// The status to end with; nothing when the program goes on.
  std::optional<int> Read(const QStringList& words) {
    const bool read = options_.parse(words);
    if (!read || !options_.positionalArguments().isEmpty()) {
      std::cerr << "zemlo-corresp: "
                << (read ? "There are no arguments." : desktop::FromQt(options_.errorText()))
                << " \"zemlo-corresp --help\" explains the options.\n";
      return kWrongUsage;
    }
    if (!options_.isSet(QStringLiteral("help"))) return std::nullopt;
    std::cout << desktop::FromQt(options_.helpText());
    return 0;
  }

  host::DataFolder Data() const {
    const auto named = options_.value(QStringLiteral("data"));
    if (named.isEmpty()) return host::DataFolder::OfUser();
    return host::DataFolder(std::filesystem::absolute(desktop::FromQt(named)));
  }

 private:
  QCommandLineParser options_;
};

}  // namespace

int main(int argc, char** argv) {
  CommandLine options;
  {
    const QCoreApplication words(argc, argv);
    if (const auto status = options.Read(QCoreApplication::arguments())) return *status;
  }
  const QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("zemlo-corresp"));
  QApplication::setStyle(new desktop::OfficeStyle);
  QLoggingCategory::setFilterRules(QStringLiteral("qt.pdf.search=false"));  // a miss is no news
  try {
    return Desktop(options.Data()).Run();
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    QMessageBox::critical(nullptr, QStringLiteral("Correspondence"), QString::fromUtf8(failure.what()));
    return kRefused;
  }
}
