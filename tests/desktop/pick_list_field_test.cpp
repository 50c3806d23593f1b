#include "desktop/binders/pick_list_field.h"

#include <gmock/gmock.h>

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <functional>

#include "tests/desktop/sample_pages.h"
#include "tests/desktop/window_driver.h"

namespace {

/// A list of descriptions that completes on leaving and takes thirty typed characters.
class LetterTypes : public platform::PickList {
 public:
  explicit LetterTypes(int count) : offered_(tests::SamplePages::LetterTypes(count)) {}

  std::string DescriptionColumn() const override { return "CD_TBL_DES"; }
  void UserOpens() override { SetRows(offered_); }
  bool UserTypes(char32_t key, std::size_t selected) override {
    if (!rows()) SetRows(offered_);
    return key == 8 || shown_text().size() < 30 + selected;
  }
  void UserEditsText(std::string text) override { SetShownText(std::move(text)); }
  void UserPicks(std::size_t row) override {
    SetShownText(offered_->Text(row, "CD_TBL_DES"));
    Change();
  }
  void UserLeaves() override {
    ++left;
    if (on_leaving) on_leaving();
  }
  void Show(std::string text) { SetShownText(std::move(text)); }

  int left = 0;
  std::function<void()> on_leaving;

 private:
  const std::shared_ptr<platform::RecordSet> offered_;
};

class APickList : public testing::Test {
 protected:
  APickList() {
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(field);
    layout->addWidget(other);
    desktop::Bind(list, *field);
    shown.emplace(window);
    field->setFocus();
    changed = list.Change.Connect([this] { ++changes; });
  }
  QString CurrentInList() { return field->view().currentIndex().data().toString(); }

  LetterTypes list{5000};
  QWidget window;
  desktop::PickListField* field = new desktop::PickListField;
  QLineEdit* other = new QLineEdit;
  std::optional<tests::ShownWindow> shown;
  platform::Connection changed;
  int changes = 0;
};

TEST_F(APickList, OpensThousandsOfEntriesOfWhichItReadsThoseInSight) {
  field->showPopup();
  tests::Settle();

  auto& view = field->view();
  EXPECT_EQ(view.model()->rowCount(), 5001);
  EXPECT_TRUE(view.uniformItemSizes());
  EXPECT_LT(view.height(), 600);
  EXPECT_FALSE(view.indexAt(view.viewport()->rect().center()).data().toString().isEmpty());
}

TEST_F(APickList, MovesToTheFirstMatchAndLeavesTheTypedTextAlone) {
  QTest::keyClick(field, Qt::Key_F4);
  ASSERT_TRUE(field->IsOpen());

  QTest::keyClicks(&field->view(), QStringLiteral("NOTICE of tax due 3"));

  EXPECT_EQ(CurrentInList(), QStringLiteral("Notice of tax due 3000"));
  EXPECT_EQ(list.shown_text(), "NOTICE of tax due 3");
  EXPECT_EQ(changes, 0);

  QTest::keyClick(&field->view(), Qt::Key_Down);
  QTest::keyClick(&field->view(), Qt::Key_Return);
  EXPECT_EQ(list.shown_text(), "Notice of tax due 3001");
  EXPECT_EQ(field->lineEdit()->text(), QStringLiteral("Notice of tax due 3001"));
  EXPECT_FALSE(field->IsOpen());
  EXPECT_EQ(changes, 1);
}

TEST_F(APickList, TakesTheEntryThatIsClicked) {
  field->showPopup();
  tests::Settle();
  auto& view = field->view();
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, view.visualRect(view.model()->index(2, 0)).center());

  EXPECT_EQ(list.shown_text(), "Notice of tax due 0001");
  EXPECT_EQ(changes, 1);
}

