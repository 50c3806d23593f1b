// Shows the window and writes what is seen into PNG files: for looking at, not for passing.
//
//     desktop_render DIR [--dark] [--size WIDTHxHEIGHT]

#include <QApplication>
#include <QPalette>
#include <QPixmap>
#include <QTimer>

#include "desktop/host_window.h"
#include "desktop/office_style.h"
#include "desktop/workspace_view.h"
#include "tests/desktop/sample_pages.h"

namespace {

QPalette DarkPalette() {
  QPalette dark(QColor(53, 53, 56));
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  dark.setColor(QPalette::AlternateBase, QColor(38, 38, 40));
  dark.setColor(QPalette::Highlight, QColor(38, 110, 180));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    dark.setColor(QPalette::Disabled, role, QColor(130, 130, 130));
  }
  return dark;
}

void Settle() {
  for (int turn = 0; turn < 20; ++turn) QApplication::processEvents(QEventLoop::AllEvents, 10);
}

void Save(QWidget& window, const QString& file) {
  Settle();
  window.grab().save(file);
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setStyle(new desktop::OfficeStyle);
  const auto arguments = QApplication::arguments();
  const auto folder = arguments.value(1, QStringLiteral("."));
  if (arguments.contains(QStringLiteral("--dark"))) QApplication::setPalette(DarkPalette());
  const auto size = arguments.contains(QStringLiteral("--size"))
                        ? arguments.value(arguments.indexOf(QStringLiteral("--size")) + 1)
                        : QStringLiteral("1280x800");

  tests::SamplePages sample;
  sample.pages.correspondence.ZEMLO_FormTypeCodes.SetMarkedInvalid(true);
  sample.pages.tracking.to_date.SetMarkedInvalid(true);
  desktop::HostWindow window(QStringLiteral("Correspondence"));
  auto* view = new desktop::WorkspaceView(sample.pages);
  window.ShowDocument(view);
  window.ShowNotice(
      QStringLiteral("New here? Choose a customer, then a correspondence name, then Create Letter."));
  window.ShowStatus(QStringLiteral("Ready"));
  for (const int button : {7, 8, 9, 14, 12}) window.EnableToolbarButton(button, false);
  window.resize(size.section('x', 0, 0).toInt(), size.section('x', 1, 1).toInt());
  window.show();
  for (int page = 0; page < view->count(); ++page) {
    view->setCurrentIndex(page);
    if (page == 1) sample.pages.tracking.sdgGrid.UserSelects({2, 4});
    Save(window, folder + QStringLiteral("/page%1.png").arg(page));
  }
  return 0;
}
