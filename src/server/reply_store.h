#pragma once

#include <cstddef>
#include <deque>
#include <string>

#include "server/wire_format.h"

namespace server {

/// The replies that have come, by message key; the oldest go when there are too many. What was handed out of
/// a reply stays good. One thread.
class ReplyStore {
 public:
  static constexpr std::size_t kKept = 64;

  void Keep(std::string message_key, Reply reply);
  /// Null where no such reply has come, or where it has been dropped.
  const Reply* Find(const std::string& message_key) const;

 private:
  struct Kept {
    std::string message_key;
    Reply reply;
  };
  std::deque<Kept> kept_;  // oldest first
};

}  // namespace server
