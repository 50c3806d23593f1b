#include "workspace/letters/letter_templates.h"

#include "tests/workspace/workspace_room_test.h"

namespace workspace {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Kind = platform::Failure::Kind;

class LetterTemplatesTest : public WorkspaceRoomTest {
 protected:
  void GivenCatalogue(const std::vector<std::string>& names) {
    std::vector<fakes::Row> rows;
    for (const auto& name : names) rows.push_back({{"DCMT_NM", name}, {"LTR_TYP_ID", "110"}});
    fakes_.reference.AnswersWhatContains("SELECT a.*", rows.empty() ? std::make_shared<platform::RecordSet>(
                                                                          std::vector<std::string>{"DCMT_NM"})
                                                                    : fakes::RowsOf("", rows));
  }
  void ServerReportsFolder(const std::string& xml) {
    templates_.GetNetworkPath();
    fakes_.server.ReplyWith("XML_CONTEXT", {{{"XML_CONTEXT", xml}}});
    templates_.DecodeNetworkPath(TakeReply());
  }
  void GivenServerFolder(const std::string& folder) {
    ServerReportsFolder("<X><L_TEMPLATE_PATH>" + folder + "</L_TEMPLATE_PATH></X>");
    fakes_.status.texts.clear();
  }
  std::vector<std::string> Downloads() {
    std::vector<std::string> texts;
    for (const auto& [source, target] : fakes_.server.downloads) texts.push_back(source + " to " + target);
    return texts;
  }
};

TEST_F(LetterTemplatesTest, AskTheServerForItsFolder) {
  templates_.GetNetworkPath();
  const auto& sent = fakes_.server.LastRequest();
  EXPECT_EQ(sent.type, 83);
  EXPECT_EQ(sent.user_id, "");
  EXPECT_THAT(sent.keys, IsEmpty());
  EXPECT_EQ(sent.inquiry_xml,
            "<XML_CONTEXT_INQUIRY><L_TEMPLATE_PATH></L_TEMPLATE_PATH></XML_CONTEXT_INQUIRY>");
  EXPECT_EQ(pending_.name(), "GetNetworkPath");
  EXPECT_EQ(fakes_.status.LastText(), "Requesting Network Path.");
}

TEST_F(LetterTemplatesTest, KeepTheFolderWithOneSeparatorAtItsEnd) {
  for (const auto& [reported, kept] : {std::pair{" \\\\srv\\letters ", "\\\\srv\\letters\\"},
                                       {"\\\\srv\\letters\\", "\\\\srv\\letters\\"},
                                       {"", "\\"}}) {
    ServerReportsFolder(std::string("<X><L_TEMPLATE_PATH>") + reported + "</L_TEMPLATE_PATH></X>");
    EXPECT_EQ(templates_.server_folder(), kept);
    EXPECT_EQ(pending_.name(), "");
  }
}

TEST_F(LetterTemplatesTest, ReportAFolderReplyThatCannotBeReadTwice) {
  GivenServerFolder("old");
  ServerReportsFolder("<X><L_TEMPLATE_PATH>");
  ASSERT_THAT(fakes_.errors.reports, SizeIs(2));
  EXPECT_EQ(fakes_.errors.reports[0].description, "Message parsing error");
  EXPECT_THAT(fakes_.errors.reports[1].description, testing::StartsWith("Message; "));
  EXPECT_THAT(fakes_.errors.Procedures(),
              ElementsAre("ZEMLO_Corresp.DecodeNetworkPath", "ZEMLO_Corresp.DecodeNetworkPath"));
  EXPECT_EQ(templates_.server_folder(), "old\\");
}

TEST_F(LetterTemplatesTest, DownloadOnlyWhatIsMissing) {
  GivenServerFolder("srv");
  GivenCatalogue({" A.docx ", "B.docx", "C.docx"});
  fakes_.files.content["templates/B.docx"] = "outdated";
  templates_.CopyTemplate();
  EXPECT_THAT(Downloads(), ElementsAre("srv\\A.docx to templates/", "srv\\C.docx to templates/"));
  EXPECT_THAT(fakes_.status.texts,
              ElementsAre("Checking templates.", "Downloading templates.", "Checking templates.",
                          "Checking templates.", "Downloading templates."));
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kHourglass);
}

// The documents said that the start fetches it, and nothing did.
TEST_F(LetterTemplatesTest, DownloadTheCommonTemplateWhereItIsMissing) {
  GivenServerFolder("srv");
  fakes_.files.content.clear();
  GivenCatalogue({});
  templates_.CopyTemplate();
  EXPECT_THAT(Downloads(), ElementsAre("srv\\kvcorr.dot to templates/"));
  EXPECT_THAT(fakes_.status.texts, ElementsAre("Downloading templates."));
}

TEST_F(LetterTemplatesTest, TellOnceWhatIsWrongWithATemplateThatIsNewHere) {
  GivenServerFolder("srv");
  GivenCatalogue({"A.docx", "B.docx", "A.docx"});
  fakes_.template_judge.faults[{"templates/A.docx", "110"}] = "A has an error.";
  fakes_.files.content["templates/B.docx"] = "here";
  fakes_.template_judge.faults[{"templates/B.docx", "110"}] = "B has had one for years.";
  templates_.CopyTemplate();
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
  for (const auto* source : {"srv\\A.docx", "srv\\A.docx", "srv\\kvcorr.dot"})
    templates_.TemplateCame(source);
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.CopyTemplate"));
  EXPECT_EQ(fakes_.errors.reports[0].description, "A has an error.");
}

