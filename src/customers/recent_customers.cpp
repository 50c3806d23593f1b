#include "customers/recent_customers.h"

#include <algorithm>

#include "platform/text.h"

namespace customers {

std::string RecentCustomers::Name() const {
  return "RecentCustomers/" + platform::UpperCase(platform::Trim(services_.settings.UserId()));
}

std::vector<std::string> RecentCustomers::Ids() const {
  const auto kept = services_.view_settings.Remembered(Name());
  std::vector<std::string> ids;
  for (std::size_t start = 0; start < kept.size() && ids.size() < kMost;) {
    const auto end = std::min(kept.find(',', start), kept.size());
    if (end > start) ids.push_back(kept.substr(start, end - start));
    start = end + 1;
  }
  return ids;
}

void RecentCustomers::Add(const std::string& id) {
  if (id.empty() || id.find(',') != id.npos) return;
  auto ids = Ids();
  std::erase(ids, id);
  ids.insert(ids.begin(), id);
  if (ids.size() > kMost) ids.resize(kMost);
  std::string kept;
  for (const auto& each : ids) kept += (kept.empty() ? "" : ",") + each;
  services_.view_settings.Remember(Name(), kept);
}

}  // namespace customers
