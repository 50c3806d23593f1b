// Every window in a light and a dark palette: no text is cut off, everything has a name to be read out under.
// What is seen goes into PNG files for a person to look at, in the folder that LOOK_FOLDER names.

#include <gmock/gmock.h>

#include <QContextMenuEvent>
#include <QDialog>
#include <QListWidget>
#include <QMenu>
#include <QPainter>
#include <QPalette>
#include <QPdfWriter>

#include "composition/frm_batch.h"
#include "composition/frm_letter.h"
#include "customers/frm_cust_select.h"
#include "customers/maintenance/cust_maint.h"
#include "customers/select_cust_form_inq.h"
#include "desktop/forms/form_views.h"
#include "desktop/look/office_style.h"
#include "desktop/pages/workspace_view.h"
#include "desktop/preview/qt_preview_viewer.h"
#include "desktop/shell/help_box.h"
#include "tests/desktop/sample_pages.h"
#include "tests/desktop/window_driver.h"
#include "tests/desktop/window_reader.h"
#include "tests/fakes/fake_view_settings.h"
#include "tests/support/temporary_folder.h"
#include "tracking/frm_print_status.h"
#include "tracking/frm_print_summary.h"

namespace {

using testing::IsEmpty;

QPalette DarkPalette() {
  QPalette dark(QColor(53, 53, 56));
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  dark.setColor(QPalette::AlternateBase, QColor(38, 38, 40));
  dark.setColor(QPalette::Highlight, QColor(38, 110, 180));
  for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
    dark.setColor(QPalette::Disabled, role, QColor(130, 130, 130));
  }
  return dark;
}

/// The host's window with the workspace in it, in one palette.
class TheLook : public testing::TestWithParam<const char*> {
 protected:
  TheLook() {
    QApplication::setStyle(new desktop::OfficeStyle);
    QApplication::setPalette(GetParam() == std::string("dark") ? DarkPalette() : usual_);
    desktop::RegisterFormViews(shell);
    Window().ShowDocument(view);
    Window().ShowStatus(QStringLiteral("Ready"));
    Window().resize(1280, 800);
    Window().show();
    Window().activateWindow();
    tests::WaitForSight(Window());
  }
  ~TheLook() override {
    delete view;
    QApplication::setPalette(usual_);
  }

  desktop::HostWindow& Window() { return shell.window(); }
  void Look(QWidget& window, const std::string& name) {
    tests::Settle();
    EXPECT_THAT(tests::CutOffIn(window), IsEmpty()) << name;
    EXPECT_THAT(tests::NamelessIn(window), IsEmpty()) << name;
    const auto folder = qEnvironmentVariable("LOOK_FOLDER");
    if (folder.isEmpty()) return;
    const auto file = folder + QLatin1Char('/') + QLatin1String(GetParam()) + QLatin1Char('_') +
                      QString::fromStdString(name) + QStringLiteral(".png");
    EXPECT_TRUE(window.grab().save(file)) << file.toStdString();
  }
  void LookAtNextModal(const std::string& name) {
    tests::OnNextModal([this, name](QWidget& window) {
      tests::WaitForSight(window);
      Look(window, name);
      window.close();
    });
  }

  tests::SamplePages sample;
  desktop::QtEventQueue queue;
  desktop::QtHostShell shell{queue};
  fakes::FakeViewSettings view_settings;
  desktop::WorkspaceView* view = new desktop::WorkspaceView(sample.pages, view_settings);

 private:
  const QPalette usual_ = QApplication::palette();
};

TEST_P(TheLook, OfTheThreePages) {
  sample.pages.correspondence.ZEMLO_FormTypeCodes.SetMarkedInvalid(true);
  sample.pages.tracking.to_date.SetMarkedInvalid(true);
  sample.pages.tracking.sdgGrid.UserSelects({2, 4});
  Window().ShowNotice(
      QStringLiteral("The letter was printed: /home/clerk/printed/2024-03-05_021100_CTL.pdf"));
  for (int page = 0; page < view->count(); ++page) {
    view->setCurrentIndex(page);
    Look(Window(), "page" + std::to_string(page));
  }
}

TEST_P(TheLook, OfAListThatHasTheKeyboard) {
  QListWidget list;
  list.addItem(QStringLiteral("One"));
  list.show();
  list.activateWindow();
  list.setFocus();
  tests::WaitForKeyboard(list);
  EXPECT_EQ(list.grab().toImage().pixelColor(0, list.height() / 2),
            list.palette().color(QPalette::Active, QPalette::Highlight));
  list.clearFocus();
  EXPECT_NE(list.grab().toImage().pixelColor(0, list.height() / 2),
            list.palette().color(QPalette::Active, QPalette::Highlight));
}

