#include "desktop/forms/letter_form_view.h"

#include <gmock/gmock.h>

#include "desktop/shell/form_dialog.h"
#include "tests/desktop/window_driver.h"
#include "tests/desktop/window_reader.h"
#include "tests/fakes/fake_services.h"
#include "tests/fakes/recording_print_component.h"

namespace {

using composition::UserBookmarks;
using testing::HasSubstr;
using testing::IsEmpty;

class TheLetterForm : public testing::Test {
 protected:
  TheLetterForm() {
    print.bookmarks = {{"PARA_ONE", "An interpreter will come.", {"PARA_ONE"}},
                       {"PARA_FREE_TEXT", "[text]", {"PARA_FREE_TEXT"}}};
    form.BookMarkInput =
        R"(<C State="18"><U_A State="8" V_EnglishDesc="Day"/><U_B State="8" V_EnglishDesc="Time"/>)"
        R"(<U_C State="8" V_EnglishDesc="Place"/><PARA_ONE State="210" V_EnglishDesc="Interpreter"/>)"
        R"(<PARA_FREE_TEXT State="210" V_EnglishDesc="Own text"/></C>)";
    form.FileName = "templates/hrg.docx";
    form.Load();
    dialog = std::make_unique<desktop::FormDialog>(form, new desktop::LetterFormView(form), nullptr);
    dialog->Present();
    dialog->activateWindow();
    tests::WaitForKeyboard(*dialog);
  }
  /// Each key goes to who has the keyboard by then: the first one opens an editor.
  void UserTypes(const char* text) {
    for (; *text != '\0'; ++text) QTest::keyClick(QApplication::focusWidget(), *text);
  }
  void UserPresses(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, with);
    tests::Settle();
  }
  std::string Focus() { return QApplication::focusWidget()->accessibleName().toStdString(); }
  std::vector<std::string> Values() {
    std::vector<std::string> values;
    for (std::size_t row = 0; row < 3; ++row)
      values.push_back(form.sdgUserBookmark.rows()->Text(row, UserBookmarks::kValue));
    return values;
  }
  bool IsTicked(std::size_t row) { return form.sdgGrid.IsTicked(row); }

  fakes::RecordingPrintComponent print;
  fakes::FakeServices services{&print};
  composition::frmLetter form{services.services(), "Letters"};
  std::unique_ptr<desktop::FormDialog> dialog;
};

TEST_F(TheLetterForm, IsFilledAndConfirmedWithTheKeyboardAlone) {
  EXPECT_EQ(Focus(), "User Bookmark");
  UserPresses(Qt::Key_Left);  // to the description, which is typed over by nobody
  UserTypes("Monday");
  EXPECT_EQ(Focus(), "Day") << "the editor is read out by its row";
  UserPresses(Qt::Key_Return);
  UserTypes("10 a.m.");
  UserPresses(Qt::Key_Tab);
  UserTypes("Room 7");
  UserPresses(Qt::Key_Return);
  EXPECT_THAT(Values(), testing::ElementsAre("Monday", "10 a.m.", "Room 7"));

  EXPECT_EQ(Focus(), "Paragraph Bookmark") << "all values are there";
  UserPresses(Qt::Key_Space);
  EXPECT_TRUE(IsTicked(0));
  EXPECT_EQ(form.txtParagraph.text(), "An interpreter will come.");
  UserPresses(Qt::Key_Down);
  UserPresses(Qt::Key_Space);
  EXPECT_TRUE(IsTicked(1));
  UserPresses(Qt::Key_Tab);
  UserTypes("Own");
  UserPresses(Qt::Key_Return);
  UserTypes("words");
  UserPresses(Qt::Key_Tab);
  EXPECT_EQ(Focus(), "Print Preview");
  UserPresses(Qt::Key_Return);
  EXPECT_THAT(print.merged, testing::ElementsAre(HasSubstr("Own&#13;\nwords||&#13;\n||</PARA_FREE_TEXT>")));
  EXPECT_TRUE(dialog->isVisible());

  print.UserPrints();
  EXPECT_FALSE(dialog->isVisible());
}

TEST_F(TheLetterForm, GoesBackToTheFirstMissingValue) {
  UserTypes("Monday");
  UserPresses(Qt::Key_Tab);
  UserPresses(Qt::Key_Escape);  // out of the next cell's editor, not out of the form
  EXPECT_TRUE(dialog->isVisible());
  form.cmdOK.UserClicks();
  tests::Settle();
  EXPECT_THAT(services.host.MessageTexts(), testing::ElementsAre(HasSubstr("\r\nTime\r\nPlace\r\n")));
  EXPECT_EQ(Focus(), "User Bookmark");
  UserTypes("noon");
  UserPresses(Qt::Key_Return);
  EXPECT_EQ(Values()[1], "noon");
}

// Values that had been typed were gone after Esc or the close box.
TEST_F(TheLetterForm, LosesNothingThatWasTypedWhenItIsLeft) {
  UserTypes("Monday");
  UserPresses(Qt::Key_Escape);
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(Values()[0], "Monday") << "there was nothing that Esc could have brought back";
  UserTypes("Tuesday");
  UserPresses(Qt::Key_Escape);
  EXPECT_EQ(Values()[0], "Monday");
  UserPresses(Qt::Key_Down);
  UserTypes("noon");
  dialog->close();
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(form.Entries().values, (std::map<std::string, std::string>{{"U_A", "Monday"}, {"U_B", "noon"}}));
}

TEST_F(TheLetterForm, IsLeftByEscape) {
  UserPresses(Qt::Key_Escape);
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(form.XMLBookMark, "");
}

TEST_F(TheLetterForm, ShowsAndReadsOutEverything) {
  EXPECT_THAT(tests::CutOffIn(*dialog), IsEmpty());
  EXPECT_THAT(tests::NamelessIn(*dialog), IsEmpty());
  EXPECT_LE(dialog->width(), 1280);
  EXPECT_LE(dialog->height(), 800);
}

}  // namespace
