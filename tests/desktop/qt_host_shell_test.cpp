#include "desktop/shell/qt_host_shell.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>

#include "desktop/shell/form_dialog.h"
#include "platform/failure.h"
#include "tests/desktop/window_driver.h"
#include "tests/desktop/window_reader.h"
#include "tests/fakes/fake_view_settings.h"
#include "tests/support/temporary_folder.h"

namespace {

using platform::Message;
using platform::MessageAnswer;
using platform::MessageButtons;
using platform::MessageIcon;

class frmSample : public platform::Form {
 public:
  frmSample() : Form("Batch Details") {}
  bool may_close = true;
  bool closes_while_loading = false;

 protected:
  void OnLoad() override {
    if (closes_while_loading) Close();
  }
  bool OnQueryUnload() override { return may_close; }
};

struct PaintedLabel : QLabel {
  using QLabel::QLabel;
  int painted = 0;
  void paintEvent(QPaintEvent* event) override {
    ++painted;
    QLabel::paintEvent(event);
  }
};

class TheHostShell : public testing::Test {
 protected:
  TheHostShell() {
    shell.ShowFormsWith<frmSample>([](frmSample&) { return new QLineEdit; });
    shell.window().show();
  }
  bool Shows(const char* text) {
    return std::ranges::any_of(shell.window().findChildren<QLabel*>(), [&](const auto* label) {
      return label->isVisible() && label->text() == QString::fromUtf8(text);
    });
  }
  desktop::QtEventQueue queue;
  desktop::QtHostShell shell{queue};
  frmSample form;
};

TEST_F(TheHostShell, DropsWhatItToldOfTheCommandBeforeAndShowsWorkInHand) {
  auto& window = shell.window();
  window.ShowNotice(QStringLiteral("The letter could not be printed."));
  tests::Settle();
  EXPECT_TRUE(Shows("The letter could not be printed."));
  shell.CommandBegins();
  EXPECT_FALSE(Shows("The letter could not be printed."));
  window.ShowNotice(QStringLiteral("New here?"), desktop::HostWindow::Stays::kYes);
  tests::Settle();
  shell.CommandBegins();
  EXPECT_TRUE(Shows("New here?"));

  window.ShowWork(true);
  EXPECT_TRUE(Shows("The letter is being laid out"));
  window.ShowWork(false);
  EXPECT_FALSE(Shows("The letter is being laid out"));
}

TEST_F(TheHostShell, PutsAFormThatIsLargerThanTheScreenIntoOneThatScrolls) {
  form.Load();
  auto* view = new QWidget;
  view->setMinimumSize(shell.window().screen()->availableSize() * 2);
  desktop::FormDialog dialog(form, view, &shell.window());
  dialog.Present();
  tests::Settle();
  EXPECT_TRUE(shell.window().screen()->availableGeometry().contains(dialog.frameGeometry()));
  form.Close();
}

TEST_F(TheHostShell, AsksWithNoAsTheDefaultAndHoldsRepliesBackMeanwhile) {
  bool reply = false;
  bool reply_during_box = true;
  tests::OnNextModal([&](QWidget& window) {
    auto& box = dynamic_cast<QMessageBox&>(window);
    EXPECT_EQ(box.windowTitle(), QStringLiteral("Correspondence"));
    EXPECT_EQ(box.text(), QStringLiteral("First line\n<b>Second</b>"));
    EXPECT_EQ(box.icon(), QMessageBox::Question);
    EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
    queue.Post([&] { reply = true; });
    tests::Settle();
    reply_during_box = reply;
    QTest::keyClick(&box, Qt::Key_Return);
  });

  const auto answer = shell.ShowMessage({"First line\r\n<b>Second</b>\r\n", MessageIcon::kQuestion,
                                         "Correspondence", MessageButtons::kYesNo, MessageAnswer::kNo});

  EXPECT_EQ(answer, MessageAnswer::kNo);
  EXPECT_FALSE(reply_during_box);
  tests::Settle();
  EXPECT_TRUE(reply);
}

TEST_F(TheHostShell, ShowsNoHourglassOverABoxAndShowsItAgainAfterwards) {
  shell.SetMousePointer(platform::MousePointer::kHourglass);
  shell.SetMousePointer(platform::MousePointer::kHourglass);
  tests::OnNextModal([](QWidget& box) {
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    QTest::keyClick(&box, Qt::Key_Escape);
  });

  shell.ShowMessage({.text = "Done.", .icon = MessageIcon::kInformation, .title = "Correspondence"});

  ASSERT_NE(QApplication::overrideCursor(), nullptr);
  shell.SetMousePointer(platform::MousePointer::kNormal);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(TheHostShell, ReturnsFromAModalFormWhenAReplyHasClosedIt) {
  tests::OnNextModal([&](QWidget& window) {
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Batch Details"));
    form.SetCaption("Batch Details - Batch Sequence # 7");
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Batch Details - Batch Sequence # 7"));
    queue.Post([&] { form.Close(); });
  });

  shell.ShowModal(form);

  EXPECT_FALSE(form.shown());
  EXPECT_FALSE(form.loaded());
}

TEST_F(TheHostShell, LeavesAFormThatRefusesToCloseOnTheScreen) {
  form.may_close = false;
  tests::OnNextModal([&](QWidget& window) {
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible());
    window.close();
    EXPECT_TRUE(window.isVisible());
    form.may_close = true;
    window.close();
  });

  shell.ShowModal(form);

  EXPECT_FALSE(form.shown());
}

TEST_F(TheHostShell, DoesNotShowAFormThatClosesItselfWhileLoading) {
  form.closes_while_loading = true;
  shell.ShowModal(form);
  EXPECT_FALSE(form.shown());
}

TEST_F(TheHostShell, ShowsAModelessFormAndReturnsAtOnce) {
  shell.Show(form);
  EXPECT_TRUE(form.shown());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);

