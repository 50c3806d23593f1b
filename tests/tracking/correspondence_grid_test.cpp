#include "tracking/correspondence_grid.h"

#include <gtest/gtest.h>

#include "tests/fakes/fake_services.h"

namespace tracking {
namespace {

TEST(CorrespondenceGridTest, OffersOneLetterToBeViewedAndPrinted) {
  using workspace::CorrespondencePage;
  fakes::FakeServices fakes;
  CorrespondencePage page(fakes.services());
  CorrespondenceGrid grid(fakes.services(), page);
  page.sdgGrid.Bind(fakes::RowsOf("CORRHIST", {{{"SEQ_NBR", 1}}, {{"SEQ_NBR", 2}}}));
  const auto clicked = page.sdgGrid.Click.Connect([&] { grid.sdgGrid_Click(); });
  for (const auto& rows : {std::vector<std::size_t>{1}, {0, 1}, {0}, {}}) {
    page.sdgGrid.UserSelects(rows);
    for (const auto option : {CorrespondencePage::kViewLetter, CorrespondencePage::kPrintLetter}) {
      EXPECT_EQ(page.OptOnline[option].enabled(), rows.size() == 1);
    }
  }
  EXPECT_EQ(page.sdgGrid.rows()->CurrentRow(), 0u);
}

}  // namespace
}  // namespace tracking
