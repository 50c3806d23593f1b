#pragma once

#include <array>
#include <string_view>

namespace server {

struct FormType {
  std::string_view code;
  std::string_view description;
};

/// The kinds of documents a customer can have.
inline constexpr auto kFormTypes = std::to_array<FormType>({
    {"C", "Tax Liability Assessment"},
    {"W", "Warrant Docket"},
    {"M", "Motor Fuel Return"},
    {"O", "Overdue Account"},
    {"V", "Vehicle License Citation"},
    {"R", "Receipt"},
});

}  // namespace server
