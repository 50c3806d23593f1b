#include "desktop/binders/option_binding.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include <QHelpEvent>
#include <QVBoxLayout>

#include "tests/desktop/window_driver.h"

namespace {

using desktop::OptionRadio;
using testing::ElementsAre;
using testing::IsEmpty;

class Options : public testing::Test {
 protected:
  void GivenOptionsWhoseArrows(OptionRadio::Arrows arrows) {
    auto* layout = new QVBoxLayout(&window);
    for (std::size_t index = 0; index < options.size(); ++index) {
      radios.push_back(new OptionRadio(arrows));
      layout->addWidget(radios.back());
      desktop::Bind(options[index], *radios.back());
      connections.push_back(options[index].Click.Connect([this, index] { Happened("click", index); }));
      connections.push_back(
          options[index].ReleasedWhenSelected.Connect([this, index] { Happened("repeat", index); }));
    }
    shown.emplace(window);
    radios[0]->setFocus();
  }
  void Happened(const char* what, std::size_t index) { happened.push_back(what + std::to_string(index)); }
  std::vector<bool> Checked() const {
    std::vector<bool> checked;
    for (const auto* radio : radios) checked.push_back(radio->isChecked());
    return checked;
  }

  platform::OptionGroup<3> options{{"View Letter", "Print Letter", "Clear"}};
  QWidget window;
  std::optional<tests::ShownWindow> shown;
  std::vector<OptionRadio*> radios;
  std::vector<platform::Connection> connections;
  std::vector<std::string> happened;
};

TEST_F(Options, AreRepeatedByTheMouseSpaceAndEnterOnASelectedOne) {
  GivenOptionsWhoseArrows(OptionRadio::Arrows::kMove);
  QTest::mouseClick(radios[1], Qt::LeftButton);
  QTest::mouseClick(radios[1], Qt::LeftButton);
  QTest::keyClick(radios[1], Qt::Key_Space);
  QTest::keyClick(radios[1], Qt::Key_Return);

  EXPECT_THAT(happened, ElementsAre("click1", "repeat1", "repeat1", "repeat1"));
  EXPECT_THAT(Checked(), ElementsAre(false, true, false));
}

TEST_F(Options, CanAllBeDeselectedByCodeAndThenClickedAfresh) {
  GivenOptionsWhoseArrows(OptionRadio::Arrows::kMove);
  options[2].SetSelected(true);
  EXPECT_THAT(Checked(), ElementsAre(false, false, true));

  options[2].SetSelected(false);
  EXPECT_THAT(Checked(), ElementsAre(false, false, false));
  QTest::mouseClick(radios[2], Qt::LeftButton);

  EXPECT_THAT(happened, ElementsAre("click2", "click2"));
}

TEST_F(Options, SayInTheirToolTipWhyTheyAreDisabled) {
  GivenOptionsWhoseArrows(OptionRadio::Arrows::kMove);
  const auto tool_tip = [&] {
    QHelpEvent asks(QEvent::ToolTip, {1, 1}, radios[1]->mapToGlobal(QPoint(1, 1)));
    QApplication::sendEvent(radios[1], &asks);
    return radios[1]->toolTip().toStdString();
  };
  EXPECT_EQ(tool_tip(), "");
  std::string reason = "Select a letter first.";
  options[1].why_disabled = [&] { return reason; };
  EXPECT_EQ(tool_tip(), "") << "it is enabled";
  options[1].SetEnabled(false);
  EXPECT_EQ(tool_tip(), reason);
  reason = "Wait.";
  EXPECT_EQ(tool_tip(), "Wait.");
  options[1].SetEnabled(true);
  window.setEnabled(false);
  EXPECT_EQ(tool_tip(), "Wait.") << "its frame is disabled";
}

TEST_F(Options, ThatAreActionsAreNotStartedByTheArrowKeys) {
  GivenOptionsWhoseArrows(OptionRadio::Arrows::kMove);
  options[1].SetEnabled(false);

  QTest::keyClick(radios[0], Qt::Key_Down);

  EXPECT_THAT(happened, IsEmpty());
  EXPECT_TRUE(radios[2]->hasFocus()) << "a disabled one is passed over";
}

TEST_F(Options, ThatAreCriteriaAreChosenByTheArrowKeys) {
  GivenOptionsWhoseArrows(OptionRadio::Arrows::kChoose);
  QTest::keyClick(radios[0], Qt::Key_Down);
  QTest::keyClick(radios[1], Qt::Key_Up);
  QTest::keyClick(radios[0], Qt::Key_Up);

  EXPECT_THAT(happened, ElementsAre("click1", "click0"));
}

TEST_F(Options, ThatAreDisabledAreNotClicked) {
  GivenOptionsWhoseArrows(OptionRadio::Arrows::kMove);
  options[1].SetEnabled(false);

  QTest::mouseClick(radios[1], Qt::LeftButton);

  EXPECT_THAT(happened, IsEmpty());
}

}  // namespace
