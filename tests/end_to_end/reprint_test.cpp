#include "apps/corresp/desktop.h"
#include "tests/desktop/window_driver.h"
#include "tests/end_to_end/changed_template.h"
#include "tests/end_to_end/prepared_office.h"

namespace tests {
namespace {

using testing::HasSubstr;
using testing::SizeIs;

/// Letters that are recorded, printed again from the window.
class Reprint : public PreparedOffice {
 protected:
  void GivenNewVersionWithError() {
    WriteTemplateWithError(data_ / "server/templates/REG101_2412.docx");
    const auto run = RunShell(
        "sqlite3 " + Quoted((data_ / "reference.db").string()) +
        " \"INSERT INTO FLS_LTR_TEMPLATE SELECT REGION, LTR_TYP_ID, 'REG101_2412.docx', "
        "'2024-12-01 10.00.00', '2024-12-01', NULL FROM FLS_LTR_TEMPLATE WHERE LTR_TYP_ID = '101'\"");
    ASSERT_EQ(run.status, 0) << run.err;
  }
  void UserReprintsTheOnlyLetterOf(const std::string& customer) {
    apps::Desktop desktop{host::DataFolder(data_.path())};
    desktop.Open();
    auto& office = desktop.office();
    const auto is_idle = [&] {
      return !office.HasWorkUnderWay() && !office.workspace().pending_request().IsAwaited();
    };
    ASSERT_TRUE(WaitFor(is_idle));
    auto& page = office.workspace().pages().tracking;
    office.workspace().pages().tabs.Select(workspace::PageIndex::kTracking);
    office.workspace().FillCustomerField(*office.FindCustomer(customer), workspace::PageIndex::kTracking);
    page.OptLetterStatus[workspace::TrackingPage::kAll].UserClicks();
    EXPECT_TRUE(page.search.enabled()) << (page.search.why_disabled ? page.search.why_disabled() : "");
    page.search.UserClicks();
    ASSERT_TRUE(WaitFor([&] { return is_idle() && page.sdgGrid.rows() && !page.sdgGrid.rows()->IsEmpty(); }));
    page.sdgGrid.UserSelects({0});
    const auto before = Printed().size();
    OnNextModal([](QWidget& question) { QTest::keyClick(&question, Qt::Key_Return); });
    page.OptLetter[workspace::TrackingPage::kReprintLocal].UserClicks();
    ASSERT_TRUE(WaitFor([&] { return Printed().size() > before && is_idle(); }));
  }
};

TEST_F(Reprint, ALetterComesOutOfItsOwnTemplateWhateverItsNewVersionIs) {
  ASSERT_EQ(PrintLetterFor("100001").status, 0);
  ASSERT_THAT(Printed(), SizeIs(1));
  const auto first = Printed().front();
  const auto text = PdfText(first);
  GivenNewVersionWithError();
  EXPECT_THAT(PrintLetterFor("100001").err, HasSubstr("CUSTOMR_NAME"));
  ASSERT_THAT(Printed(), SizeIs(1));

  UserReprintsTheOnlyLetterOf("100001");
  ASSERT_THAT(Printed(), SizeIs(2));
  for (const auto& file : Printed()) EXPECT_EQ(PdfText(file), text) << file;
}

// One that is in use already has an error, or the check has learnt to see it: what was sent with it stands.
TEST_F(Reprint, ALetterComesOutOfATemplateThatMakesNoNewOnes) {
  ASSERT_EQ(PrintLetterFor("100001").status, 0);
  const auto text = PdfText(Printed().front());
  ServerSql("DELETE FROM letter_field WHERE LTR_TYP_ID = '101' AND FLD_NM = 'CUSTOMER_NAME'");
  EXPECT_THAT(PrintLetterFor("100001").err,
              HasSubstr("No letter was made. The template \"REG101_2401.docx\""));
  UserReprintsTheOnlyLetterOf("100001");
  ASSERT_THAT(Printed(), SizeIs(2));
  for (const auto& file : Printed()) EXPECT_EQ(PdfText(file), text) << file;
}

}  // namespace
}  // namespace tests
