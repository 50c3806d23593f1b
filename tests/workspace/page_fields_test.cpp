#include "workspace/fields/page_fields.h"

#include "tests/workspace/workspace_room_test.h"

namespace workspace {
namespace {

using platform::Key;
using testing::ElementsAre;
using testing::IsEmpty;

class PageFieldsTest : public WorkspaceRoomTest {
 protected:
  /// Key by key, as a view hands typed characters on.
  static void UserTypes(platform::TextField& field, std::u32string_view keys) {
    for (const char32_t key : keys) {
      const auto taken = field.key_filter(key);
      if (taken) field.SetText(field.text() + static_cast<char>(*taken));
    }
  }
  void OnlyGoodNumberIs(const std::string& number) {
    fakes_.utilities.form_number_rule = [number](const std::string&, const std::string& given) {
      return platform::Utilities::FormNumberVerdict{given == number, "no"};
    };
  }

  PageFields fields_{fakes_.services(), pages_, search_fields_, field_check_};
  std::vector<platform::Connection> connections_ = fields_.Connect();
};

class FormNumberTest : public PageFieldsTest {
 protected:
  FormNumberTest() {
    OnlyGoodNumberIs("1234567-7");
    Field().SetText("12");
  }
  platform::TextField& Field() { return pages_.tracking.txtFormNum; }

