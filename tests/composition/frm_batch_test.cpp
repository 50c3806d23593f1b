#include "composition/frm_batch.h"

#include <gmock/gmock.h>

#include "tests/fakes/fake_services.h"

namespace composition {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::StartsWith;

class FrmBatch : public testing::Test {
 protected:
  void GivenDiagnosticMode() { fakes_.settings_store.Put("DMVKorvadsk", "System", "DontPrint", "Y"); }
  void Show(const std::string& context) {
    form_ = std::make_unique<frmBatch>(fakes_.services());
    form_->ErrBookMark(context);
    form_->Load();
    form_->Activate();
  }
  /// Every node on a line of its own: a blank for each level, the text, the image, "!" where it is red.
  std::vector<std::string> Nodes() {
    std::vector<std::string> lines;
    for (const auto* node : form_->tvw.top_level()) AddLines(*node, "", lines);
    return lines;
  }
  static void AddLines(const platform::Tree::Node& node, const std::string& indent,
                       std::vector<std::string>& lines) {
    EXPECT_TRUE(node.expanded);
    lines.push_back(indent + node.text + " " + node.image + (node.colour == platform::kRed ? "!" : ""));
    for (const auto* child : node.children) AddLines(*child, indent + " ", lines);
  }
  void UserClicks(const std::vector<std::size_t>& path) {
    auto* node = form_->tvw.top_level().at(path.front());
    for (std::size_t level = 1; level < path.size(); ++level) node = node->children.at(path[level]);
    form_->tvw.UserClicks(*node);
  }
  template <typename Lines>
  std::vector<std::string> Captions(const Lines& lines) {
    std::vector<std::string> captions;
    for (const auto& line : lines) captions.push_back(((*form_).*line.label).caption());
    return captions;
  }

  fakes::FakeServices fakes_;
  std::unique_ptr<frmBatch> form_;
};

TEST_F(FrmBatch, ShowsTheWayToEachErrorOrEverything) {
  struct Case {
    const char* what;
    const char* context;
    std::vector<std::string> normal;
    std::vector<std::string> diagnostic;
    const char* errors;
  };
  // 400000 own error, 800000 in a child, 1000000 in a child that is no address; 4 system, 1000 indirect.
  const Case cases[] = {
      {"names or descriptions, in the order of the document",
       R"(<C State="800000">text<B V_EnglishDesc="Bond"/><A State="400000" V_EnglishDesc="Account"/>)"
       R"(<D State="400000"/></C>)",
       {"C ErrorInChild", " Account ErrorBK!", " D ErrorBK!"},
       {"C ErrorInChild", " Bond CorrectBK", " Account ErrorBK!", " D ErrorBK!"},
       "2"},
      {"an error below a field that is not shown stands at the top, and so does what is below that",
       R"(<C State="800000"><S State="800004"><E State="400000"/></S><I State="801000"><F State="C00000">)"
       R"(<G State="400000"/></F></I></C>)",
       {"C ErrorInChild", "E ErrorBK!", "F ErrorInChild", " G ErrorBK!"},
       {"C ErrorInChild", " S ErrorInChild", "  E ErrorBK!", " I ErrorInChild", "  F ErrorInChild",
        "   G ErrorBK!"},
       "2"},
      {"an own error above another one does not count",
       R"(<C State="C00000"><A State="400000"/></C>)",
       {"C ErrorInChild", " A ErrorBK!"},
       {"C ErrorInChild", " A ErrorBK!"},
       "1"},
      {"neither own nor in a child: no picture",
       R"(<C State="800000"><A State="1000000"/><B State="400000"/></C>)",
       {"C ErrorInChild", " B ErrorBK!"},
       {"C ErrorInChild", " A ", " B ErrorBK!"},
       "1"},
  };
  for (const bool diagnostic : {false, true}) {
    if (diagnostic) GivenDiagnosticMode();
    for (const auto& test : cases) {
      Show(test.context);
      EXPECT_EQ(Nodes(), diagnostic ? test.diagnostic : test.normal) << test.what;
      EXPECT_EQ(form_->error_count.caption(), test.errors) << test.what;
      EXPECT_EQ(form_->bookmark_information.visible(), diagnostic);
      EXPECT_EQ(form_->tvw.width, diagnostic ? std::nullopt : std::optional(9888));
    }
  }
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
}

TEST_F(FrmBatch, NamesTheAccountAndTheAddress) {
  fakes_.utilities.descriptions[{"REFDOCTYP", "C"}] = "Citation";
  struct Case {
    const char* fields;
    const char* account;
  };
  const Case cases[] = {
      {"<T><FORM_NBR>12</FORM_NBR></T><FORM_NBR>99</FORM_NBR><FORM_TYP_CD>C</FORM_TYP_CD>", "12 Citation"},
      {"<FORM_NBR>12</FORM_NBR>", "12"},
      {"<FORM_TYP_CD>C</FORM_TYP_CD>", " Citation"},
      {"<FORM_NBR>12</FORM_NBR><FORM_TYP_CD>?</FORM_TYP_CD>", "12 "},
      {"", ""},
  };
  for (const auto& [fields, account] : cases) {
    Show(std::string(R"(<C State="C00000" V_ExplainAddr="Smith &amp; Co: none.">)") + fields + "</C>");
    EXPECT_EQ(form_->account.caption(), account);
    EXPECT_EQ(form_->address_status.caption(), "Smith && Co: none.");
  }
}

// A refused letter showed red names only: nobody was told that there is no letter, or what to mend.
TEST_F(FrmBatch, SaysInWordsWhatIsWrong) {
  constexpr const char* kTwoErrors =
      R"(<C State="800000"><A State="400000" V_EnglishDesc="Account" V_ExplainErr="Needed &amp; empty."/>)"
      R"(<B State="400000"/></C>)";
  Show(kTwoErrors);
  EXPECT_EQ(form_->verdict.caption(), "2 fields of the letter are in error.");
  EXPECT_EQ(form_->problems.caption(), "Account: Needed && empty.\nB: The value is in error.");

  form_ = std::make_unique<frmBatch>(fakes_.services());
  form_->ErrBookMark(
      R"(<C State="800000"><A State="400000" V_EnglishDesc="Account" V_ExplainErr="Needed."/></C>)");
  form_->is_refused = true;
  form_->Load();
  EXPECT_EQ(form_->verdict.caption(),
            "The letter was refused: 1 field is in error. Have the data put right, then create it again.");
  EXPECT_EQ(form_->problems.caption(), "Account: Needed.");
}

TEST_F(FrmBatch, ReportsWhenThereIsNothingToShow) {
  Show(R"(<C V_ExplainAddr="Good."><FORM_NBR>12</FORM_NBR></C>)");
  EXPECT_THAT(Nodes(), IsEmpty());
  EXPECT_THAT(Captions(frmBatch::kHeader), Each(""));
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("frmBatch.Form_Load"));
  EXPECT_EQ(fakes_.host.pointer, platform::MousePointer::kNormal);
}