  form.Close();
  tests::Settle();
  EXPECT_FALSE(form.shown());
}

TEST_F(TheHostShell, RefusesAFormNobodyShows) {
  struct frmUnknown : platform::Form {
    frmUnknown() : Form("Unknown") {}
  } unknown;
  EXPECT_THROW(shell.ShowModal(unknown), platform::Failure);
}

TEST_F(TheHostShell, SwitchesTheFiveDocumentButtonsAndIgnoresOthers) {
  for (const int button : {7, 8, 9, 14, 12, 99}) shell.EnableToolbarButton(button, false, "zemlo-corresp");
  for (const int button : {7, 8, 9, 14, 12}) {
    ASSERT_NE(shell.window().ToolbarButton(button), nullptr) << button;
    EXPECT_FALSE(shell.window().ToolbarButton(button)->isEnabled()) << button;
  }
  EXPECT_TRUE(shell.window().ToolbarButton(1)->isEnabled());

  shell.ShowStatus("Requesting letter history");
  EXPECT_TRUE(Shows("Requesting letter history"));
}

TEST_F(TheHostShell, PaintsButHoldsRepliesBackWhileALetterIsLaidOut) {
  bool reply = false;
  PaintedLabel label(&shell.window());
  label.show();
  tests::Settle();
  const int before = label.painted;
  label.update();
  queue.Post([&] { reply = true; });

  shell.WaitUntil([&] { return label.painted > before; });

  EXPECT_FALSE(reply);
  tests::Settle();
  EXPECT_TRUE(reply);
}

TEST_F(TheHostShell, TakesNoCommandOfTheDocumentWhileItWaits) {
  auto* button = new QPushButton(QStringLiteral("Search"));
  int clicks = 0;
  QObject::connect(button, &QPushButton::clicked, [&] { ++clicks; });
  shell.window().ShowDocument(button);
  const auto click = [&] { QTest::mouseClick(button, Qt::LeftButton); };

  shell.SetReady(false);
  click();
  shell.SetReady(true);
  shell.SetMousePointer(platform::MousePointer::kHourglass);
  click();
  EXPECT_EQ(clicks, 0);

  shell.SetMousePointer(platform::MousePointer::kNormal);
  click();
  EXPECT_EQ(clicks, 1);
}

