#include "server/setup/server_data.h"

#include <algorithm>
#include <thread>

#include "server/link/customer_directory.h"
#include "server/storage/database.h"
#include "tests/server/server_world.h"
#include "tests/support/failing.h"

namespace {

using testing::HasSubstr;
using tests::DemoOptions;
using tests::ReadFile;

class ServerData : public testing::Test {
 protected:
  /// Everything in the database's tables, as text.
  static std::string Contents(const std::filesystem::path& data_folder) {
    server::Database database(server::DatabaseFile(data_folder), server::Database::Opening::kExisting);
    std::string text;
    for (const auto* table : {"customer", "form", "tax_period", "letter_field", "county", "office"}) {
      const auto rows = database.Select(std::string("SELECT * FROM ") + table);
      for (std::size_t row = 0; row < rows->RecordCount(); ++row) {
        for (const auto& column : rows->columns()) text += rows->Text(row, column) + "|";
      }
    }
    return text;
  }

  /// The product's data in a folder of their own, to be spoilt.
  server::InitOptions OwnProduct() {
    std::filesystem::copy(std::filesystem::path(ZEMLO_SOURCE_DIR) / "data", folder_ / "product",
                          std::filesystem::copy_options::recursive);
    auto options = DemoOptions(folder_ / "data");
    options.product_data_folder = folder_ / "product";
    options.customers = 2;
    return options;
  }
  static std::string WhyNot(const server::InitOptions& options) {
    return tests::WhyNot([&] { server::CreateServerData(options); });
  }

