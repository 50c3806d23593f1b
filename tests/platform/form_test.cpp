#include "platform/controls/form.h"

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <vector>

namespace platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RecordedForm : public Form {
 public:
  explicit RecordedForm(std::vector<std::string>& life) : Form("Letter"), life_(life) {}

  bool may_close = true;
  std::function<void()> while_loading = [] {};
  std::function<void()> while_asked = [] {};

 protected:
  void OnLoad() override {
    life_.push_back("load");
    while_loading();
  }
  void OnActivate() override { life_.push_back("activate"); }
  bool OnQueryUnload() override {
    life_.push_back("query");
    while_asked();
    return may_close;
  }
  void OnUnload() override { life_.push_back("unload"); }

 private:
  std::vector<std::string>& life_;
};

class AForm : public testing::Test {
 protected:
  AForm() {
    hidden_ = form_->Hidden.Connect([this] { life_.push_back("hidden"); });
  }

  std::vector<std::string> life_;
  std::unique_ptr<RecordedForm> form_ = std::make_unique<RecordedForm>(life_);
  Connection hidden_;
};

TEST_F(AForm, IsLoadedOnceShownClosedAndMayBeShownAgain) {
  form_->Load();
  form_->Activate();
  EXPECT_TRUE(form_->shown());
  EXPECT_TRUE(form_->Close());
  EXPECT_FALSE(form_->loaded());
  EXPECT_THAT(life_, ElementsAre("load", "activate", "query", "unload", "hidden"));
  life_.clear();
  form_->Activate();
  EXPECT_THAT(life_, ElementsAre("load", "activate"));
}

TEST_F(AForm, StaysWhereItRefusesToClose) {
  form_->Activate();
  life_.clear();
  form_->may_close = false;
  EXPECT_FALSE(form_->Close());
  EXPECT_TRUE(form_->shown());
  EXPECT_THAT(life_, ElementsAre("query"));
}

TEST_F(AForm, ClosedInsideItsOwnHandlersGoesWhenTheLastHasReturned) {
  form_->Activate();
  life_.clear();
  form_->RunHandler([this] {
    form_->RunHandler([this] { EXPECT_TRUE(form_->Close()); });
    EXPECT_TRUE(form_->shown());
    EXPECT_THAT(life_, IsEmpty());
  });
  EXPECT_FALSE(form_->shown());
  EXPECT_THAT(life_, ElementsAre("query", "unload", "hidden"));
}

TEST_F(AForm, MayBeDestroyedByWhoeverHearsThatItIsGone) {
  form_->Activate();
  const auto destroys = form_->Hidden.Connect([this] { form_.reset(); });
  form_->RunHandler([this] { form_->Close(); });
  EXPECT_FALSE(form_);
}

TEST_F(AForm, ThatClosesItselfWhileLoadingIsNeverShown) {
  form_->while_loading = [this] { form_->Close(); };
  form_->Activate();
  EXPECT_FALSE(form_->shown());
  EXPECT_THAT(life_, ElementsAre("load", "query", "unload"));
}

TEST_F(AForm, IsAskedOnceWhereTheQuestionItselfClosesIt) {
  form_->Activate();
  life_.clear();
  form_->while_asked = [this] { form_->Close(); };
  form_->Close();
  EXPECT_THAT(life_, ElementsAre("query", "unload", "hidden"));
}

TEST_F(AForm, KeepsItsLifeWhereAHandlerFails) {
  form_->Activate();
  EXPECT_THROW(form_->RunHandler([this] {
    form_->Close();
    throw 1;
  }),
               int);
  EXPECT_FALSE(form_->shown());
}

TEST_F(AForm, HiddenKeepsWhatWasLoaded) {
  form_->Activate();
  life_.clear();
  form_->Hide();
  form_->Hide();
  EXPECT_TRUE(form_->loaded());
  EXPECT_THAT(life_, ElementsAre("hidden"));
}

}  // namespace
}  // namespace platform
