#include "reference/patrol_districts.h"

#include "platform/record_set.h"

namespace reference {

bool PatrolDistricts::HasTroop(std::string_view troop) {
  return Read().contains(troop);
}

bool PatrolDistricts::HasDistrict(std::string_view troop, std::string_view district) {
  const auto& troops = Read();
  const auto found = troops.find(troop);
  return found != troops.end() && found->second.contains(district);
}

const PatrolDistricts::Troops& PatrolDistricts::Read() {
  if (troops_) return *troops_;
  const auto rows = reference_.Select("SELECT TRP_ID, TRP_DIST_ID FROM MVR_COUNTY_TAX");
  Troops troops;
  for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
    troops[rows->Text(row, "TRP_ID")].insert(rows->Text(row, "TRP_DIST_ID"));
  }
  return troops_.emplace(std::move(troops));
}

}  // namespace reference
