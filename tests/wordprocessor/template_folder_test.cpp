#include "wordprocessor/document/template_folder.h"

#include <gmock/gmock.h>

#include "platform/whole_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/wordprocessor/layout_letter.h"

namespace wordprocessor {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class LocalTemplates : public testing::Test {
 protected:
  void Given(const std::string& name, const std::string& content) {
    tests::WriteFile(folder_ / name, content);
  }

  const std::string whole_ = Letter(Paragraph("Dear"));
  tests::TemporaryFolder folder_;
};

TEST_F(LocalTemplates, KeepEveryWholeDocumentAndWhateverElseLiesThere) {
  const std::vector<std::string> names = {".~lock.REG101.docx#", "REG101.docx", "kvcorr.dot", "notes.txt",
                                          "~$REG101.docx"};
  for (const auto& name : names)
    Given(name, name.ends_with("101.docx") || name == "kvcorr.dot" ? whole_ : "");
  Given("~$REG101.docx", "a word processor has it open");
  EXPECT_THAT(ClearOfBrokenTemplates(folder_.path()), IsEmpty());
  EXPECT_EQ(folder_.Names(), names);
  EXPECT_THAT(ClearOfBrokenTemplates(folder_ / "missing"), IsEmpty());
}

// They stood there for ever, because a template is told by its name.
TEST_F(LocalTemplates, LoseWhatACopyThatBrokeOffHasLeft) {
  const auto rest_of = [this](std::size_t bytes) { return whole_.substr(0, bytes); };
  const std::pair<const char*, std::string> rests[] = {
      {"nothing.docx", ""},
      {"zeros.docx", std::string(whole_.size(), '\0')},
      {"half.DOCX", rest_of(whole_.size() / 2)},
      {"all_but_a_byte_of_the_directory.dot", rest_of(whole_.rfind("PK\x05\x06") + 3)},
  };
  for (const auto& [name, content] : rests) {
    Given(name, content);
    EXPECT_THAT(ClearOfBrokenTemplates(folder_.path()),
                ElementsAre(AllOf(HasSubstr(name), HasSubstr("was removed; it is fetched again."))))
        << name;
    EXPECT_THAT(folder_.Names(), IsEmpty()) << name;
  }
}

TEST_F(LocalTemplates, PutAsideWhatSomebodyMayHaveMade) {
  auto torn = whole_;
  torn[torn.size() / 3] ^= 0x20;
  torn.replace(60, 40, 40, '\0');
  for (const auto& content : {std::string("typed by hand"), torn}) {
    Given("REG101.docx", content);
    EXPECT_THAT(ClearOfBrokenTemplates(folder_.path()), ElementsAre(HasSubstr("\"REG101.docx.damaged\"")));
    EXPECT_THAT(folder_.Names(), ElementsAre("REG101.docx.damaged"));
    EXPECT_EQ(platform::ReadWholeFile(folder_ / "REG101.docx.damaged"), content);
    EXPECT_THAT(ClearOfBrokenTemplates(folder_.path()), IsEmpty());
  }
}

}  // namespace
}  // namespace wordprocessor
