#include "reference/sql_dialect.h"
#include "tests/fuzz/fuzz_input.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace std::chrono_literals;
  fuzz::Answered([&] { reference::TranslateStatement(fuzz::TextOf(data, size), 2024y / 7 / 31); });
  return 0;
}
