#pragma once

/// What not everybody in the office may do. The window asks before it offers, the server before it does.
namespace platform::right {

inline constexpr const char* kEditCustomer = "CustomerEdit";
inline constexpr const char* kAddCustomer = "CustomerAdd";
inline constexpr const char* kToldOfCorrectedLetters = "UpdateCustNotify";

}  // namespace platform::right
