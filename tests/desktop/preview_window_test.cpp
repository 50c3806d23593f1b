#include "desktop/preview/preview_window.h"

#include <gmock/gmock.h>

#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPdfWriter>
#include <QScreen>

#include "desktop/preview/qt_preview_viewer.h"
#include "tests/desktop/window_driver.h"
#include "tests/desktop/window_reader.h"
#include "tests/support/temporary_folder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

void WritePdf(const std::filesystem::path& file) {
  QPdfWriter pdf(QString::fromStdString(file.string()));
  pdf.setPageSize(QPageSize(QPageSize::Letter));
  QPainter painter(&pdf);
  painter.drawText(400, 800, QStringLiteral("Certificate of liability"));
  pdf.newPage();
  painter.drawText(400, 800, QStringLiteral("The liability is 1,045.50"));
}

class APreview : public testing::Test {
 protected:
  APreview() {
    WritePdf(folder / "letter.pdf");
    main_window.show();
  }
  void Open() {
    platform::PreviewContent content;
    content.pdf = folder / "letter.pdf";
    content.title = "CTL_0304.docx";
    content.not_filled = not_filled;
    content.print = [this] {
      happened.push_back("print");
      if (released_while_printing) open.reset();
    };
    content.save = [this] { happened.push_back("save"); };
    content.closed = [this] { happened.push_back("closed"); };
    open = viewer.Open(std::move(content));
    ASSERT_TRUE(tests::WaitFor([this] { return Window() != nullptr && Window()->isActiveWindow(); }));
  }
  desktop::PreviewDialog* Window() {
    return dynamic_cast<desktop::PreviewDialog*>(QApplication::activeModalWidget());
  }

  tests::TemporaryFolder folder;
  desktop::QtEventQueue queue;
  QWidget main_window;
  desktop::BusyGuard guard{main_window};
  desktop::QtPreviewViewer viewer{queue, guard, main_window};
  std::unique_ptr<platform::PreviewWindow> open;
  std::vector<std::string> happened;
  bool released_while_printing = false;
  std::vector<std::string> not_filled;
};

TEST_F(APreview, StandsOnTheScreenWithItsTitle) {
  main_window.move(0, 0);
  Open();
  const auto screen = Window()->screen()->availableGeometry();
  auto& window = *Window();
  EXPECT_LT(window.height(), screen.height()) << "the title needs room too";
  window.move(30, -40);
  window.setVisible(false);
  window.setVisible(true);
  EXPECT_TRUE(screen.contains(window.frameGeometry()));
}

TEST_F(APreview, ShowsThePagesAboveEverythingAndReturnsAtOnce) {
  Open();

  EXPECT_EQ(Window()->windowTitle(), QStringLiteral("CTL_0304.docx"));
  EXPECT_EQ(Window()->windowModality(), Qt::ApplicationModal);
  EXPECT_EQ(Window()->pages().document()->pageCount(), 2);
  EXPECT_THAT(happened, IsEmpty());
}

TEST_F(APreview, PrintsAndSavesByKeyAndTellsOnceThatItWasClosed) {
  Open();
  QTest::keyClick(Window(), Qt::Key_P, Qt::ControlModifier);
  QTest::keyClick(Window(), Qt::Key_S, Qt::ControlModifier);
  QTest::keyClick(Window(), Qt::Key_Escape);
  EXPECT_THAT(happened, ElementsAre("print", "save")) << "closed comes from the event loop";

  tests::Settle();
  EXPECT_THAT(happened, ElementsAre("print", "save", "closed"));
  open.reset();
  tests::Settle();
  EXPECT_EQ(happened.size(), 3u);
}

