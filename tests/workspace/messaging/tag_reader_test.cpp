#include "workspace/messaging/tag_reader.h"

#include <gtest/gtest.h>

namespace workspace {
namespace {

struct TagCase {
  const char* text;
  const char* tag;
  TagForm form;
  const char* value;
};

TEST(TagReader, ReadsTheFirstElementOfThatName) {
  constexpr auto kExact = TagForm::kExact;
  constexpr auto kLoose = TagForm::kWithAttributes;
  const TagCase cases[] = {
      {"<A>one</A><A>two</A>", "A", kExact, "one"},
      {"<status>fine</STATUS>", "Status", kExact, "fine"},
      {"<A x=\"1\">one</A>", "A", kExact, ""},
      {"</A><A>one</A>", "A", kExact, "one"},
      {"<A>one", "A", kExact, ""},
      {"<A></A>", "A", kExact, ""},
      {"", "A", kExact, ""},
      {"<A x=\"1\">one</A>", "A", kLoose, "one"},
      {"<A>one</A>", "A", kLoose, "one"},
      {"<a>one</a>", "A", kLoose, ""},
      {"<A>one</a>", "A", kLoose, ""},
      {"<A x=\"1\"", "A", kLoose, ""},
      {"</A><A>one</A>", "A", kLoose, ""},
  };
  for (const auto& [text, tag, form, value] : cases) {
    EXPECT_EQ(ReadTag(text, tag, form), value) << text << " asked for " << tag;
  }
}

}  // namespace
}  // namespace workspace
