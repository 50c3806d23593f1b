#pragma once

#include <filesystem>
#include <stop_token>
#include <vector>

#include "platform/parties/address_verifier.h"
#include "platform/parties/user_rights.h"
#include "platform/value.h"
#include "server/storage/database.h"
#include "server/wire/request_keys.h"
#include "server/wire/wire_format.h"

namespace server {

/// An address that was verified before the request's transaction began.
struct VerifiedAddress {
  platform::PostalAddress asked;
  platform::AddressVerdict verdict;
};

/// One request being answered: what came, what goes back, and what the answer is made from. Lives within one
/// transaction of `database`.
struct Exchange {
  const Request& request;
  const RequestKeys& keys;
  Reply& reply;
  Database& database;
  platform::Timestamp now;
  const std::filesystem::path& template_folder;
  std::stop_token ending;  ///< stops when the server is to end soon
  const platform::UserRights& rights;
  const platform::AddressVerifier& verifier;     ///< verifies nothing here: that may take seconds
  const std::vector<VerifiedAddress>& verified;  ///< what Route::AddressesToVerify named

  platform::Date Today() const { return platform::Date(std::chrono::floor<std::chrono::days>(now)); }
};

}  // namespace server