TEST_F(APreview, PrintsOnceWhenTheReplyThatIsWaitedForIsThere) {
  Open();
  guard.SetBusy(true);
  QTest::keyClick(Window(), Qt::Key_P, Qt::ControlModifier);
  QTest::keyClick(Window(), Qt::Key_P, Qt::ControlModifier);
  tests::Settle();
  EXPECT_THAT(happened, IsEmpty());

  guard.SetBusy(false);
  EXPECT_THAT(happened, IsEmpty()) << "the reply's handler may not be through";
  tests::Settle();
  EXPECT_THAT(happened, ElementsAre("print"));
}

TEST_F(APreview, GoesWithoutAWordWhenItsHolderLetsItGo) {
  Open();
  open.reset();
  tests::Settle();

  EXPECT_EQ(Window(), nullptr);
  EXPECT_THAT(happened, IsEmpty());
}

TEST_F(APreview, MayBeLetGoWhileItPrints) {
  released_while_printing = true;
  Open();
  QTest::keyClick(Window(), Qt::Key_P, Qt::ControlModifier);
  tests::Settle();

  EXPECT_THAT(happened, ElementsAre("print"));
  EXPECT_EQ(Window(), nullptr);
}

TEST_F(APreview, FindsATextOnEveryPageAndGoesRound) {
  Open();
  auto& pages = Window()->pages();
  QTest::keyClick(Window(), Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(Window()->findChild<QLineEdit*>(), QStringLiteral("liability"));

  ASSERT_TRUE(tests::WaitFor([&] { return pages.finds() == 2; }));
  EXPECT_EQ(pages.current_find(), 0);
  pages.GoToFind(-1);
  EXPECT_EQ(pages.current_find(), 1);
  pages.grab();  // marks are painted without trouble

  Window()->findChild<QLineEdit*>()->clear();
  EXPECT_EQ(pages.finds(), 0);
  EXPECT_EQ(pages.current_find(), -1);
}

TEST_F(APreview, FitsTheWidthUntilTheReaderZooms) {
  Open();
  auto& pages = Window()->pages();
  Window()->resize(700, 500);
  tests::Settle();
  const auto narrow = pages.zoomFactor();
  Window()->resize(1000, 500);
  tests::Settle();
  EXPECT_GT(pages.zoomFactor(), narrow);

  pages.ZoomBy(2);
  const auto zoomed = pages.zoomFactor();
  Window()->resize(700, 500);
  tests::Settle();
  EXPECT_EQ(pages.zoomFactor(), zoomed);
}

TEST_F(APreview, WarnsAboveThePagesOfPlacesThatShowAPlaceholder) {
  not_filled = {"DUE_DT", "U_DAY"};
  Open();
  const auto labels = Window()->findChildren<QLabel*>();
  const auto warning = std::ranges::find(labels, QStringLiteral("Warning"), &QWidget::accessibleName);
  ASSERT_NE(warning, labels.end());
  EXPECT_TRUE((*warning)->isVisible());
  EXPECT_THAT((*warning)->text().toStdString(), testing::HasSubstr("DUE_DT, U_DAY."));
  EXPECT_LT((*warning)->mapTo(Window(), QPoint()).y(), Window()->pages().mapTo(Window(), QPoint()).y());
}

TEST_F(APreview, SaysWhatFailedUntilSomethingElseIsTried) {
  Open();
  Window()->ShowNotice(QStringLiteral("The printer is jammed."));
  Window()->ShowNotice(QStringLiteral("The disk is full."));
  tests::Settle();
  EXPECT_THAT(tests::NoticesIn(*Window()), ElementsAre("The disk is full."));
  QTest::keyClick(Window(), Qt::Key_P, Qt::ControlModifier);
  EXPECT_THAT(tests::NoticesIn(*Window()), IsEmpty());
}

TEST_F(APreview, SaysSoWhenThePagesCannotBeRead) {
  tests::WriteFile(folder / "letter.pdf", "no pages");
  Open();
  EXPECT_EQ(Window()->pages().document()->pageCount(), 0);
  QTest::keyClick(Window(), Qt::Key_Escape);
  tests::Settle();
  EXPECT_THAT(happened, ElementsAre("closed"));
}

}  // namespace
