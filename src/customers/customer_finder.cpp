#include "customers/customer_finder.h"

#include <utility>

#include "platform/agreed/requests.h"
#include "platform/identity.h"

namespace customers {

namespace {

namespace request_key = platform::request_key;
using platform::Criterion;
using platform::KeyNamed;

std::string FinderApplication() {
  return std::string(platform::kApplicationName) + ".CustSelect";
}

}  // namespace

CustomerFinder::CustomerFinder(const platform::Services& services)
    : services_(services),
      mVemtMessage_(services.messages.NewListener()),
      envelope_(services, pending_, *mVemtMessage_, FinderApplication()) {
  connections_.push_back(
      mVemtMessage_->DataReady.Connect([this](const std::string& name) { DataReady(name); }));
  connections_.push_back(mVemtMessage_->MsgTimeout.Connect([this] { pending_.TimedOut(); }));
}

void CustomerFinder::AskFor(const std::string& text, std::size_t first_row, Take take) {
  const auto last_row = first_row + kRowsAtOnce - 1;
  Ask({Criterion(KeyNamed(request_key::kCustomerWords), text, platform::key_operator::kLike),
       Criterion(KeyNamed(request_key::kFirstRow), std::to_string(first_row)),
       Criterion(KeyNamed(request_key::kLastRow), std::to_string(last_row))},
      std::move(take));
}

void CustomerFinder::AskForIds(const std::vector<std::string>& ids, Take take) {
  std::string listed;
  for (const auto& id : ids) listed += (listed.empty() ? "" : ",") + id;
  Ask({Criterion(KeyNamed(request_key::kListedCustomers), listed)}, std::move(take));
}

void CustomerFinder::Ask(std::vector<platform::KeyItem> keys, Take take) {
  pending_.Forget();
  const bool is_sent = platform::Trap(services_, "ZEMLO_CustSelect.SendPI", [&] {
    envelope_.Send({.type = platform::message_type::kCustomer,
                    .name = "CustomerSelect",
                    .keys = std::move(keys),
                    .in_background = true});
  });
  if (is_sent)
    take_ = std::move(take);
  else
    take({.error = "The server cannot be asked for customers. Try again."});
}

void CustomerFinder::DataReady(const std::string& application) {
  if (application != FinderApplication()) return;
  platform::Trap(services_, "ZEMLO_CustSelect.mVemtMessage_DataReady", [&] {
    const auto reply = pending_.TakeReply(services_.messages);
    if (!reply) return;
    const auto take = std::exchange(take_, nullptr);  // it may ask again
    take(Read(*reply));
  });
}

CustomerAnswer CustomerFinder::Read(const workspace::Reply& reply) const {
  const auto application = FinderApplication();
  auto error =
      services_.messages.GetReplyError(application, "CustSelect.mVemtMessage_DataReady", reply.message_key);
  if (!error.empty()) return {.error = std::move(error)};
  const auto record =
      services_.messages.GetRecord(application, platform::record_name::kCustomer, reply.message_key);
  if (!record) return {.error = "The server's reply holds no list of customers. Try again."};
  CustomerAnswer answer{.customers =
                            ReadFoundCustomers(*record->Recordset(), DisplayEncoders(services_.errors))};
  const auto end =
      services_.messages.GetRecord(application, platform::record_name::kCustomerSearch, reply.message_key);
  if (!end || end->Recordset()->IsEmpty()) return answer;
  answer.has_more = end->Fields("MORE").AsText() == "Y";
  if (const platform::Value& total = end->Fields("TOTAL"); !total.IsNull())
    answer.total = static_cast<std::size_t>(total.AsInteger());
  return answer;
}

}  // namespace customers
