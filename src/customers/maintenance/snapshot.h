#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "customers/maintenance/customer_controls.h"

namespace customers {

/// What the dialog's fields hold at one moment: key, "::" and value of each, in a fixed order.
using Snapshot = std::vector<std::string>;

/// Whether a snapshot has the resident address where its first line is blank.
enum class ResidentItems { kAlways, kWhereEntered };

/// The values as they stand. An address comes from its suggestion where that is accepted. Resident items are
/// left out of a new customer's without a resident address, unless they are wanted always.
Snapshot SaveValues(CustomerControls& controls, ResidentItems resident);

/// An item's key and its value: what stands before and after its first "::".
std::string_view KeyOf(std::string_view item);
std::string_view ValueOf(std::string_view item);

/// The item at that place; "" where the snapshot has none.
const std::string& ItemAt(const Snapshot& snapshot, std::size_t place);

/// The values of all resident items, joined.
std::string ResidentAddressOf(const Snapshot& snapshot);

/// Whether an item holds the text, in capitals, anywhere.
bool HoldsInCapitals(std::string_view item, std::string_view text);

}  // namespace customers
