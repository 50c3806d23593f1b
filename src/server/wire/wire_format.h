#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/key_item.h"
#include "platform/parties/request_message.h"
#include "platform/record_set.h"

/// What travels between the message component and the application server. Decision [wire-format].
namespace server {

struct NamedRows {
  std::string name;
  std::shared_ptr<platform::RecordSet> rows;  ///< never null
};

/// A request as the server reads it.
struct Request {
  std::string message_key;
  std::string application;
  std::string version;
  int message_type = 0;
  std::string user_id;
  std::vector<platform::KeyItem> keys;
  std::vector<NamedRows> records;
  std::string inquiry_xml;

  /// The rows of that record, the name compared without regard to case; null where there are none.
  const platform::RecordSet* Rows(std::string_view record_name) const;
};

/// The answer to one request: an error text, or rows.
struct Reply {
  std::string message_key;
  std::string error;  ///< "" when the request succeeded
  std::vector<NamedRows> records;

  /// Adds an empty record of these columns and hands it out.
  platform::RecordSet& AddRecord(std::string name, std::vector<std::string> columns);
};

/// Throws Failure kRefused for a text that is not UTF-8, and for a record that has not been opened.
std::string WriteRequest(const platform::RequestMessage& message);
std::string WriteReply(const Reply& reply);

/// Throw Failure kDamaged for a text that is no such message.
Request ReadRequest(std::string_view text);
Reply ReadReply(std::string_view text);

}  // namespace server
