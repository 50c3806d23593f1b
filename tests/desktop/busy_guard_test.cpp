#include "desktop/shell/busy_guard.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/binders/date_field_edit.h"
#include "desktop/binders/pick_list_field.h"
#include "tests/desktop/sample_pages.h"
#include "tests/desktop/window_driver.h"

namespace {

/// A document whose fields are all worked by mouse and keyboard.
class ABusyDocument : public testing::Test {
 protected:
  ABusyDocument() {
    auto* layout = new QVBoxLayout(&window);
    for (QWidget* widget : std::initializer_list<QWidget*>{text, list, day}) layout->addWidget(widget);
    desktop::Bind(sample.pages.correspondence.ZEMLO_LetterType, *list);
    list_text = list->lineEdit()->text();
    shown.emplace(window);
  }
  void UserWorksEveryField() {
    QTest::keyClicks(text, QStringLiteral("7"));
    QTest::keyClicks(list, QStringLiteral("x"));
    QTest::keyClick(list, Qt::Key_F4);
    QTest::mouseClick(list, Qt::LeftButton);
    QTest::mouseClick(&day->box(), Qt::LeftButton, {}, QPoint(5, day->box().height() / 2));
    QTest::keyClick(&day->edit(), Qt::Key_Up);
  }

  tests::SamplePages sample;
  QWidget window;
  QLineEdit* text = new QLineEdit;
  desktop::PickListField* list = new desktop::PickListField;
  desktop::DateFieldEdit* day = new desktop::DateFieldEdit;
  QString list_text;
  std::optional<tests::ShownWindow> shown;
  desktop::BusyGuard guard{window};
};

// What was asked for could be changed under the hourglass, and the reply was taken for what stood there then.
TEST_F(ABusyDocument, KeepsItsFieldsAsTheyAre) {
  guard.SetBusy(true);
  UserWorksEveryField();
  EXPECT_EQ(text->text(), QString());
  EXPECT_EQ(list->lineEdit()->text(), list_text);
  EXPECT_FALSE(list->IsOpen());
  EXPECT_FALSE(day->date());

  guard.SetBusy(false);
  UserWorksEveryField();
  EXPECT_EQ(text->text(), QStringLiteral("7"));
  EXPECT_NE(list->lineEdit()->text(), list_text);
  EXPECT_TRUE(day->date());
}

TEST_F(ABusyDocument, TakesNoRowOfAListThatIsOpen) {
  list->showPopup();
  guard.SetBusy(true);
  auto& view = list->view();
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(view.model()->index(2, 0)).center());
  QTest::keyClick(&view, Qt::Key_Return);
  EXPECT_EQ(list->lineEdit()->text(), list_text);
  QTest::keyClick(&view, Qt::Key_Escape);
  EXPECT_FALSE(list->IsOpen()) << "Esc stays alive";
}

TEST_F(ABusyDocument, LeavesTabAndItsDialogsAlive) {
  QDialog dialog(&window);
  QPushButton cancel(QStringLiteral("Cancel Print Job"), &dialog);
  int cancelled = 0;
  QObject::connect(&cancel, &QPushButton::clicked, [&] { ++cancelled; });
  text->setFocus();
  guard.SetBusy(true);
  QTest::keyClick(text, Qt::Key_Tab);
  EXPECT_TRUE(list->hasFocus());
  dialog.show();
  QTest::mouseClick(&cancel, Qt::LeftButton);
  QTest::keyClick(&cancel, Qt::Key_Space);
  EXPECT_EQ(cancelled, 2);
}

}  // namespace
