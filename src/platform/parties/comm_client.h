#pragma once

#include <memory>
#include <string>

#include "platform/event.h"

namespace platform {

/// The communications client, which moves files. Events come on the user-interface thread.
class CommClient {
 public:
  virtual ~CommClient() = default;

  /// What happened: a text with the elements COMMAND ("FILEDOWNLOAD"), STATUS ("SUCCESSFULL", or what went
  /// wrong) and SOURCE (the file). The second argument is not used.
  Event<std::string, std::string> MessageReceived;
};

class CommClientProvider {
 public:
  virtual ~CommClientProvider() = default;
  virtual std::shared_ptr<CommClient> GetClient() = 0;
  /// Opens the connection; files move from then on. Calling it again changes nothing.
  virtual void Connect() = 0;
};

}  // namespace platform