// A box made the pointer normal, and a print that waited for a quiet moment began under it.
// The page was cleared, or another row chosen, and then the preview of the letter before opened over it.
TEST_F(TheHostShell, IsBusyUntilThePreviewThatIsLaidOutIsThere) {
  int idle = 0;
  const auto told = shell.guard().Idle.Connect([&idle] { ++idle; });
  shell.LayoutUnderWay(true);
  shell.SetMousePointer(platform::MousePointer::kHourglass);
  shell.SetMousePointer(platform::MousePointer::kNormal);
  EXPECT_TRUE(shell.guard().busy());
  EXPECT_EQ(idle, 0);
  shell.LayoutUnderWay(false);
  EXPECT_FALSE(shell.guard().busy());
  EXPECT_EQ(idle, 1);
}

TEST_F(TheHostShell, IsBusyUnderAnOpenBoxAndWhileAReplyIsAwaitedWhateverThePointer) {
  int idle = 0;
  const auto told = shell.guard().Idle.Connect([&idle] { ++idle; });
  bool awaits = true;
  shell.guard().awaits_reply = [&awaits] { return awaits; };
  const auto show_box = [this] {
    bool busy_under_box = false;
    tests::OnNextModal([&](QWidget& box) {
      tests::Settle();
      busy_under_box = shell.guard().busy();
      QTest::keyClick(&box, Qt::Key_Escape);
    });
    shell.ShowMessage({.text = "File download not successful.", .title = "Correspondence"});
    return busy_under_box;
  };

  shell.SetMousePointer(platform::MousePointer::kHourglass);
  EXPECT_TRUE(show_box());
  EXPECT_EQ(idle, 0);
  shell.SetReady(true);  // as a failed download does while a search is under way
  shell.SetMousePointer(platform::MousePointer::kNormal);
  EXPECT_TRUE(shell.guard().busy());
  EXPECT_EQ(idle, 0);

  awaits = false;  // its reply: the hourglass, its box, the pointer
  shell.SetMousePointer(platform::MousePointer::kHourglass);
  shell.SetMousePointer(platform::MousePointer::kNormal);
  EXPECT_FALSE(shell.guard().busy());
  EXPECT_EQ(idle, 1);
  EXPECT_TRUE(show_box()) << "also where nothing was awaited";
  EXPECT_EQ(idle, 2);
}

TEST_F(TheHostShell, AsksForThePrinterAndRemembersItWithTheSides) {
  using platform::PrintChoice;
  fakes::FakeViewSettings remembered;
  desktop::QtHostShell asking(queue, &remembered);
  platform::PrintQuestion question{.printers = {{"hall"}, {"laser"}, {"PDF folder", false}},
                                   .proposed = {.printer = "hall"}};
  const auto user_types = [](const std::vector<Qt::Key>& keys, const QString& pages = {}) {
    tests::OnNextModal([keys, pages](QWidget& box) {
      for (const auto key : keys) QTest::keyClick(QApplication::focusWidget(), key);
      if (!pages.isEmpty()) QTest::keyClicks(box.findChild<QLineEdit*>(QStringLiteral("pages")), pages);
      QTest::keyClick(&box, Qt::Key_Return);
      if (box.isVisible()) QTest::keyClick(&box, Qt::Key_Escape);
    });
  };
  // The next printer, two copies, both sides.
  user_types({Qt::Key_Down, Qt::Key_Tab, Qt::Key_Up, Qt::Key_Tab, Qt::Key_End}, QStringLiteral("3, 1-2"));
  EXPECT_EQ(
      asking.AskPrint(question),
      (PrintChoice{.printer = "laser", .copies = 2, .sides = PrintChoice::Sides::kBoth, .pages = "1-3"}));
  user_types({}, QStringLiteral("4-2"));
  EXPECT_EQ(asking.AskPrint(question), std::nullopt) << "no pages: Enter does nothing, Esc cancels";

  question.with_dialog = false;
  const PrintChoice last = {.printer = "laser", .sides = PrintChoice::Sides::kBoth};
  EXPECT_EQ(asking.AskPrint(question), last);
  question.printers = {{"hall"}};
  EXPECT_EQ(asking.AskPrint(question), question.proposed) << "the printer has gone";
}