TEST_F(FrmBatch, ReportsATextThatIsNoXmlWithItsStart) {
  std::string start = "<C>";
  for (int n = 0; n < 997; ++n) start += "é";
  Show(start + "and more");
  ASSERT_THAT(fakes_.errors.Procedures(), SizeIs(3));
  EXPECT_THAT(fakes_.errors.Procedures(), Each("frmBatch.Form_Load"));
  EXPECT_EQ(fakes_.errors.reports[0].description, "Message parsing error");
  EXPECT_EQ(fakes_.errors.reports[1].description, "Message; " + start);
  EXPECT_THAT(fakes_.errors.reports[2].description, HasSubstr("line 1"));
  EXPECT_THAT(Captions(frmBatch::kHeader), Each(""));
}

TEST_F(FrmBatch, KeepsWhatCameBeforeAndAfterAFieldThatCannotBeRead) {
  Show(
      R"(<C State="800000"><A State="400000"/><B State="oops"><X State="400000"/></B><D State="400000"/></C>)");
  EXPECT_THAT(Nodes(), ElementsAre("C ErrorInChild", " A ErrorBK!", " D ErrorBK!"));
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("frmBatch.AddNode"));
  EXPECT_EQ(form_->error_count.caption(), "2");
}

TEST_F(FrmBatch, SaysSoWhenTheErrorIsInAFieldThatItHides) {
  Show(R"(<C State="1000004"><S State="400004"/></C>)");
  EXPECT_THAT(Nodes(), IsEmpty());
  EXPECT_EQ(fakes_.errors.reports.at(0).description,
            "There is nothing to show: the fields in error are none that this form shows.");
}

TEST_F(FrmBatch, ExplainsTheFieldTheUserClicks) {
  GivenDiagnosticMode();
  Show(
      R"(<C State="800000"><A State="400000" V_EnglishDesc="Account" V_ExplainType="Data." RawValue="raw" )"
      R"(V_ExplainState="Empty." V_ExplainAttr="May be shown." V_ExplainErr="Needed.">one<X> &amp; two</X></A></C>)");
  UserClicks({0, 0});
  EXPECT_THAT(Captions(frmBatch::kBookmarkInformation),
              ElementsAre("A", "Data.", "one && two", "raw", "Empty.", "May be shown.", "Needed."));
  UserClicks({0});
  EXPECT_THAT(Captions(frmBatch::kBookmarkInformation), ElementsAre("C", "", "one && two", "", "", "", ""))
      << "nothing stays of the field before";
}

TEST_F(FrmBatch, TakesTheDeepestContextThatParses) {
  std::string context;
  for (int level = 1; level < 256; ++level) context += R"(<E State="800000">)";
  context += R"(<E State="400000"/>)";
  for (int level = 1; level < 256; ++level) context += "</E>";
  Show(context);
  EXPECT_EQ(Nodes().size(), 256u);
  EXPECT_EQ(form_->error_count.caption(), "1");
  EXPECT_THAT(fakes_.errors.reports, IsEmpty());
}

TEST_F(FrmBatch, CountsNoFurtherThanSixteenBitsAndSaysSoOnce) {
  std::string context = R"(<C State="800000">)";
  for (int field = 0; field < 32'770; ++field) context += R"(<E State="400000"/>)";
  Show(context + "</C>");
  EXPECT_EQ(form_->error_count.caption(), "32767");
  EXPECT_EQ(form_->tvw.count(), 32'771u);
  EXPECT_THAT(fakes_.errors.Procedures(), ElementsAre("frmBatch.AddNode"));
}

TEST_F(FrmBatch, IsClosedByOk) {
  Show(R"(<C State="400000"/>)");
  form_->cmdOk.UserClicks();
  EXPECT_FALSE(form_->shown());
}

}  // namespace
}  // namespace composition
