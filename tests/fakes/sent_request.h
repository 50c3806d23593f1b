#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/failure.h"
#include "platform/parties/request_message.h"
#include "tests/fakes/rows.h"

namespace fakes {

/// A request as it left the workspace.
struct SentRequest {
  struct Record {
    std::string name;
    std::shared_ptr<platform::RecordSet> rows;

    /// "CUST_ID=4711": the columns of a row that are not null, in the layout's order.
    std::vector<std::string> Assigned(std::size_t row = 0) const {
      std::vector<std::string> texts;
      for (const auto& column : rows->columns()) {
        const auto& value = rows->Get(row, column);
        if (!value.IsNull()) texts.push_back(column + "=" + value.AsText());
      }
      return texts;
    }
  };

  std::string message_key;
  std::string application;
  std::string version;
  int type = 0;
  std::string user_id;
  std::vector<platform::KeyItem> keys;
  std::vector<Record> records;
  std::string inquiry_xml;
  std::chrono::milliseconds time_out{0};
  bool was_built = false;  ///< BuildMessage came before Send

  /// "KORVADSK|key:CUST_ID|=|4711", in the order they travel.
  std::vector<std::string> Keys() const {
    std::vector<std::string> texts;
    for (const auto& key : keys) {
      texts.push_back(key.System + "|" + key.Key + "|" + key.Operator + "|" + key.Value);
    }
    return texts;
  }
  /// Throws Failure kNotFound where the request carries no such record.
  const Record& FindRecord(std::string_view name) const {
    for (const auto& record : records) {
      if (record.name == name) return record;
    }
    throw platform::Failure(platform::Failure::Kind::kNotFound,
                            "The request carries no record \"" + std::string(name) + "\".");
  }
};

inline SentRequest WriteDown(const platform::RequestMessage& message, std::chrono::milliseconds time_out) {
  SentRequest request{message.MessageKey(),
                      message.application(),
                      message.version(),
                      message.message_type(),
                      message.user_id(),
                      message.keys(),
                      {},
                      message.inquiry_xml(),
                      time_out};
  for (const auto& [name, record] : message.records()) {
    request.records.push_back({name, CopyOf(*record->Recordset())});
  }
  return request;
}

}  // namespace fakes
