#pragma once

#include <cstddef>
#include <deque>
#include <string>

#include "server/wire/wire_format.h"

namespace server {

/// The replies that have come, by message key; the oldest go when there are too many, or too many rows in
/// them. What was handed out of a reply stays good. One thread.
class ReplyStore {
 public:
  static constexpr std::size_t kKept = 64;
  static constexpr std::size_t kKeptRows = 100'000;  ///< the newest reply is kept whatever it holds

  void Keep(std::string message_key, Reply reply);
  /// Null where no such reply has come, or where it has been dropped.
  const Reply* Find(const std::string& message_key) const;

 private:
  struct Kept {
    std::string message_key;
    Reply reply;
    std::size_t rows;  // as they came; whoever shows them may have added some
  };
  std::deque<Kept> kept_;  // oldest first
};

}  // namespace server