TEST_P(TheLook, OfLettersFoundSortedAndSearched) {
  auto& letters = sample.pages.tracking.sdgGrid;
  sample.pages.tabs.Select(workspace::PageIndex::kTracking);
  letters.SortBy("DCMT_FILE_TXT", /*descending=*/true);
  letters.UserSelects({1, 2, 3});
  Look(Window(), "letters_sorted");

  auto& page = *view->currentWidget();
  page.findChild<QTableView*>()->setFocus();
  ASSERT_TRUE(tests::WaitFor([] { return QApplication::focusWidget() != nullptr; }));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F, Qt::ControlModifier);
  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("ctl"));
  EXPECT_EQ(QApplication::focusWidget()->accessibleDescription(), QStringLiteral("1 of 20"));
  Look(Window(), "letters_searched");
  QTest::keyClicks(QApplication::focusWidget(), QStringLiteral(" there is none"));
  tests::Settle();
  QContextMenuEvent wanted(QContextMenuEvent::Other, {60, 30}, Window().mapToGlobal(QPoint(300, 500)));
  QApplication::sendEvent(page.findChild<QTableView*>()->viewport(), &wanted);
  auto* menu = QApplication::activePopupWidget();
  ASSERT_NE(menu, nullptr);
  Look(*menu, "letters_menu");
  auto* columns = menu->findChild<QMenu*>();
  ASSERT_NE(columns, nullptr);
  columns->popup(Window().mapToGlobal(QPoint(400, 40)));
  Look(*columns, "letters_columns");
  columns->close();
  menu->close();
}

/// The dialog on a customer whose addresses the user has entered.
class MaintainedOnScreen : public TheLook {
 protected:
  MaintainedOnScreen() {
    auto& outside = sample.services;
    outside.utilities.control_keys = U" ";
    outside.reference.AnswersWhatContains(
        "FLS_CODE", fakes::RowsOf("", {{{"CD_TBL_CD", "KV"}, {"CD_TBL_DES", "KV - Korvada"}}}));
    outside.host.user_at_message = nullptr;
  }
  void Open(customers::ZEMLO_CustMaint& form, const char* type) {
    form.SetCustomerType(type);
    form.SetCustomerType();
    form.mTxtCust[0].SetText("HATTIE");
    form.mTxtCust[2].SetText("MERRIWEATHER");
    form.mTxtCust[4].SetText("MEADOW & SONS FUEL HAULAGE COOPERATIVE OF LOWER KETTLEFORD");
    form.mTxtCust[5].SetText("ANN LEE");
    form.mPhone.SetValue("4055212485");
    form.mFuelTaxAcct.SetValue("6200010000101");
    for (const auto& side : {customers::kMailingSide, customers::kResidentSide}) {
      form.mTxtCust[side.Line1()].SetText("12 DEPOT ST");
      form.mTxtCust[side.City()].SetText("MILLRACE");
      form.mTxtCust[side.Zip()].SetText("89033");
      form.mCboState[side.number].Code("KV");
      form.ShowCounty(side.number, "Kestrel", "20");
    }
    form.SetCustomerMode("UPD");
  }
};

TEST_P(MaintainedOnScreen, OfABusinessWithErrors) {
  customers::ZEMLO_CustMaint form(sample.services.services(), "Letters");
  Open(form, "B");
  tests::OnNextModal([&](QWidget& window) {
    tests::WaitForSight(window);
    form.mTxtCust[4].SetText("A");
    form.mPhone.SetText("405");
    form.mTxtCust[9].SetText("1234-56789");
    form.mCboState[0].UserEditsText("ZZ");
    Look(window, "maintain_business_errors");
    form.Hide();
  });
  shell.ShowModal(form);
}

TEST_P(MaintainedOnScreen, OfAnIndividualWithBothSuggestions) {
  customers::ZEMLO_CustMaint form(sample.services.services(), "Letters");
  Open(form, "I");
  tests::OnNextModal([&](QWidget& window) {
    tests::WaitForSight(window);
    form.mTxtCust[6].SetText("12 DEPO ST");
    form.mTxtCust[10].SetText("7 ORCHID RD");
    form.mCmdOption[0].UserClicks();
    sample.services.server.ReplyWith("Customer", {{{"FINALIST_IND", 3},
                                                   {"MAIL_ADDR_1", "12 DEPOT ST"},
                                                   {"MAIL_CITY", "MILLRACE"},
                                                   {"MAIL_ST", "KV"},
                                                   {"MAIL_ZIP_CD", "890331212"},
                                                   {"MAIL_COUNTY", "Kestrel"},
                                                   {"RES_ADDR_1", "7 ORCHARD RD"},
                                                   {"RES_CITY", "OAKHAVEN"},
                                                   {"RES_ST", "KV"},
                                                   {"RES_ZIP_CD", "892140007"},
                                                   {"RES_COUNTY", "Oak"}}});
    sample.services.RunEvents();
    form.mChkAccept[0].UserClicks();
    Look(window, "maintain_individual_suggested");
    form.Hide();
  });
  shell.ShowModal(form);
}

