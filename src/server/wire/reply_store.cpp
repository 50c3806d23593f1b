#include "server/wire/reply_store.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <utility>

namespace server {
namespace {

std::size_t RowsIn(const Reply& reply) {
  std::size_t rows = 0;
  for (const auto& record : reply.records) rows += record.rows->RecordCount();
  return rows;
}

}  // namespace

void ReplyStore::Keep(std::string message_key, Reply reply) {
  std::erase_if(kept_, [&](const Kept& kept) { return kept.message_key == message_key; });
  const auto rows = RowsIn(reply);
  kept_.push_back({std::move(message_key), std::move(reply), rows});
  auto kept_rows = std::transform_reduce(kept_.begin(), kept_.end(), std::size_t{0}, std::plus<>(),
                                         [](const Kept& kept) { return kept.rows; });
  while (kept_.size() > 1 && (kept_.size() > kKept || kept_rows > kKeptRows)) {
    kept_rows -= kept_.front().rows;
    kept_.pop_front();
  }
}

const Reply* ReplyStore::Find(const std::string& message_key) const {
  const auto found = std::ranges::find(kept_, message_key, &Kept::message_key);
  return found == kept_.end() ? nullptr : &found->reply;
}

}  // namespace server
