#include "server/reply_store.h"

#include <algorithm>
#include <utility>

namespace server {

void ReplyStore::Keep(std::string message_key, Reply reply) {
  std::erase_if(kept_, [&](const Kept& kept) { return kept.message_key == message_key; });
  if (kept_.size() == kKept) kept_.pop_front();
  kept_.push_back({std::move(message_key), std::move(reply)});
}

const Reply* ReplyStore::Find(const std::string& message_key) const {
  const auto found = std::ranges::find(kept_, message_key, &Kept::message_key);
  return found == kept_.end() ? nullptr : &found->reply;
}

}  // namespace server