void Find(tests::SamplePages& sample, customers::ZEMLO_CustSelect& select) {
  std::vector<fakes::Row> found;
  for (int number = 0; number < 20; ++number) {
    found.push_back({{"Cust_Id", std::to_string(100001 + number)},
                     {"CUST_BSNS_NM", "Meadow & Sons Fuel Haulage Cooperative"},
                     {"mail_city", "Lower Kettleford"},
                     {"PHN_NBR", "5085550104"},
                     {"ACCNT_NBR", "1100000021401"},
                     {"MAIL_RTND_IND", number % 3 == 0 ? "Y" : "N"}});
  }
  select.txtFind.SetText("lower meadow 508");
  select.TypingRests();
  sample.services.server.Reply(fakes::ScriptedReply::With("CUSTOMER", found)
                                   .And("CUSTOMER_SEARCH", {{{"MORE", "Y"}, {"TOTAL", 1234}}}));
  sample.services.RunEvents();
}

TEST_P(TheLook, OfTheCustomerDialog) {
  for (const bool with_alerts : {false, true}) {
    customers::frmCustSelect dialog(sample.services.services(), {});
    dialog.Load();
    dialog.ZEMLO_CustSelect1.AlertsOn = with_alerts;
    Find(sample, dialog.ZEMLO_CustSelect1);
    dialog.ZEMLO_CustSelect1.UserChooses(3);
    const auto* name = with_alerts ? "customer_dialog_alerts" : "customer_dialog";
    tests::OnNextModal([&](QWidget& window) {
      tests::WaitForSight(window);
      Look(window, name);
      dialog.cmdCancel.UserClicks();
    });
    shell.ShowModal(dialog);
  }
}

TEST_P(TheLook, OfTheAccountDialog) {
  const std::string title = "Letters";
  sample.services.reference.AnswersWhatContains(
      "CORDOC", fakes::RowsOf("", {{{"CD_TBL_CD", "C"}, {"CD_TBL_DES", "Tax Liability Assessment"}}}));
  customers::ZEMLO_SelectCustFormInq dialog(sample.services.services(), title, {});
  dialog.Load();
  dialog.skip_next_type_change = true;
  dialog.mKvcboDocType.Code("C");
  Find(sample, dialog.ZEMLO_CustSelect1);
  dialog.ZEMLO_CustSelect1.UserChooses(1);
  std::vector<fakes::Row> forms;
  for (int number = 0; number < 8; ++number) {
    forms.push_back({{"FORM_NBR", std::to_string(3100004 + number)},
                     {"FORM_CK_DGT_NBR", "9"},
                     {"STP_DT", "2024-03-01"},
                     {"ASSMT_DUE_AMT", "101045.50"},
                     {"ORIG_ASSMT_AMT", "101045.50"},
                     {"BAL_DUE", "1045.50"},
                     {"LST_PYMT_DT", "2024-02-29"}});
  }
  sample.services.server.ReplyWith("CUSTOMERFORM", forms);
  sample.services.RunEvents();
  dialog.mSdgGrid.UserSelects({2});
  LookAtNextModal("account_dialog");
  shell.ShowModal(dialog);
}

TEST_P(TheLook, OfTheLetterInformation) {
  for (const auto* mode : {"N", "Y"}) {
    sample.services.settings_store.Put("DMVKorvadsk", "System", "DontPrint", mode);
    composition::frmBatch information(sample.services.services());
    information.ErrBookMark(
        R"(<XML_CONTEXT State="1800000" V_ExplainAddr="The letter goes to the residential address, mailing )"
        R"(address is missing, residential address is a post office box."><FORM_NBR State="4">3100004</FORM_NBR>)"
        R"(<CUSTOMER_NAME V_EnglishDesc="Customer name"/><PERIODS State="1800001" V_EnglishDesc="Tax periods">)"
        R"(<ROW State="1800040"><AMT State="400080" V_EnglishDesc="Amount of the tax" RawValue="0.00" )"
        R"(V_ExplainErr="The letter needs an amount, and it is zero.">0.00</AMT></ROW></PERIODS></XML_CONTEXT>)");
    information.first_printed.SetCaption("2024-01-02 03.04.05");
    information.print_status.SetCaption("Letter Data Incomplete");
    LookAtNextModal(std::string("letter_information_") + mode);
    information.Load();
    auto* node = information.tvw.top_level().at(0);
    while (!node->children.empty()) node = node->children.back();
    information.tvw.UserClicks(*node);
    shell.ShowModal(information);
  }
}

