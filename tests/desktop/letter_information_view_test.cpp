#include "desktop/forms/letter_information_view.h"

#include <gmock/gmock.h>

#include <QAccessible>
#include <QScrollBar>

#include "desktop/forms/letter_pictures.h"
#include "desktop/shell/form_dialog.h"
#include "tests/desktop/window_driver.h"
#include "tests/fakes/fake_services.h"

namespace {

using composition::frmBatch;

constexpr const char* kContext =
    R"(<C State="800000" V_ExplainAddr="No usable address."><A State="800000" V_EnglishDesc="Table">)"
    R"(<B State="400000" V_EnglishDesc="Account" V_ExplainErr="Needed."/></A><D State="400000"/></C>)";

class TheLetterInformation : public testing::Test {
 protected:
  void GivenDiagnosticMode() { services.settings_store.Put("DMVKorvadsk", "System", "DontPrint", "Y"); }
  void Open(const std::string& context = kContext) {
    form.ErrBookMark(context);
    form.Load();
    view = new desktop::LetterInformationView(form);
    dialog = std::make_unique<desktop::FormDialog>(form, view, nullptr);
    dialog->Present();
    dialog->activateWindow();
    tests::WaitForKeyboard(*dialog);
    tests::Settle();
    tree = view->findChild<desktop::TreeView*>();
  }
  void UserPresses(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
  QTreeWidgetItem& Field(int n) { return *tree->topLevelItem(0)->child(n); }
  QColor ColourOf(QTreeWidgetItem& item) { return item.foreground(0).color(); }

  fakes::FakeServices services;
  frmBatch form{services.services()};
  desktop::LetterInformationView* view = nullptr;
  std::unique_ptr<desktop::FormDialog> dialog;
  desktop::TreeView* tree = nullptr;
};

TEST_F(TheLetterInformation, ShowsTheTreeOpenWithPicturesAndInItsWidth) {
  Open();
  EXPECT_EQ(dialog->windowTitle(), "Letter Information");
  EXPECT_NEAR(tree->width(), 9888 * tree->logicalDpiX() / 1440, 1);
  EXPECT_TRUE(tree->topLevelItem(0)->isExpanded());
  EXPECT_TRUE(Field(0).isExpanded());
  EXPECT_EQ(Field(0).child(0)->text(0), "Account");
  EXPECT_FALSE(Field(0).icon(0).isNull());
  EXPECT_FALSE(view->findChild<QGroupBox*>()->isVisible());
}

TEST_F(TheLetterInformation, IsWorkedByTheKeyboard) {
  GivenDiagnosticMode();
  Open();
  ASSERT_EQ(QApplication::focusWidget(), tree);
  UserPresses(Qt::Key_Down);  // to the first one
  EXPECT_EQ(form.bookmark_name.caption(), "C");
  UserPresses(Qt::Key_Down);
  UserPresses(Qt::Key_Down);
  EXPECT_EQ(form.bookmark_name.caption(), "B");
  EXPECT_EQ(form.bookmark_error.caption(), "Needed.");
  UserPresses(Qt::Key_Up);
  UserPresses(Qt::Key_Left);  // closes the one above
  EXPECT_FALSE(form.tvw.top_level()[0]->children[0]->expanded);
  UserPresses(Qt::Key_Return);
  EXPECT_FALSE(form.shown());
}

TEST_F(TheLetterInformation, ExplainsTheFieldThatIsClicked) {
  GivenDiagnosticMode();
  Open();
  const auto click = [&] {
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(&Field(1)).center());
  };
  int clicks = 0;
  const auto counted = form.tvw.NodeClick.Connect([&](const platform::Tree::Node&) { ++clicks; });
  click();
  EXPECT_EQ(form.bookmark_name.caption(), "D");
  click();
  EXPECT_EQ(clicks, 2) << "on the selected field again, and once each time";
}

TEST_F(TheLetterInformation, ReadsOutWhatThePictureSays) {
  Open();
  auto* read = QAccessible::queryAccessibleInterface(tree);
  ASSERT_NE(read, nullptr);
  EXPECT_EQ(read->text(QAccessible::Name), "Fields of the letter");
  EXPECT_EQ(Field(0).data(0, Qt::AccessibleTextRole), "Table, error further down");
  EXPECT_EQ(Field(1).data(0, Qt::AccessibleTextRole), "D, error");
}

TEST_F(TheLetterInformation, WritesErrorsInARedThatCanBeReadOnEveryBackground) {
  Open();
  const QPalette usual = tree->palette();
  for (const auto background : {Qt::white, Qt::black}) {
    auto palette = usual;
    palette.setColor(QPalette::Base, background);
    tree->setPalette(palette);
    const auto red = ColourOf(Field(1));
    EXPECT_GT(red.red(), red.green() + 60);
    EXPECT_GT(std::abs(qGray(red.rgb()) - qGray(QColor(background).rgb())), 60) << red.name().toStdString();
  }
  EXPECT_EQ(Field(0).data(0, Qt::ForegroundRole), QVariant()) << "black is the palette's own colour of text";
}

TEST_F(TheLetterInformation, LetsADeepFieldBeScrolledTo) {
  std::string context;
  for (int level = 1; level < 256; ++level) context += R"(<E State="800000">)";
  context += R"(<E State="400000" V_EnglishDesc="The deepest"/>)";
  for (int level = 1; level < 256; ++level) context += "</E>";
  Open(context);
  UserPresses(Qt::Key_Down);
  UserPresses(Qt::Key_End);
  EXPECT_EQ(tree->currentItem()->text(0), "The deepest");
  EXPECT_GT(tree->horizontalScrollBar()->maximum(), tree->width());
}

TEST(LetterPictures, DifferWithoutTheirColours) {
  std::vector<QImage> shapes;
  for (const auto* key : {frmBatch::kCorrect, frmBatch::kErrorInChild, frmBatch::kError}) {
    shapes.push_back(
        desktop::LetterPicture(key).pixmap(16, 16).toImage().convertToFormat(QImage::Format_Mono));
  }
  EXPECT_NE(shapes[0], shapes[1]);
  EXPECT_NE(shapes[0], shapes[2]);
  EXPECT_NE(shapes[1], shapes[2]);
  EXPECT_TRUE(desktop::LetterPicture("").isNull());
}

}  // namespace
