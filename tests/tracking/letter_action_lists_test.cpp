#include "tracking/letter_action_lists.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_services.h"

namespace tracking {
namespace {

TEST(LetterActionLists, AreReadFromTheCodeTable) {
  fakes::FakeServices fakes;
  for (const auto* code : {"VLT", "PRL", "VBK", "URM", "REP", "RES", "SAV", "MCU"}) {
    fakes.utilities.values[{"LTRACTION", code}] = std::string(" ") + code + "F ";
  }
  LetterActionLists lists;
  GetLetterAction(fakes.services(), lists);

  EXPECT_EQ(lists.ActionViewLtr, "VLTF");
  EXPECT_EQ(lists.ActionPrintLocal, "PRLF");
  EXPECT_EQ(lists.ActionViewBK, "VBKF");
  EXPECT_EQ(lists.ActionURM, "URMF");
  EXPECT_EQ(lists.ActionPrintBatch, "REPF");
  EXPECT_EQ(lists.ActionResubmit, "RESF");
  EXPECT_EQ(lists.ActionSAV, "SAVF");
  EXPECT_EQ(lists.ActionMCU, "MCUF");
}

TEST(LetterActionLists, AllowEveryStatusWhereTheTableHasNoList) {
  fakes::FakeServices fakes;
  LetterActionLists lists{.ActionViewLtr = "F"};
  GetLetterAction(fakes.services(), lists);
  EXPECT_EQ(lists.ActionViewLtr, "");
  EXPECT_TRUE(LetterActionLists::Allows(lists.ActionViewLtr, "M"));
  EXPECT_TRUE(LetterActionLists::Allows("FM", "M"));
  EXPECT_FALSE(LetterActionLists::Allows("FM", "S"));
}

}  // namespace
}  // namespace tracking
