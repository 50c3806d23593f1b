#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <sstream>
#include <string>

#include "platform/descriptor.h"
#include "platform/whole_file.h"
#include "tests/support/patience.h"
#include "tests/support/temporary_folder.h"
#include "tests/wordprocessor/layout_letter.h"
#include "wordprocessor/layout/pool.h"

namespace wordprocessor {
namespace {

using platform::Failure;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

/// The real layout process with the real office.
class LayoutOfficeTest : public testing::Test {
 protected:
  LayoutSettings Settings() {
    LayoutSettings settings;
    settings.worker_program = std::filesystem::path(ZEMLO_BINARY_DIR) / "bin/zemlo-office-worker";
    settings.work_folder = folder_ / "work folder, 100% \"ours\"";
    return settings;
  }
  std::string TextOf(LayoutPool& pool, const std::string& document) {
    pool.Layout("LETTER.docx", document, pdf_).get();
    return PdfText(pdf_);
  }

  tests::TemporaryFolder folder_;
  const std::filesystem::path pdf_ = folder_ / "letter.pdf";
};

TEST_F(LayoutOfficeTest, LaysOutALetterAfterADamagedOne) {
  LayoutPool pool(Settings());
  EXPECT_THROW(TextOf(pool, "no document at all"), Failure);
  const auto cut = Letter(Paragraph("Cut off in the middle.")).substr(0, 300);
  EXPECT_THROW(TextOf(pool, cut), Failure);
  EXPECT_FALSE(std::filesystem::exists(pdf_));
  EXPECT_THAT(TextOf(pool, Letter(Paragraph("Tax is due \xE2\x82\xAC 12."))),
              HasSubstr("Tax is due \xE2\x82\xAC 12."));
}

/// Somebody a document might call.
class Listener {
 public:
  Listener() : socket_(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0)) {
    sockaddr_in address = {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof(address);
    bind(socket_.number(), reinterpret_cast<sockaddr*>(&address), size);
    listen(socket_.number(), 8);
    getsockname(socket_.number(), reinterpret_cast<sockaddr*>(&address), &size);
    url_ = "http://127.0.0.1:" + std::to_string(ntohs(address.sin_port)) + "/";
  }
  const std::string& url() const { return url_; }
  bool WasCalled() const {
    return platform::Descriptor(accept(socket_.number(), nullptr, nullptr)).number() >= 0;
  }

 private:
  platform::Descriptor socket_;
  std::string url_;
};

std::string Relationship(const std::string& id, const std::string& kind, const std::string& target) {
  return "<Relationship Id=\"" + id +
         "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/" + kind +
         "\" Target=\"" + target + "\" TargetMode=\"External\"/>";
}

std::string Field(const std::string& code) {
  return "<w:p><w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText>" + code +
         "</w:instrText></w:r><w:r><w:fldChar w:fldCharType=\"separate\"/></w:r><w:r><w:t>stale</w:t></w:r>"
         "<w:r><w:fldChar w:fldCharType=\"end\"/></w:r></w:p>";
}

constexpr const char* kLinkedPicture =
    R"(<w:p><w:r><w:drawing><wp:inline><wp:extent cx="900000" cy="900000"/><wp:docPr id="1" name="p"/><a:graphic>)"
    R"(<a:graphicData uri="http://schemas.openxmlformats.org/drawingml/2006/picture"><pic:pic><pic:nvPicPr>)"
    R"(<pic:cNvPr id="1" name="p"/><pic:cNvPicPr/></pic:nvPicPr><pic:blipFill><a:blip r:link="rPicture"/>)"
    R"(<a:stretch><a:fillRect/></a:stretch></pic:blipFill><pic:spPr><a:xfrm><a:off x="0" y="0"/>)"
    R"(<a:ext cx="900000" cy="900000"/></a:xfrm><a:prstGeom prst="rect"><a:avLst/></a:prstGeom></pic:spPr></pic:pic>)"
    R"(</a:graphicData></a:graphic></wp:inline></w:drawing></w:r></w:p>)"
    R"(<w:p><w:r><w:pict><v:shape style="width:90pt;height:90pt"><v:imagedata r:id="rPicture"/></v:shape></w:pict>)"
    R"(</w:r></w:p>)"
    R"(<w:p><w:r><w:object><v:shape id="s" style="width:90pt;height:90pt"/><o:OLEObject Type="Link" )"
    R"(ProgID="Word.Document.12" ShapeID="s" DrawAspect="Content" r:id="rObject" UpdateMode="Always"/></w:object>)"
    R"(</w:r></w:p><w:altChunk r:id="rChunk"/><w:subDoc r:id="rChunk"/>)";

/// A letter that asks for text, a picture, a template and objects at `place` in every way it can.
std::string LetterThatReachesFor(const std::string& place) {
  const auto text = place + "secret.docx";
  const auto picture = place + "secret.png";
  const auto body = Paragraph("The letter itself.") + kLinkedPicture + Field("INCLUDETEXT \"" + text + "\"") +
                    Field("INCLUDEPICTURE \"" + picture + "\" \\d") +
                    Field("DDEAUTO soffice \"" + text + "\" x") + Field("IMPORT \"" + picture + "\"") +
                    Field("RD \"" + text + "\"");
  const auto relationships =
      Relationship("rPicture", "image", picture) + Relationship("rObject", "oleObject", text) +
      Relationship("rChunk", "aFChunk", text) +
      R"(<Relationship Id="rSettings" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/)"
      R"(settings" Target="settings.xml"/>)";
  const Parts more = {
      {"word/settings.xml",
       R"(<w:settings xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main")"
       R"( xmlns:r="http://schemas.openxmlformats.org/officeDocument/2006/relationships">)"
       R"(<w:attachedTemplate r:id="rTemplate"/><w:linkStyles/><w:updateFields w:val="true"/></w:settings>)"},
      {"word/_rels/settings.xml.rels",
       R"(<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">)" +
           Relationship("rTemplate", "attachedTemplate", text) + "</Relationships>"}};
  return Letter(body, relationships, more);
}