TEST_F(TheHostShell, ShowsANoticeAboveTheFormInFrontToo) {
  tests::OnNextModal([&](QWidget& window) {
    shell.ShowNotice(QStringLiteral("The disk is full."));
    tests::Settle();
    EXPECT_THAT(tests::NoticesIn(window), testing::ElementsAre("The disk is full."));
    form.Close();
  });
  shell.ShowModal(form);
  EXPECT_THAT(tests::NoticesIn(shell.window()), testing::ElementsAre("The disk is full."));
}

/// A user at the file dialog of a save, in a folder of the test's own.
class ASave : public testing::Test {
 protected:
  /// What stands in front is worked by the steps, one after the other.
  std::optional<std::string> Save(std::vector<std::function<void(QWidget&)>> steps) {
    steps_ = std::move(steps);
    Next(0);
    return shell.AskSaveFile("Refund - Ann - 2026-07-14.docx");
  }
  std::function<void(QWidget&)> Names(const QString& name) {
    return [this, name](QWidget& window) {
      auto& dialog = dynamic_cast<QFileDialog&>(window);
      proposed.push_back(dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text().toStdString());
      folders.push_back(dialog.directory().absolutePath().toStdString());
      dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(name);
      QTest::keyClick(&dialog, Qt::Key_Return);
    };
  }
  std::function<void(QWidget&)> Answers(QMessageBox::StandardButton answer) {
    return [this, answer](QWidget& window) {
      auto& box = dynamic_cast<QMessageBox&>(window);
      questions.push_back(box.text().toStdString());
      EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
      box.button(answer)->click();
    };
  }

  tests::TemporaryFolder folder;
  fakes::FakeViewSettings remembered;
  desktop::QtEventQueue queue;
  desktop::QtHostShell shell{queue, &remembered};
  std::vector<std::string> proposed, folders, questions;

 private:
  void Next(std::size_t step) {
    if (step == steps_.size()) return;
    tests::OnNextModal([this, step](QWidget& window) {
      Next(step + 1);
      steps_[step](window);
    });
  }
  std::vector<std::function<void(QWidget&)>> steps_;
};

// "Hartsfield" was typed where Hartsfield.docx was, and the file was replaced without a word.
TEST_F(ASave, AsksAboutTheFileThatIsWrittenWithItsEnding) {
  const auto there = (folder / "Hartsfield.docx").string();
  tests::WriteFile(there, "of last week");
  const auto name = QString::fromStdString((folder / "Hartsfield").string());
  const auto other = QString::fromStdString((folder / "Hartsfield 2.pdf").string());

  EXPECT_EQ(Save({Names(name), Answers(QMessageBox::No), Names(other)}), other.toStdString());
  EXPECT_THAT(questions,
              testing::ElementsAre(testing::HasSubstr("\"Hartsfield.docx\" is already in the folder")));
  EXPECT_EQ(proposed[1], "Hartsfield.docx") << "No leads back to the choice";

  EXPECT_EQ(Save({Names(name), Answers(QMessageBox::Yes)}), there);
}

TEST_F(ASave, ProposesItsNameInTheFolderOfTheSaveBefore) {
  Save({Names(QString::fromStdString((folder / "a.docx").string()))});
  EXPECT_EQ(Save({Names(QStringLiteral("b.docx"))}), (folder / "b.docx").string());
  EXPECT_THAT(proposed, testing::Each("Refund - Ann - 2026-07-14.docx"));
  EXPECT_EQ(folders[1], folder.path().string());
}

}  // namespace
