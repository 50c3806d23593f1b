#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>

#include <QApplication>
#include <QCommandLineParser>
#include <QLoggingCategory>
#include <QMessageBox>

#include "apps/corresp/desktop.h"
#include "apps/product_files.h"
#include "desktop/look/office_style.h"
#include "desktop/look/qt_text.h"

namespace {

constexpr int kRefused = 1;
constexpr int kWrongUsage = 2;

/// What the words after the program's name say; read before there is a screen, which help does not need.
class CommandLine {
 public:
  CommandLine() {
    options_.setApplicationDescription(QStringLiteral("Produces and tracks official letters."));
    options_.addOption(
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Shows these options.")});
    options_.addOption({QStringLiteral("version"),
                        QStringLiteral("Tells the version, and the folder of tables it was made with.")});
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
    if (options_.isSet(QStringLiteral("help"))) {
      std::cout << desktop::FromQt(options_.helpText()) << std::flush;
    } else if (options_.isSet(QStringLiteral("version"))) {
      std::cout << apps::VersionText("zemlo-corresp") << std::flush;
    } else {
      return std::nullopt;
    }
    return std::cout ? 0 : kRefused;
  }

  host::DataFolder Data() const {
    const auto named = options_.value(QStringLiteral("data"));
    if (named.isEmpty()) return host::DataFolder::OfUser();
    return host::DataFolder(std::filesystem::absolute(desktop::FromQt(named)));
  }

 private:
  QCommandLineParser options_;
};

/// Qt gives up, with a core dump, where it can reach no screen; its own words name plugins.
void EndWithoutScreen(QtMsgType type, const QMessageLogContext&, const QString&) {
  if (type != QtFatalMsg) return;
  std::cerr
      << "zemlo-corresp: There is no screen to open the window on. Start it in a desktop session, or set "
         "DISPLAY. Without a screen, \"zemlo-letters --help\" tells how to make letters.\n";
  std::_Exit(kRefused);
}

std::unique_ptr<QApplication> OpenScreen(int& argc, char** argv) {
  const auto usual = qInstallMessageHandler(EndWithoutScreen);
  auto application = std::make_unique<QApplication>(argc, argv);
  qInstallMessageHandler(usual);
  return application;
}

}  // namespace

int main(int argc, char** argv) {
  CommandLine options;
  {
    const QCoreApplication words(argc, argv);
    if (const auto status = options.Read(QCoreApplication::arguments())) return *status;
  }
  const auto application = OpenScreen(argc, argv);
  QApplication::setApplicationName(QStringLiteral("zemlo-corresp"));
  QApplication::setStyle(new desktop::OfficeStyle);
  QLoggingCategory::setFilterRules(QStringLiteral("qt.pdf.search=false"));  // a miss is no news
  try {
    apps::Desktop office(options.Data());
    office.Open();
    return QApplication::exec();
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    QMessageBox::critical(nullptr, QStringLiteral("Correspondence"), QString::fromUtf8(failure.what()));
    return kRefused;
  }
}