TEST_F(LayoutOfficeTest, FollowsNoReferenceOutOfALetter) {
  const Listener listener;
  platform::WriteWholeFile(folder_ / "secret.docx", Letter(Paragraph("Nobody may read this.")));
  // The smallest picture: one red dot.
  const auto dot = OutputOf(
      "printf "
      "'iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mP8z8BQDwAEhQGAhKmMIQAAAABJRU5ErkJggg==' "
      "| base64 -d");
  platform::WriteWholeFile(folder_ / "secret.png", dot);
  LayoutPool pool(Settings());
  for (const auto& place :
       {listener.url(), "file://" + folder_.path().string() + "/", folder_.path().string() + "/"}) {
    const auto text = TextOf(pool, LetterThatReachesFor(place));
    EXPECT_THAT(text, AllOf(HasSubstr("The letter itself."), Not(HasSubstr("Nobody may read this."))))
        << place;
    EXPECT_THAT(OutputOf("pdfimages -list '" + pdf_.string() + "'"), Not(HasSubstr(" image "))) << place;
    EXPECT_FALSE(listener.WasCalled()) << place;
  }
}

/// The process whose parent is `parent`, or 0.
pid_t ChildOf(pid_t parent) {
  std::istringstream children(OutputOf("pgrep -P " + std::to_string(parent)));
  pid_t child = 0;
  children >> child;
  return child;
}

template <typename Condition>
bool ComesTrue(Condition condition) {
  return tests::ComesTrue(condition, [] { usleep(20'000); });
}

bool Runs(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/stat");
  std::string number, name, state;
  return (status >> number >> name >> state) && state != "Z";
}

TEST_F(LayoutOfficeTest, EndsWithTheProgramThatStartedItAndIsCleanedUpAfterByTheNext) {
  const pid_t program = fork();
  if (program == 0) {
    LayoutPool pool(Settings());
    pool.Layout("LETTER.docx", Letter(Paragraph("On screen.")), pdf_).wait();
    for (;;) pause();
  }
  ASSERT_TRUE(ComesTrue([&] { return std::filesystem::exists(pdf_); }));
  const pid_t worker = ChildOf(program);
  ASSERT_TRUE(Runs(worker));
  kill(program, SIGKILL);
  waitpid(program, nullptr, 0);
  EXPECT_TRUE(ComesTrue([&] { return !Runs(worker); }));
  EXPECT_FALSE(std::filesystem::is_empty(Settings().work_folder));
  const LayoutPool next(Settings());
  EXPECT_TRUE(std::filesystem::is_empty(Settings().work_folder));
}

}  // namespace
}  // namespace wordprocessor
