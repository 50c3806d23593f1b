#pragma once

#include <chrono>
#include <filesystem>

#include "server/setup/server_data.h"

namespace bench {

inline constexpr auto kToday = std::chrono::year(2026) / 11 / 22;

/// Makes the server's demo data, 300 customers as of kToday, in the folder, and returns the folder.
inline std::filesystem::path WithDemoData(const std::filesystem::path& folder) {
  server::CreateServerData({.data_folder = folder,
                            .product_data_folder = std::filesystem::path(ZEMLO_SOURCE_DIR) / "data",
                            .customers = 300,
                            .today = kToday});
  return folder;
}

}  // namespace bench
