#include "customers/customer_search.h"

#include <utility>

#include "customers/found_customers.h"
#include "platform/agreed/requests.h"
#include "platform/identity.h"
#include "platform/text.h"
#include "workspace/messaging/at_exit.h"

namespace customers {

namespace {

constexpr std::size_t kLongestText = 60;

std::string OwnApplication() {
  return std::string(platform::kApplicationName) + ".CustSearch";
}

}  // namespace

frmCustSearch::frmCustSearch(const platform::Services& services, std::string caption,
                             std::string message_title)
    : Form(std::move(caption)),
      services_(services),
      message_title_(std::move(message_title)),
      mVemtMessage_(services.messages.NewListener()),
      envelope_(services, pending_, *mVemtMessage_, OwnApplication()) {
  txtFind.max_length = kLongestText;
  sdgGrid.columns = FoundCustomerColumns();
  cmdOk.SetEnabled(false);
  cmdOk.why_disabled = [] { return "Select one customer in the list first."; };
  const auto keep = [this](platform::Connection connection) {
    connections_.push_back(std::move(connection));
  };
  keep(cmdFind.Click.Connect([this] { Search(); }));
  keep(sdgGrid.Click.Connect([this] { EnableOk(); }));
  keep(cmdOk.Click.Connect([this] { Choose(); }));
  keep(cmdCancel.Click.Connect([this] { Close(); }));
  keep(mVemtMessage_->DataReady.Connect([this](const std::string& name) { DataReady(name); }));
  keep(mVemtMessage_->MsgTimeout.Connect([this] { pending_.TimedOut(); }));
}

template <typename Work>
void frmCustSearch::Handle(std::string_view procedure, Work&& work) {
  RunHandler([&] { platform::Trap(services_, procedure, std::forward<Work>(work)); });
}

void frmCustSearch::UserEntersText() {
  const bool only_one = sdgGrid.rows() && sdgGrid.rows()->RecordCount() == 1 && cmdOk.enabled();
  if (only_one && platform::Trim(txtFind.text()) == searched_text_) {
    cmdOk.UserClicks();
  } else {
    cmdFind.UserClicks();
  }
}

void frmCustSearch::Search() {
  Handle("frmCustSearch.cmdFind_Click", [&] {
    searched_text_ = platform::Trim(txtFind.text());
    envelope_.Send({.type = platform::message_type::kCustomer,
                    .name = "CustomerSearch",
                    .keys = {platform::Criterion(platform::KeyNamed(platform::request_key::kCustomerWords),
                                                 searched_text_, platform::key_operator::kLike)}});
    cmdFind.SetEnabled(false);  // until the reply, so that it answers the text it is shown for
    status.SetCaption("Searching customers.");
  });
}

void frmCustSearch::DataReady(const std::string& application) {
  if (application != OwnApplication()) return;
  constexpr std::string_view kProcedure = "frmCustSearch.mVemtMessage_DataReady";
  Handle(kProcedure, [&] {
    const workspace::AtExit ready(services_, kProcedure, [&] {
      cmdFind.SetEnabled(true);
      services_.host.SetMousePointer(platform::MousePointer::kNormal);
    });
    if (const auto reply = pending_.TakeReply(services_.messages)) ShowReply(*reply);
  });
}

void frmCustSearch::ShowReply(const workspace::Reply& reply) {
  const auto& key = reply.message_key;
  const auto error =
      services_.messages.GetReplyError(OwnApplication(), "CustSearch.mVemtMessage_DataReady", key);
  if (!error.empty()) return ShowError(error, reply.timed_out);
  const auto record = services_.messages.GetRecord(OwnApplication(), platform::record_name::kCustomer, key);
  const auto end =
      services_.messages.GetRecord(OwnApplication(), platform::record_name::kCustomerSearch, key);
  ShowFound(record ? record->Recordset() : nullptr, end && end->Fields("MORE").AsText() == "Y");
}

void frmCustSearch::ShowError(const std::string& error, bool timed_out) {
  services_.host.ShowMessage({error, platform::MessageIcon::kCritical, message_title_});
  status.SetCaption(timed_out ? "Search timed out" : "Search was not successful");
}

void frmCustSearch::ShowFound(const std::shared_ptr<platform::RecordSet>& records, bool has_more) {
  sdgGrid.Bind(records ? ListCustomers(*records, DisplayEncoders(services_.errors)) : nullptr);
  const auto count = records ? records->RecordCount() : 0;
  if (count == 1) sdgGrid.UserSelects({0});  // there is nothing else to choose
  EnableOk();
  status.SetCaption(FoundText(count, has_more));
}

std::string frmCustSearch::FoundText(std::size_t count, bool has_more) const {
  const auto number = std::to_string(count);
  if (has_more) {
    return "More customers match than the " + number + " shown. Type more to find fewer.";
  }
  if (count > 0) return number + (count == 1 ? " customer found." : " customers found.");
  return "No customer matches \"" + platform::ReplaceAll(searched_text_, "&", "&&") + "\".";
}

void frmCustSearch::EnableOk() {
  cmdOk.SetEnabled(sdgGrid.selected_rows().size() == 1);
}

void frmCustSearch::Choose() {
  Handle("frmCustSearch.cmdOk_Click", [&] {
    chosen_ = CustomerAt(*sdgGrid.rows(), sdgGrid.selected_rows().at(0));
    Close();
  });
}

void frmCustSearch::OnUnload() {
  const bool awaits_reply = !cmdFind.enabled();
  // The reply will come to nobody.
  if (awaits_reply) services_.host.SetMousePointer(platform::MousePointer::kNormal);
}

}  // namespace customers
