#include "platform/xml/xml.h"
#include "tests/fuzz/fuzz_input.h"
#include "wordprocessor/bookmarks/data_context.h"

namespace {

/// What is taken is written as XML that says the same.
void ReadAndWrite(std::string_view text) {
  using platform::XmlDocument;
  const auto first = XmlDocument::Parse(text);
  if (!first.document) return;
  const auto written = first.document->Root().Xml();
  const auto second = XmlDocument::Parse(written);
  fuzz::Require(second.document && second.document->Root().Xml() == written &&
                    second.document->Root().Text() == first.document->Root().Text(),
                "XML that was written reads the same");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ReadAndWrite(fuzz::TextOf(data, size));
  fuzz::Answered([&] {
    const auto context = wordprocessor::DataContext::Parse(fuzz::TextOf(data, size));
    const auto* field = context.Find("CUSTOMER_NAME");
    fuzz::Require(context.Find("CUSTOMER_NAME__1") == field || field == nullptr, "a repeat finds its field");
  });
  return 0;
}
