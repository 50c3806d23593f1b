#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "apps/office_check.h"
#include "host/data_folder.h"
#include "host/server_settings.h"
#include "platform/parties/address_verifier.h"

namespace apps {

/// The verifier that the office has set: its own program, else the street file of the data folder. It costs
/// nothing until the first address.
std::unique_ptr<platform::AddressVerifier> MakeAddressVerifier(const host::DataFolder& folder,
                                                               const host::ServerSettings& settings);

/// What is wrong with the street file, for whoever keeps the office; a program is looked at by
/// ServerSettings. `init` names a file without an address as well. The tables are read only when they have
/// changed since they were last found right.
std::vector<std::string> AddressFaults(const host::DataFolder& folder, const host::ServerSettings& settings,
                                       Occasion occasion);

}  // namespace apps
