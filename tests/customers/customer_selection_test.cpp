#include "customers/customer_selection.h"

#include <gmock/gmock.h>

#include "customers/frm_cust_select.h"
#include "customers/select_cust_form_inq.h"
#include "tests/fakes/fake_services.h"

namespace customers {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using workspace::PageIndex;

class CustomerSelectionTest : public testing::Test {
 protected:
  CustomerSelectionTest() {
    fakes_.reference.AnswersWhatContains(
        "FLS_CODE", fakes::RowsOf("", {{{"CD_TBL_CD", ""}, {"CD_TBL_DES", ""}},
                                       {{"CD_TBL_CD", "C"}, {"CD_TBL_DES", "Notice"}},
                                       {{"CD_TBL_CD", "W"}, {"CD_TBL_DES", "Warrant"}}}));
  }
  /// What the user does in the dialog that opens.
  template <typename Dialog>
  void UserWorks(std::function<void(Dialog&)> work) {
    fakes_.host.user_in_form = [work = std::move(work)](platform::Form& form) {
      work(static_cast<Dialog&>(form));
    };
  }
  void UserFinds(ZEMLO_CustSelect& select, const std::string& id) {
    select.txtFind.SetText(id);
    select.TypingRests();
    fakes_.server.ReplyWith("CUSTOMER", {{{"Cust_Id", id},
                                          {"CUST_BSNS_NM", "A & B"},
                                          {"mail_addr_1", "1 MAIN ST"},
                                          {"mail_city", "TULSA"},
                                          {"mail_st", "OK"},
                                          {"mail_zip_cd", "741031234"},
                                          {"PHN_NBR", "4055212485"},
                                          {"ACCNT_NBR", "1234567890123"}}});
    fakes_.RunEvents();
  }
  void UserPicksAccount(ZEMLO_SelectCustFormInq& dialog, const std::string& id) {
    UserFinds(dialog.ZEMLO_CustSelect1, id);
    dialog.ZEMLO_CustSelect1.UserPressesEnter();
    fakes_.server.ReplyWith("CUSTOMERFORM", {{{"FORM_NBR", "1234"}, {"FORM_CK_DGT_NBR", "5"}}});
    fakes_.RunEvents();
    dialog.mSdgGrid.UserSelects({0});
    dialog.mCmdButton[ZEMLO_SelectCustFormInq::kOk].UserClicks();
  }

