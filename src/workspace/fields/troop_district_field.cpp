#include "workspace/fields/troop_district_field.h"

#include <optional>
#include <utility>

#include "platform/text.h"
#include "workspace/fields/key_filter.h"

namespace workspace {

using platform::Trap;
using platform::Trim;

void TroopDistrictField::TroopDistrictSplit() {
  Trap(uses_.services, Procedure("TroopDistrictSplit"), [&] {
    const auto text = Trim(uses_.field.text());
    const auto troop = platform::FirstCharacters(text, 1);
    uses_.troop = troop;
    uses_.district = text.substr(troop.size());
  });
}

void TroopDistrictField::TroopDistrictCheck(bool& valid) {
  valid = false;
  Trap(uses_.services, Procedure("TroopDistrictCheck"), [&] {
    TroopDistrictSplit();
    valid = IsValid();
    if (valid) {
      uses_.services.utilities.MarkFieldValid(uses_.field);
    } else {
      uses_.services.utilities.MarkFieldInvalid(uses_.field);
    }
  });
}

bool TroopDistrictField::IsValid() {
  auto& utilities = uses_.services.utilities;
  if (!Trim(uses_.district).empty()) return utilities.ValidateTroopDistrict(uses_.troop, uses_.district);
  if (!Trim(uses_.troop).empty()) return utilities.ValidateTroop(uses_.troop);
  return true;
}

std::vector<platform::Connection> TroopDistrictField::Connect(std::function<void()> check) {
  std::vector<platform::Connection> connections;
  connections.push_back(FilterKeys(uses_.services, uses_.field, Procedure("txtTD_KeyPress"),
                                   [this](char32_t key) -> std::optional<char32_t> {
                                     if (!uses_.services.utilities.AllowZipKey(key)) return std::nullopt;
                                     return key >= U'a' && key <= U'z' ? key - U'a' + U'A' : key;
                                   }));
  connections.push_back(uses_.field.Changed.Connect([this, check = std::move(check)] {
    bool valid = false;
    TroopDistrictCheck(valid);
    check();
  }));
  return connections;
}

}  // namespace workspace