// "bond" found nothing in "Surety Bond Demand", and nothing said so.
TEST_F(APickList, OffersWhatHoldsAllTypedWordsWhileOneTypes) {
  QTest::keyClicks(field, QStringLiteral("due 4711"));
  ASSERT_TRUE(field->IsOpen());
  EXPECT_EQ(field->view().model()->rowCount(), 1);
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(list.shown_text(), "Notice of tax due 4711") << "the only one";
  EXPECT_FALSE(field->IsOpen());
  EXPECT_EQ(changes, 1);

  field->lineEdit()->selectAll();
  QTest::keyClicks(field, QStringLiteral("due 471"));
  EXPECT_EQ(field->view().model()->rowCount(), 15) << "0471 to 4471, and 4710 to 4719";
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_TRUE(field->IsOpen()) << "there are several";
  QTest::keyClick(field, Qt::Key_Down);
  QTest::keyClick(&field->view(), Qt::Key_Down);
  QTest::keyClick(&field->view(), Qt::Key_Return);
  EXPECT_EQ(list.shown_text(), "Notice of tax due 1471");

  field->lineEdit()->selectAll();
  QTest::keyClicks(field, QStringLiteral("nothing"));
  EXPECT_FALSE(field->IsOpen());
  field->showPopup();
  EXPECT_EQ(field->view().model()->rowCount(), 5001) << "opened, the list is whole";
}

TEST_F(APickList, ClosesTheListThatTypingOpenedWhenItIsLeft) {
  QTest::keyClicks(field, QStringLiteral("notice"));
  QTest::keyClick(field, Qt::Key_Tab);
  EXPECT_FALSE(field->IsOpen());
  EXPECT_EQ(list.left, 1);
}

// The first click beside a list that typing had opened only closed it.
TEST_F(APickList, LetsAClickBesideTheListReachWhatLiesThere) {
  window.resize(400, 400);  // the list does not lie over the other field
  tests::Settle();
  QTest::keyClicks(field, QStringLiteral("due 4711"));
  auto& view = field->view();
  auto* button = new QPushButton(&window);
  button->setGeometry(0, 370, 100, 30);
  button->show();
  int clicks = 0;
  QObject::connect(button, &QPushButton::clicked, [&] { ++clicks; });
  const auto click_on = [&](QWidget& widget) {
    QTest::mousePress(&view, Qt::LeftButton, {}, view.mapFromGlobal(widget.mapToGlobal(QPoint(3, 3))));
    tests::Settle();
  };
  click_on(*other);
  EXPECT_FALSE(field->IsOpen());
  EXPECT_TRUE(other->hasFocus());

  field->setFocus();
  QTest::keyClick(field, Qt::Key_Backspace);
  ASSERT_TRUE(field->IsOpen());
  click_on(*button);
  EXPECT_EQ(clicks, 1);
  EXPECT_FALSE(button->isDown());
}

TEST_F(APickList, ClosesWithEscAndKeepsItsText) {
  list.Show("Notice");
  field->showPopup();

  QTest::keyClick(&field->view(), Qt::Key_Escape);

  EXPECT_FALSE(field->IsOpen());
  EXPECT_EQ(list.shown_text(), "Notice");
  EXPECT_EQ(changes, 0);
}

TEST_F(APickList, RefusesWhatTheControlRefusesButBackspace) {
  const std::string thirty(30, 'x');
  QTest::keyClicks(field, QString::fromStdString(thirty + "yz"));
  EXPECT_EQ(list.shown_text(), thirty);

  QTest::keyClick(field, Qt::Key_Backspace);
  EXPECT_EQ(list.shown_text(), thirty.substr(1));
  EXPECT_EQ(field->lineEdit()->text().size(), 29);
}

TEST_F(APickList, TakesAKeyInThePlaceOfWhatIsSelected) {
  list.Show(std::string(30, 'x'));
  field->lineEdit()->selectAll();
  QTest::keyClicks(field, QStringLiteral("n"));
  EXPECT_EQ(list.shown_text(), "n");
}

TEST_F(APickList, IsLeftByTabAndEnterNotByItsOwnList) {
  field->showPopup();
  field->hidePopup();
  EXPECT_EQ(list.left, 0);

  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(list.left, 1);
  QTest::keyClick(field, Qt::Key_Tab);
  EXPECT_EQ(list.left, 2);
  EXPECT_TRUE(other->hasFocus());
}

TEST_F(APickList, EnablesWithItsValueWhereTabGoesNext) {
  other->setEnabled(false);
  field->setFocus();
  list.on_leaving = [this] { other->setEnabled(true); };

  QTest::keyClick(field, Qt::Key_Tab);
  EXPECT_TRUE(other->hasFocus());
}

TEST_F(APickList, ShowsALongDescriptionFromItsStart) {
  list.Show(std::string(80, 'w'));

  EXPECT_EQ(field->lineEdit()->cursorPosition(), 0);
  EXPECT_EQ(changes, 0);
}

}  // namespace
