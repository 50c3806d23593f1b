#pragma once

#include <filesystem>
#include <memory>

#include "platform/record_set.h"

namespace server {

/// The letters that wait for the coming batch run or are claimed by one, as record CORR_BITEM_WAITING has
/// them; without rows where there is none. Throws Failure kNotFound where there are no data yet, kUnavailable
/// or kRefused where they cannot be used.
std::shared_ptr<platform::RecordSet> WaitingItems(const std::filesystem::path& data_folder);

}  // namespace server