  enum class By { kKey, kMouse };
  void UserPastes(const std::string& text, By by) {
    by == By::kKey ? Field().KeyDown(Key::Paste()) : Field().MouseDown();
    Field().SetText(text);
    by == By::kKey ? Field().KeyUp(Key::Paste()) : Field().MouseUp();
  }
};

TEST_F(FormNumberTest, TakesTheKeysOfTheChosenFormType) {
  fakes_.utilities.refused_keys = U"# x";
  form_types_.FilterFormType("CMOV", kTracking);
  UserPicksFormType("C", kTracking);
  UserTypes(Field(), U"3# 4x");
  EXPECT_EQ(Field().text(), "1234X") << "a check digit is a capital letter";
  EXPECT_THAT(fakes_.utilities.asked_form_types, testing::Each("C"));
}

TEST_F(FormNumberTest, APastedTextIsRightAsAWholeOrTheOldOneComesBack) {
  for (const auto by : {By::kKey, By::kMouse}) {
    Field().SetText("12");
    fakes_.host.beeps = 0;
    UserPastes("1234567-8", by);
    EXPECT_EQ(Field().text(), "12");
    EXPECT_EQ(fakes_.host.beeps, 1);
    UserPastes("1234567-7", by);
    EXPECT_EQ(Field().text(), "1234567-7");
    EXPECT_EQ(fakes_.host.beeps, 1);
  }
}

TEST_F(FormNumberTest, TypingIsNoPasting) {
  const Key others[] = {{45}, {45, true, true}, {45, true, false, true}, {'V', false, true}, {'1'}};
  for (const auto& key : others) {
    Field().KeyDown(key);
    Field().SetText("123");
    EXPECT_EQ(Field().text(), "123") << key.code;
    Field().SetText("12");
  }
  Field().KeyDown(Key::Paste());
  Field().KeyUp({16});  // whichever key is let go
  Field().MouseDown();
  Field().MouseUp();
  Field().SetText("123");
  EXPECT_EQ(Field().text(), "123");
  EXPECT_EQ(fakes_.host.beeps, 0);
}

TEST_F(FormNumberTest, OneChangeEndsThePastingOfBothHands) {
  Field().MouseDown();
  Field().KeyDown(Key::Paste());
  Field().SetText("1234567-7");
  Field().SetText("1");
  EXPECT_EQ(Field().text(), "1");
}

TEST_F(FormNumberTest, EveryChangeEndsWithTheCheckOfItsPage) {
  Field().SetText("123");
  EXPECT_THAT(field_check_.messages(kTracking), testing::Contains("Form number is invalid"));
  UserPastes("1234567-8", By::kMouse);
  EXPECT_TRUE(Field().marked_invalid()) << "the text that came back is no valid one either";
  UserPastes("1234567-7", By::kMouse);
  EXPECT_FALSE(Field().marked_invalid());
  EXPECT_THAT(field_check_.messages(kPage), IsEmpty());
  pages_.correspondence.txtFormNum.SetText("1");
  EXPECT_THAT(field_check_.messages(kPage), testing::Contains("Letter template is required"));
}

TEST_F(FormNumberTest, ARuleThatFailsRefusesTheKeyAndIsReported) {
  fakes_.utilities.form_number_rule = [](const auto&, const auto&) -> platform::Utilities::FormNumberVerdict {
    throw platform::Failure(platform::Failure::Kind::kUnavailable, "no rules");
  };
  UserPastes("1", By::kKey);
  EXPECT_THAT(fakes_.errors.Procedures(),
              ElementsAre("ZEMLO_FormInq.txtFormNum_Change", "ZEMLO_Corresp.CheckEdit"));
}

TEST_F(PageFieldsTest, TakesTheKeysOfABatchNumberOnly) {
  fakes_.utilities.refused_keys = U"a-";
  UserTypes(pages_.tracking.txtBatch, U"4a-2");
  EXPECT_EQ(pages_.tracking.txtBatch.text(), "42");
}

TEST_F(PageFieldsTest, TakesATroopDistrictApartAndChecksIt) {
  fakes_.utilities.unknown_troops = {"Z", "B9"};
  struct Case {
    const char32_t* typed;
    const char* shown;
    const char* troop;
    const char* district;
    const char* asked;  // "" where nothing is
    bool valid;
  };
  const Case cases[] = {
      {U"a12", "A12", "A", "12", "A/12", true},   {U"B", "B", "B", "", "B", true},
      {U"b9", "B9", "B", "9", "B/9", false},      {U"z", "Z", "Z", "", "Z", false},
      {U"  c3 ", "  C3 ", "C", "3", "C/3", true}, {U"  ", "  ", "", "", "", true},
  };
  auto& field = pages_.tracking.txtTD;
  for (const auto& [typed, shown, troop, district, asked, valid] : cases) {
    field.SetText("");
    fakes_.utilities.validated_troops = {""};
    UserTypes(field, typed);
    EXPECT_EQ(field.text(), shown);
    EXPECT_EQ(search_fields_.troop, troop) << shown;
    EXPECT_EQ(search_fields_.district, district) << shown;
    EXPECT_EQ(fakes_.utilities.validated_troops.back(), asked) << shown;
    EXPECT_EQ(field.marked_invalid(), !valid) << shown;
  }
}

TEST_F(PageFieldsTest, ChecksTheSearchAfterTheTroopDistrict) {
  pages_.tracking.OptLetterStatus[TrackingPage::kAll].SetSelected(true);
  pages_.tracking.search.SetEnabled(true);
  UserTypes(pages_.tracking.txtTD, U"A");
  EXPECT_THAT(field_check_.messages(kTracking), ElementsAre("Please select criteria"));
  EXPECT_FALSE(pages_.tracking.search.enabled());
}

class BatchCriteriaTest : public PageFieldsTest {
 protected:
  bool CanSearch() { return batch_.cmdBatch[BatchPage::kSearch].enabled(); }
  BatchPage& batch_ = pages_.batch;
};

TEST_F(BatchCriteriaTest, ADateOptionSetsTheDatesAndHasThePageChecked) {
  batch_.OptBatchStatus[0].UserClicks();
  EXPECT_FALSE(CanSearch());

  batch_.OptBatchDate[BatchPage::kDateRange].UserClicks();
  EXPECT_EQ(batch_.start_date.value(), fakes_.clock.Today());
  EXPECT_EQ(batch_.end_date.value(), fakes_.clock.Today());
  EXPECT_TRUE(CanSearch());

  batch_.OptBatchDate[BatchPage::kLastNight].UserClicks();
  EXPECT_TRUE(batch_.start_date.IsEmpty());
  EXPECT_TRUE(batch_.end_date.IsEmpty());
  EXPECT_TRUE(CanSearch());
}

TEST_F(BatchCriteriaTest, AStatusIsNeededToo) {
  batch_.OptBatchDate[BatchPage::kLastNight].UserClicks();
  EXPECT_THAT(field_check_.messages(PageIndex::kBatch), ElementsAre("Status is required"));
  batch_.OptBatchStatus[3].UserClicks();
  EXPECT_TRUE(CanSearch());
}

TEST_F(BatchCriteriaTest, ClearLeavesNoCriteriaNoRunsAndNothingToDo) {
  batch_.OptBatchDate[BatchPage::kLastNight].UserClicks();
  batch_.OptBatchStatus[1].UserClicks();
  batch_.sdgGrid.Bind(fakes::RowsOf("", {{{"BTCH_SEQ_NBR", "7"}}}));
  for (auto& option : batch_.OptBatchAct) option.SetEnabled(true);

  fields_.batch_criteria.Clear();

  for (auto& option : batch_.OptBatchDate) EXPECT_FALSE(option.selected());
  for (auto& option : batch_.OptBatchStatus) EXPECT_FALSE(option.selected());
  for (auto& option : batch_.OptBatchAct) EXPECT_FALSE(option.enabled());
  EXPECT_TRUE(batch_.start_date.IsEmpty());
  EXPECT_TRUE(batch_.end_date.IsEmpty());
  EXPECT_TRUE(batch_.sdgGrid.rows()->IsEmpty());
  EXPECT_FALSE(CanSearch());
}

TEST_F(PageFieldsTest, LeavesTheFieldsAloneOnceDisconnected) {
  connections_.clear();
  EXPECT_FALSE(pages_.tracking.txtFormNum.key_filter);
  pages_.tracking.txtTD.SetText("A1");
  EXPECT_EQ(search_fields_.troop, "");
}

}  // namespace
}  // namespace workspace