  fakes::FakeServices fakes_;
  const std::string message_title_ = "Letters";
  CurrentCustomer customer_;
  workspace::LetterRequestFields request_;
  workspace::LetterRequestFields search_;
  CustomerPanel panel_;
  composition::ZEMLO_LetterCombo form_type_{fakes_.services(), "REFDOCTYP"};
  platform::TextField form_number_;
  std::vector<std::string> filled_;
  CustomerSelection selection_{{fakes_.services(), message_title_, customer_,
                                [this](PageIndex page) -> workspace::LetterRequestFields& {
                                  return page == PageIndex::kTracking ? search_ : request_;
                                },
                                MaintenanceOver(fakes_.services(), message_title_),
                                [this](PageIndex page, const PickedForm& form) {
                                  filled_.push_back(std::to_string(static_cast<int>(page)) + " " +
                                                    form.form_type + " " + form.form_number);
                                }}};
  const CustomerForm form_{panel_, form_type_, form_number_};
};

TEST_F(CustomerSelectionTest, ShowsTheCustomerThatTheUserChose) {
  UserWorks<frmCustSelect>([&](frmCustSelect& dialog) {
    EXPECT_EQ(dialog.caption(), "Select Customer");
    EXPECT_FALSE(panel_.select_customer.enabled());
    EXPECT_FALSE(panel_.select_account.enabled());
    EXPECT_FALSE(dialog.ZEMLO_CustSelect1.AlertsOn);
    UserFinds(dialog.ZEMLO_CustSelect1, "4711");
    dialog.ZEMLO_CustSelect1.UserPressesEnter();
    EXPECT_TRUE(dialog.shown());
    dialog.cmdOk.UserClicks();
    EXPECT_FALSE(dialog.shown());
  });
  selection_.SelectCustomer(PageIndex::kTracking, panel_);
  EXPECT_EQ(customer_.CustomerId, "4711");
  EXPECT_EQ(panel_.name.caption(), "A & B");
  EXPECT_EQ(panel_.city_line.caption(), "TULSA, OK 74103-1234");
  EXPECT_EQ(panel_.phone.caption(), "(405) 521-2485");
  EXPECT_EQ(panel_.fuel_tax_account.caption(), "12-345678901-23");
  EXPECT_TRUE(customer_.TrackingCustomerFixed);
  EXPECT_FALSE(panel_.select_customer.enabled()) << "until the page is cleared";
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
}

TEST_F(CustomerSelectionTest, TakesTheRowThatTheUserHasMovedToWithOk) {
  UserWorks<frmCustSelect>([&](frmCustSelect& dialog) {
    UserFinds(dialog.ZEMLO_CustSelect1, "4711");
    dialog.ZEMLO_CustSelect1.UserMovesBy(1);
    dialog.cmdOk.UserClicks();
  });
  selection_.SelectCustomer(PageIndex::kTracking, panel_);
  EXPECT_EQ(customer_.CustomerId, "4711");
}

TEST_F(CustomerSelectionTest, LeavesThePageAsItWasWhenNobodyIsChosen) {
  const std::function<void(frmCustSelect&)> ways[] = {
      [](frmCustSelect& dialog) { dialog.cmdCancel.UserClicks(); },
      [](frmCustSelect& dialog) { dialog.cmdOk.UserClicks(); },
      [this](frmCustSelect& dialog) {
        UserFinds(dialog.ZEMLO_CustSelect1, "4711");
        dialog.cmdOk.UserClicks();  // a row that merely stands there is not meant
      },
      [this](frmCustSelect& dialog) {
        UserFinds(dialog.ZEMLO_CustSelect1, "4711");
        dialog.ZEMLO_CustSelect1.UserChooses(0);
        dialog.cmdCancel.UserClicks();
      },
  };
  for (const auto& leaves : ways) {
    panel_.name.SetCaption("OLD");
    UserWorks<frmCustSelect>([&](frmCustSelect& dialog) {
      leaves(dialog);
      EXPECT_FALSE(dialog.shown());
    });
    selection_.SelectCustomer(PageIndex::kTracking, panel_);
    fakes_.RunEvents();  // a reply that comes too late
    EXPECT_EQ(panel_.name.caption(), "OLD");
    EXPECT_TRUE(panel_.select_customer.enabled());
    EXPECT_TRUE(panel_.select_account.enabled());
    EXPECT_FALSE(customer_.TrackingCustomerFixed);
  }
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(CustomerSelectionTest, GivesTheCommandsBackWhenADialogCannotBeShown) {
  fakes_.host.user_in_form = [](platform::Form&) {
    throw platform::Failure(platform::Failure::Kind::kNotFound, "There is no such window.");
  };
  selection_.SelectCustomer(PageIndex::kCorrespondence, panel_);
  EXPECT_TRUE(panel_.select_customer.enabled());
  selection_.SelectAccount(PageIndex::kCorrespondence, form_);
  EXPECT_TRUE(panel_.select_account.enabled());
  EXPECT_EQ(fakes_.errors.reports.size(), 2u);
}

TEST_F(CustomerSelectionTest, ShowsTheCustomerAndTheAccountThatWerePicked) {
  UserWorks<ZEMLO_SelectCustFormInq>([&](ZEMLO_SelectCustFormInq& dialog) {
    EXPECT_EQ(dialog.caption(), "Select Account");
    EXPECT_EQ(dialog.mKvcboDocType.Code(), "C");
    EXPECT_FALSE(dialog.skip_next_type_change);
    UserPicksAccount(dialog, "4711");
  });
  selection_.SelectAccount(PageIndex::kTracking, form_);
  EXPECT_EQ(panel_.customer_id.caption(), "4711");
  EXPECT_TRUE(customer_.TrackingCustomerFixed);
  EXPECT_FALSE(panel_.select_account.enabled());
  EXPECT_THAT(filled_, ElementsAre("1 C 0001234-5"));
}

TEST_F(CustomerSelectionTest, OffersTheAccountTypeChosenLastOnEitherPage) {
  const auto offered_and_left_with = [&](PageIndex page, std::size_t picked) {
    std::string offered;
    UserWorks<ZEMLO_SelectCustFormInq>([&](ZEMLO_SelectCustFormInq& dialog) {
      offered = dialog.mKvcboDocType.Code();
      dialog.mKvcboDocType.UserPicks(picked);
      dialog.mCmdButton[ZEMLO_SelectCustFormInq::kCancel].UserClicks();
    });
    selection_.SelectAccount(page, form_);
    return offered;
  };
  constexpr std::size_t kBlank = 0;
  constexpr std::size_t kWarrant = 2;
  EXPECT_EQ(offered_and_left_with(PageIndex::kCorrespondence, kWarrant), "C");
  EXPECT_EQ(offered_and_left_with(PageIndex::kTracking, kBlank), "W");
  EXPECT_EQ(offered_and_left_with(PageIndex::kTracking, kWarrant), "C") << "none was chosen";
}

TEST_F(CustomerSelectionTest, ClearsThePageWhenTheAccountDialogIsCancelled) {
  customer_.CustomerId = "9000";
  panel_.name.SetCaption("OLD");
  form_number_.SetText("3100004-9");
  request_.form_number = search_.form_number = "3100004";
  UserWorks<ZEMLO_SelectCustFormInq>([&](ZEMLO_SelectCustFormInq& dialog) {
    UserFinds(dialog.ZEMLO_CustSelect1, "4711");
    dialog.Close();
  });
  selection_.SelectAccount(PageIndex::kCorrespondence, form_);
  EXPECT_EQ(customer_.CustomerId + panel_.name.caption() + form_number_.text(), "");
  EXPECT_TRUE(panel_.select_account.enabled());
  EXPECT_THAT(filled_, IsEmpty());
  EXPECT_EQ(request_.form_number, "");
  EXPECT_EQ(search_.form_number, "3100004") << "the other page's";
}

// The maintenance opened over the workspace, of a customer whom nobody waited for any more.
TEST_F(CustomerSelectionTest, OpensNoMaintenanceOnceItsDialogIsLeft) {
  const auto edits = [&](ZEMLO_CustSelect& select) {
    UserFinds(select, "4711");
    select.UserChooses(0);
    select.cmdEdit.UserClicks();
    EXPECT_EQ(fakes_.status.LastText(), "Requesting Customer Information");
  };
  const auto customer_comes = [&] {
    EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
    fakes_.server.ReplyWith("Customer", {{{"CUST_ID", "4711"}, {"LAST_NM", "SMITH"}}});
    fakes_.RunEvents();
  };
  for (const bool with_ok : {true, false}) {
    UserWorks<frmCustSelect>([&](frmCustSelect& dialog) {
      edits(dialog.ZEMLO_CustSelect1);
      (with_ok ? dialog.cmdOk : dialog.cmdCancel).UserClicks();
      customer_comes();
    });
    selection_.SelectCustomer(PageIndex::kTracking, panel_);
  }
  UserWorks<ZEMLO_SelectCustFormInq>([&](ZEMLO_SelectCustFormInq& dialog) {
    edits(dialog.ZEMLO_CustSelect1);
    dialog.mCmdButton[ZEMLO_SelectCustFormInq::kCancel].UserClicks();
    customer_comes();
  });
  selection_.SelectAccount(PageIndex::kTracking, form_);
  EXPECT_EQ(fakes_.host.shown_forms.size(), 3u) << "the dialogs alone";
}

TEST_F(CustomerSelectionTest, BeginsWithTheCustomerWhoWasAskedForLast) {
  int shown = 0;
  UserWorks<platform::Form>([&](platform::Form& form) {
    if (++shown > 1) return;
    auto& select = static_cast<frmCustSelect&>(form).ZEMLO_CustSelect1;
    UserFinds(select, "4711");
    select.UserChooses(0);
    select.cmdEdit.UserClicks();
    select.cmdNew.UserClicks();
    EXPECT_EQ(shown, 2) << "the new one, and not that of \"Edit...\" as well";
    fakes_.server.ReplyWith("Customer", {{{"CUST_ID", "4711"}, {"LAST_NM", "SMITH"}}});
    fakes_.RunEvents();
    EXPECT_EQ(shown, 2);
  });
  selection_.SelectCustomer(PageIndex::kTracking, panel_);
}

}  // namespace
}  // namespace customers