TEST_F(LetterTemplatesTest, SayReadyWhenThereIsNothingToDownload) {
  GivenCatalogue({});
  templates_.CopyTemplate();
  EXPECT_THAT(fakes_.status.texts, ElementsAre("Ready"));
}

TEST_F(LetterTemplatesTest, PassOverAMissingFileAndEndAtAnyOtherFailure) {
  GivenCatalogue({"A.docx", "B.docx", "C.docx"});
  fakes_.server.on_download = [this](const auto& download) {
    if (download.source == "A.docx") throw platform::Failure(Kind::kNotFound, "no such file");
    if (download.source == "B.docx") throw platform::Failure(Kind::kPermissionDenied, "no permission");
  };
  templates_.CopyTemplate();
  EXPECT_THAT(Downloads(), ElementsAre("A.docx to templates/", "B.docx to templates/"));
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Corresp.CopyTemplate"));
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
}

TEST_F(LetterTemplatesTest, DownloadTheOthersWhereOneNameOfTheCatalogueIsWrong) {
  GivenCatalogue({"..\\A.docx", "", "B.docx", "C.docx"});
  fakes_.files.broken["templates/B.docx"] = Kind::kNotFound;
  templates_.CopyTemplate();
  EXPECT_THAT(Downloads(), ElementsAre("B.docx to templates/", "C.docx to templates/"));
  EXPECT_THAT(fakes_.errors.Procedures(),
              ElementsAre("ZEMLO_Corresp.CopyTemplate", "ZEMLO_Corresp.CopyTemplate"));
  EXPECT_THAT(fakes_.errors.reports[0].description, testing::HasSubstr("\"..\\A.docx\""));
}

TEST_F(LetterTemplatesTest, SayReadyWhereTheCatalogueCannotBeRead) {
  fakes_.reference.AnswersBy([](const std::string&) -> std::shared_ptr<platform::RecordSet> {
    throw platform::Failure(Kind::kDamaged, "no database");
  });
  templates_.CopyTemplate();
  EXPECT_EQ(fakes_.status.LastText(), "Ready");
}

TEST_F(LetterTemplatesTest, AskTheCatalogueOfTheRegionForTheTemplateOfToday) {
  fakes_.settings.region = " ok ";
  GivenTemplate("TAX110.docx");
  EXPECT_EQ(templates_.GetTemplateFileName(110), "templates/TAX110.docx");
  EXPECT_EQ(templates_.template_name(), "TAX110.docx");
  const auto& asked = fakes_.reference.statements.back();
  for (const auto* part :
       {"SELECT a.DCMT_NM ", "REGION='OK'", "ltr_Typ_ID='110'", "EFCTV_DT <= #2004-03-15#"})
    EXPECT_THAT(asked, testing::HasSubstr(part));
  EXPECT_THAT(asked, testing::Not(testing::HasSubstr("{")));
}

TEST_F(LetterTemplatesTest, AnswerNothingForALetterTypeWithoutATemplate) {
  GivenTemplate("OLD.docx");
  templates_.GetTemplateFileName(110);
  fakes_.reference.AnswersWhatContains(
      "SELECT a.DCMT_NM", std::make_shared<platform::RecordSet>(std::vector<std::string>{"DCMT_NM"}));
  EXPECT_EQ(templates_.GetTemplateFileName(110), "");
  EXPECT_EQ(templates_.template_name(), "OLD.docx");

  fakes_.reference.AnswersBy([](const std::string&) -> std::shared_ptr<platform::RecordSet> {
    throw platform::Failure(Kind::kDamaged, "no database");
  });
  EXPECT_EQ(templates_.GetTemplateFileName(110), "");
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("ZEMLO_Correspndnce.GetTemplateFileName"));
}

TEST_F(LetterTemplatesTest, BringAMissingTemplateFromTheServer) {
  GivenServerFolder("srv");
  fakes_.files.content["srv\\A.docx"] = "new";
  templates_.BringIfMissing("A.docx");
  EXPECT_EQ(fakes_.files.content["templates/A.docx"], "new");
  EXPECT_THAT(
      fakes_.host.MessageTexts(),
      ElementsAre(
          "You do not have the correct template for this letter. Template will be downloaded from server."));

  templates_.BringIfMissing("A.docx");
  EXPECT_THAT(fakes_.files.copies, SizeIs(1));
}

TEST_F(LetterTemplatesTest, RefuseNamesThatLeaveTheFolder) {
  for (const auto* name : {"../A.docx", "..", "a\\b.docx", "C:A.docx", "/etc/passwd", ".", ""}) {
    EXPECT_THROW(templates_.LocalPath(name), platform::Failure) << name;
    EXPECT_THROW(templates_.ServerPath(name), platform::Failure) << name;
  }
  EXPECT_EQ(templates_.LocalPath("A..docx"), "templates/A..docx");
}

}  // namespace
}  // namespace workspace