  tests::TemporaryFolder folder_;
};

TEST_F(ServerData, AreTheSameEveryTimeAndStayWhenMadeAgain) {
  server::CreateServerData(DemoOptions(folder_ / "a"));
  server::CreateServerData(DemoOptions(folder_ / "b"));
  const auto contents = Contents(folder_ / "a");
  EXPECT_EQ(contents, Contents(folder_ / "b"));
  auto other = DemoOptions(folder_ / "a");
  other.customers = 3;
  server::CreateServerData(other);
  EXPECT_EQ(Contents(folder_ / "a"), contents);
  EXPECT_TRUE(std::filesystem::exists(folder_ / "a/server/templates/kvcorr.dot"));
}

TEST_F(ServerData, TwoProgramsMayMakeThemAtOnce) {
  std::thread other([&] { server::CreateServerData(DemoOptions(folder_.path())); });
  server::CreateServerData(DemoOptions(folder_.path()));
  other.join();
  EXPECT_THAT(Contents(folder_.path()), HasSubstr("Hattie"));
}

TEST_F(ServerData, TakeNewLetterDefinitionsAndMissingTemplatesFromANewerProduct) {
  const auto options = OwnProduct();
  server::CreateServerData(options);
  const auto definitions = folder_ / "product/server/letter_fields.tsv";
  tests::WriteFile(definitions, ReadFile(definitions) + "115\tLTR_DT\t\tDate\tSYSTEM\tletter.date\tY\t\t\n");
  std::filesystem::remove(folder_ / "data/server/templates/kvcorr.dot");
  server::CreateServerData(options);
  EXPECT_THAT(Contents(folder_ / "data"), HasSubstr("115|"));
  EXPECT_TRUE(std::filesystem::exists(folder_ / "data/server/templates/kvcorr.dot"));
}

TEST_F(ServerData, TakeInStatesAndTheCountiesOfZipCodesThatOlderDataLack) {
  const auto options = OwnProduct();
  server::CreateServerData(options);
  const auto contents = Contents(folder_ / "data");
  {
    server::Database database(server::DatabaseFile(folder_ / "data"), server::Database::Opening::kExisting);
    for (const auto* change :
         {"DELETE FROM state", "UPDATE county SET ZIP_PRFX = ''", "UPDATE customer SET MAIL_CNTY_CD = NULL"})
      database.Change(change);
  }
  server::CreateServerData(options);
  EXPECT_EQ(Contents(folder_ / "data"), contents);
  server::Database database(server::DatabaseFile(folder_ / "data"), server::Database::Opening::kExisting);
  EXPECT_EQ(
      database.Select("SELECT COUNT(*) AS NUMBER_OF FROM state WHERE ST_CD IN ('KV', 'ZZ')")->FirstText(),
      "1");
}

TEST_F(ServerData, AWrongLetterDefinitionStopsTheMakingAndNamesItsPlace) {
  const auto options = OwnProduct();
  const auto definitions = folder_ / "product/server/letter_fields.tsv";
  const auto good = ReadFile(definitions);
  const auto end = std::to_string(std::ranges::count(good, '\n') + 1);
  // Appended, as fields of a letter that has none yet.
  const std::vector<std::pair<std::string, std::string>> wrong = {
      {"115\tA\t\tA\tDATA\tcustomer.shoe_size\tN\t\t\n", "\"customer.shoe_size\". There is customer.name, "},
      {"115\tA\t\tA\tPICTURE\t\tN\t\t\n", "column FLD_KIND"},
      {"115\tA\t\tA\tTABLE\tcustomer.name\tN\t\t\n", "column FLD_SRC"},
      {"115\tA\tB\tA\tCOLUMN\tperiod.tax\tN\t\t\n", "column FLD_PARENT"},
      {"115\tA B\t\tA\tUSER\t\tN\t\t\n", "column FLD_NM"},
      {"115\tA\t\tA\tPARAGRAPH\t\tN\t\t\n", "\"A\" has to begin with PARA_"},
      {"115\tA\t\tA\tUSER\t\tN\t\t\n", "\"A\" has to begin with U_"},
      {"115\tU_A\t\tA\tLOCAL\t7\tN\t\t\n", "\"U_A\" begins with U_"},
      {"115\tA\t\tA\tDATA\tcustomer.address\tN\t\tIN_STATE OUT_OF_STATE\n",
       "The rules IN_STATE and OUT_OF_STATE exclude each other."},
      {"115\tA\t\tA\tDATA\tcustomer.address\tN\t\tPREFER_MAIL\n"
       "115\tB\t\tB\tDATA\tcustomer.address\tN\t\tPREFER_RESIDENTIAL\n",
       "PREFER_MAIL and PREFER_RESIDENTIAL exclude"},
      {"115\tA\t\tA\tQUERY\tSELECT 1\tN\t\tAMOUNT DAY\n", "AMOUNT and DAY exclude"},
      {"115\tA\t\tA\tLOCAL\t7\tN\t\tREF_OPTIONAL\n", "column FLD_RULE"},
      {"115\tA\t\tA\tUSER\t\tN\t\t\n115\tA\t\tA\tUSER\t\tN\t\t\n", "in line " + end + " already"},
      {"115\tA\t\tA\tUSER\n", "There are 5 cells for 9 columns"},
      {"115\tA\t\tA\tDATA\tcustomer.name\tN\t\tSHINY\n", "column FLD_RULE"},
      {"115\tA\t\tA\tDATA\tcustomer.name\tN\t\tNO_PO_BOX\n", "column FLD_RULE"},
      {"115\tA\t\tA\tUSER\t\tN\t\tONE_OF:WHY\n", "column FLD_RULE"},
      {"115\tPARA_A\t\tA\tPARAGRAPH\t\tN\t\tONE_OF:\n", "column FLD_RULE"},
      {"115\tPARA_A\t\tA\tPARAGRAPH\t\tN\t\tONE_OF:A ONE_OF:B\n", "column FLD_RULE"},
      {"115\tA\t\tA\tDATA\tcustomer.name\tX\t\t\n", "column FLD_REQ"},
      {"115\tA\t\tA\tQUERY\tDELETE FROM customer\tN\t\t\n", "A QUERY is one SELECT"},
      {"115\tA\t\tA\tQUERY\tSELECT :shoe_size\tN\t\t\n", "\":shoe_size\" stands for nothing"},
      {"115\tA\t\tA\tQUERY\tSELECT SHOE_SIZE FROM customer WHERE CUST_ID = :customer\tN\t\t\n",
       "The query of the field \"A\" of letter type \"115\" fails: no such column: SHOE_SIZE."},
      {"115\tA\t\tA\tQUERY\tSELECT \"SHOE_SIZE\" FROM customer\tN\t\t\n", "fails: no such column: "},
      {"115\tA\t\tA\tQUERY\tWITH gone AS (SELECT 1) DELETE FROM customer\tN\t\t\n",
       "fails: it does more than read"},
      {"115\tA\t\tA\tLOCAL\t7\tN\t\t\n115\tB\t\tB\tFUNCTION\tadd(A, B)\tN\t\t\n",
       "There is no field \"B\" above this one"},
      {"115\tA\t\tA\tUSER\t\tN\t\t\n115\tB\t\tB\tFUNCTION\tadd(A, A)\tN\t\t\n", "\"A\" has no value"},
      {"115\tA\t\tA\tFUNCTION\tadd(A)\tN\t\t\n", "A FUNCTION is add(A, B)"},
      {"777\tA\t\tA\tUSER\t\tN\t\t\n", "There is no letter type \"777\" in letters.tsv"}};
  for (const auto& [rows, words] : wrong) {
    tests::WriteFile(definitions, good + rows);
    EXPECT_THAT(WhyNot(options), testing::AllOf(HasSubstr(words), HasSubstr("letter_fields.tsv\", line ")))
        << rows;
    EXPECT_FALSE(std::filesystem::exists(server::DatabaseFile(folder_ / "data"))) << rows;
  }
}

TEST_F(ServerData, ALetterThatIsMadeHereNeedsFields) {
  const auto options = OwnProduct();
  const auto letters = folder_ / "product/reference/letters.tsv";
  tests::WriteFile(letters, ReadFile(letters) + "K1\t777\tLeaflet\tE\nK1\t778\tNotice\tS\n");
  EXPECT_THAT(WhyNot(options), testing::AllOf(HasSubstr("letters.tsv\", line 24, column LTR_TYP_ID"),
                                              HasSubstr("The letter type \"778\" has no fields"),
                                              testing::Not(HasSubstr("777"))));
}

// Data that are in use have customers, and may be of an older program.
TEST_F(ServerData, AreLeftAsTheyAreWhereTheDefinitionsAreWrong) {
  const auto options = OwnProduct();
  server::CreateServerData(options);
  const auto before = Contents(folder_ / "data");
  const auto definitions = folder_ / "product/server/letter_fields.tsv";
  tests::WriteFile(definitions, ReadFile(definitions) +
                                    "115\tA\t\tA\tLOCAL\t7\tN\t\t\n115\tB\t\tB\tQUERY\tSELECT x\tN\t\t\n");
  platform::TableFaults faults;
  server::CheckLetterDefinitions(options, faults);
  EXPECT_EQ(faults.Count(), 1u);
  EXPECT_THAT(WhyNot(options), HasSubstr("no such column: x"));
  EXPECT_EQ(Contents(folder_ / "data"), before);
}

TEST_F(ServerData, AFolderThatCannotBeMadeIsNamed) {
  tests::WriteFile(folder_ / "file", "");
  EXPECT_THAT(WhyNot(DemoOptions(folder_ / "file")), HasSubstr((folder_ / "file").string()));
}

TEST(CustomerDirectory, ListsWhatAPanelShows) {
  const tests::TemporaryFolder folder;
  tests::PrepareData(folder.path());
  server::CustomerDirectory directory(folder.path());
  EXPECT_EQ(directory.Find("", 7).size(), 7u);
  const auto listing = directory.Find("100007", 1).at(0);
  EXPECT_EQ(listing.CUSTNAME, "Milo Fenwright");
  EXPECT_EQ(listing.MailAddress, "");
  EXPECT_EQ(listing.MailAddress2, "Suite 4");
  EXPECT_EQ(listing.ResAddress, "12 Main St");
  EXPECT_EQ(listing.City(), "Larkspur");
  EXPECT_EQ(listing.FuelTax, "6200010000701");
}

TEST(CustomerDirectory, WithoutDataRefuses) {
  const tests::TemporaryFolder folder;
  EXPECT_THROW(server::CustomerDirectory(folder.path()), platform::Failure);
}

}  // namespace
