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
    {"C", "Certificate of tax liability assessment"},
    {"W", "Tax warrant docket"},
    {"M", "Motor fuel tax return"},
    {"O", "Overdue account"},
    {"V", "Vehicle license citation"},
    {"R", "Receipt"},
});

}  // namespace server
