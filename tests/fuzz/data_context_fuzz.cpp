#include "tests/fuzz/fuzz_input.h"
#include "wordprocessor/bookmarks/data_context.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Answered([&] {
    const auto context = wordprocessor::DataContext::Parse(fuzz::TextOf(data, size));
    const auto* field = context.Find("CUSTOMER_NAME");
    fuzz::Require(context.Find("CUSTOMER_NAME__1") == field || field == nullptr, "a repeat finds its field");
  });
  return 0;
}
