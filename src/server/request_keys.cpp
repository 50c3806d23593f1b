#include "server/request_keys.h"

#include <algorithm>

#include "platform/failure.h"
#include "platform/text.h"
#include "platform/value.h"

namespace server {

using platform::Failure;

std::string KeyName(std::string_view key) {
  constexpr std::string_view kPrefix = "KEY:";
  auto name = platform::UpperCase(platform::ReplaceAll(key, " ", ""));
  if (name.starts_with(kPrefix)) name.erase(0, kPrefix.size());
  return name;
}

RequestKeys::RequestKeys(const std::vector<platform::KeyItem>& keys, std::span<const KnownKey> known) {
  for (const auto& key : keys) {
    const auto name = KeyName(key.Key);
    const auto understood = std::ranges::find(known, name, &KnownKey::name);
    if (understood == known.end()) {
      throw Failure(Failure::Kind::kRefused,
                    "The server does not know the key \"" + key.Key + "\" in this request.");
    }
    if (platform::Trim(key.Operator) != understood->comparison) {
      throw Failure(Failure::Kind::kRefused, "The key \"" + key.Key + "\" came with the operator \"" +
                                                 key.Operator + "\"; send \"" +
                                                 std::string(understood->comparison) + "\".");
    }
    if (Has(name)) throw Failure(Failure::Kind::kRefused, "The key \"" + key.Key + "\" came twice.");
    entries_.push_back({name, std::string(platform::Trim(key.Value))});
  }
}

std::string RequestKeys::Text(std::string_view name) const {
  const auto* entry = Find(name);
  return entry == nullptr ? "" : entry->value;
}

bool RequestKeys::IsYes(std::string_view name) const {
  const auto value = platform::UpperCase(Text(name));
  if (value == "Y") return true;
  if (value == "N" || !Has(name)) return false;
  throw Failure(Failure::Kind::kRefused, "The key \"" + std::string(name) + "\" has the value \"" + value +
                                             "\"; send \"Y\" or \"N\".");
}

std::optional<std::int64_t> RequestKeys::Number(std::string_view name) const {
  if (!Has(name)) return std::nullopt;
  return platform::While("reading the key \"" + std::string(name) + "\"",
                         [&] { return platform::Value(Text(name)).AsInteger(); });
}

const RequestKeys::Entry* RequestKeys::Find(std::string_view name) const {
  const auto found = std::ranges::find(entries_, name, &Entry::name);
  return found == entries_.end() ? nullptr : &*found;
}

}  // namespace server
