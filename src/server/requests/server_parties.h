#pragma once

#include "platform/parties/address_verifier.h"
#include "platform/parties/clock.h"
#include "platform/parties/user_rights.h"

namespace server {

/// What the server asks besides its data. Used on its thread; all outlive the server.
struct ServerParties {
  const platform::Clock& clock;
  const platform::UserRights& rights;
  platform::AddressVerifier& verifier;
};

}  // namespace server
