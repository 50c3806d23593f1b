#include "server/wire/wire_format.h"

#include "tests/fuzz/fuzz_input.h"

// A request or reply is read whole or refused; a reply that is read is written as one that reads the same.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto text = fuzz::TextOf(data, size);
  fuzz::Answered([&] { server::ReadRequest(text); });
  fuzz::Answered([&] {
    const auto written = server::WriteReply(server::ReadReply(text));
    fuzz::Require(server::WriteReply(server::ReadReply(written)) == written,
                  "a reply reads as it was written");
  });
  return 0;
}
