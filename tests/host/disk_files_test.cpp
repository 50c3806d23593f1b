#include "host/disk_files.h"

#include <gmock/gmock.h>

#include "platform/failure.h"
#include "tests/support/failing.h"
#include "tests/support/temporary_folder.h"

namespace host {
namespace {

using tests::ReadFile;
using tests::TemporaryFolder;
using tests::WriteFile;

TEST(DiskFiles, FindsATemplateByTheNameAGridShowsAndAServersPath) {
  const TemporaryFolder folder;
  WriteFile(folder / "Notice é.docx", "letter");
  const DiskFiles files;
  EXPECT_TRUE(files.Exists((folder / "Notice é.docx").string()));
  EXPECT_TRUE(files.Exists((folder / "NOTICE É.DOCX").string()));
  EXPECT_TRUE(files.Exists(folder.path().string() + "\\notice é.docx"));
  EXPECT_FALSE(files.Exists((folder / "notice.docx").string()));
  EXPECT_FALSE(files.Exists((folder / "no folder/x.docx").string()));
}

TEST(DiskFiles, CopiesOverAnOlderFileInOneStep) {
  const TemporaryFolder folder;
  WriteFile(folder / "new.docx", "new");
  WriteFile(folder / "OLD.docx", "old");
  DiskFiles files;
  files.CopyFile((folder / "NEW.docx").string(), (folder / "old.docx").string());
  EXPECT_EQ(ReadFile(folder / "OLD.docx"), "new");
  EXPECT_FALSE(std::filesystem::exists(folder / "old.docx"));
}

TEST(DiskFiles, AFailedCopyNamesTheFileAndLeavesWhatWasThere) {
  const TemporaryFolder folder;
  WriteFile(folder / "kept.docx", "kept");
  DiskFiles files;
  EXPECT_THAT([&] { files.CopyFile((folder / "missing.docx").string(), (folder / "kept.docx").string()); },
              tests::Fails(platform::Failure::Kind::kNotFound, testing::HasSubstr("missing.docx")));
  EXPECT_EQ(ReadFile(folder / "kept.docx"), "kept");
  EXPECT_THROW(files.CopyFile((folder / "kept.docx").string(), (folder / "none/x").string()),
               platform::Failure);
}

TEST(DiskFiles, DeletingAnAbsentFileIsNoFailure) {
  const TemporaryFolder folder;
  WriteFile(folder / "a.xml", "x");
  DiskFiles files;
  EXPECT_TRUE(files.DeleteFile((folder / "A.XML").string()));
  EXPECT_FALSE(files.DeleteFile((folder / "a.xml").string()));
}

}  // namespace
}  // namespace host
