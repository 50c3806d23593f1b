#pragma once

#include <filesystem>
#include <functional>
#include <string>

namespace server {

/// Brings a server's data to the form that this program uses, as everything that opens them does; once done,
/// opening takes no time. `tell` gets a sentence before what takes minutes, on the thread of the call. Throws
/// Failure kNotFound where there are no data yet, kUnavailable or kRefused where they cannot be used.
void PrepareData(const std::filesystem::path& data_folder,
                 const std::function<void(const std::string&)>& tell);

}  // namespace server