TEST_P(TheLook, OfTheLetterForm) {
  composition::frmLetter form(sample.services.services(), "Correspondence");
  form.BookMarkInput =
      R"(<C State="18"><U_A State="8" V_EnglishDesc="Day of the hearing"/><U_B State="8" V_EnglishDesc="Time"/>)"
      R"(<PARA_ONE State="210" V_EnglishDesc="An interpreter will be present"/>)"
      R"(<PARA_FREE_TEXT State="210" V_EnglishDesc="A paragraph of your own"/></C>)";
  form.Load();
  form.sdgUserBookmark.UserEdits(0, "Monday, March 4, 2024");
  form.sdgGrid.UserTicks(1, true);
  form.txtParagraph.UserEdits("Please bring the fuel receipts of the last quarter.\nWe keep copies.");
  LookAtNextModal("letter_form");
  shell.ShowModal(form);
}

TEST_P(TheLook, OfAPrintRunAndItsEnd) {
  tracking::frmPrintStatus status;
  status.progress.SetCaption("Printed letter 17 of 50, 2 failed");
  status.letter.SetCaption("Now: Certificate of Tax Liability, number 120033");
  LookAtNextModal("print_status");
  shell.ShowModal(status);
  tracking::frmPrintSummary summary(
      "17 of 50 letters were printed.",
      {{3, "Certificate of Tax Liability", "120017",
        "The letter was not printed, because nothing fills \"DUE_DT\". View the letter and print it from "
        "there, "
        "or correct its template."},
       {17, "Tax Warrant", "120031",
        "The printer \"laser\" does not take the letter \"TW109_2401.docx\": The printer or class does not "
        "exist. Check the printer, or choose another one."}});
  LookAtNextModal("print_summary");
  shell.ShowModal(summary);
}

TEST_P(TheLook, OfMessagesAndHelp) {
  LookAtNextModal("message");
  shell.ShowMessage({"Please select a customer\r\nPlease select a correspondence type\r\n",
                     platform::MessageIcon::kExclamation, "Correspondence"});
  LookAtNextModal("question");
  shell.ShowMessage({"Should these 3 letters be resubmitted for tonight's batch?",
                     platform::MessageIcon::kQuestion, "Correspondence", platform::MessageButtons::kYesNo,
                     platform::MessageAnswer::kNo});
  LookAtNextModal("printer");
  shell.AskPrint({.printers = {{"counter_2"}, {"PDF folder", false}}, .proposed = {.printer = "counter_2"}});
  LookAtNextModal("printer_of_run");
  shell.AskPrint({.printers = {{"PDF folder", false}}, .proposed = {.printer = "PDF folder"}, .letters = 50});
  desktop::ShowHelp(Window());
  auto* help = Window().findChild<QDialog*>();
  ASSERT_NE(help, nullptr);
  Look(*help, "help");
  help->close();
}

TEST_P(TheLook, OfAPreview) {
  const tests::TemporaryFolder folder;
  const auto pdf = folder / "letter.pdf";
  {
    QPdfWriter writer(QString::fromStdString(pdf.string()));
    writer.setPageSize(QPageSize(QPageSize::Letter));
    QPainter(&writer).drawText(400, 800, QStringLiteral("Your motor fuel tax registration is confirmed"));
  }
  desktop::BusyGuard guard(Window());
  desktop::QtPreviewViewer viewer(queue, guard, Window());
  platform::PreviewContent content;
  content.pdf = pdf;
  content.title = "REG101_2401.docx";
  const auto open = viewer.Open(std::move(content));
  ASSERT_TRUE(tests::WaitFor([] { return QApplication::activeModalWidget() != nullptr; }));
  Look(*QApplication::activeModalWidget(), "preview");
}

INSTANTIATE_TEST_SUITE_P(Palettes, TheLook, testing::Values("light", "dark"),
                         [](const auto& palette) { return std::string(palette.param); });
INSTANTIATE_TEST_SUITE_P(Palettes, MaintainedOnScreen, testing::Values("light", "dark"),
                         [](const auto& palette) { return std::string(palette.param); });

}  // namespace
