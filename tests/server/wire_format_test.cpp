#include "server/wire/wire_format.h"

#include <gmock/gmock.h>

#include "platform/failure.h"
#include "tests/server/server_world.h"

namespace {

using platform::Money;
using platform::Value;
using server::ReadReply;
using server::ReadRequest;
using testing::HasSubstr;

const std::vector<Value> kValuesOfEveryKind = {Value::Null(),
                                               "",
                                               "  blanks  ",
                                               "12:34,",
                                               "Café <&> \"'`\x01\r\n\t",
                                               "\xF0\x9F\x9B\xA2",
                                               "NULL",
                                               -1,
                                               0,
                                               INT64_MAX,
                                               Money::FromCents(-5),
                                               Money::FromCents(104'550),
                                               *platform::ParseDate("2024-02-29"),
                                               *platform::ParseTimestamp("1900-01-01 01.01.01")};

TEST(WireFormat, CarriesValuesOfEveryKindToTheLetter) {
  server::Reply reply{.message_key = "k", .error = "It, too: 5:hello,", .records = {}};
  auto& rows = reply.AddRecord("CORRHIST", {"A", "b c"});
  for (const auto& value : kValuesOfEveryKind) rows.Append({value, "x"});
  reply.AddRecord("empty", {"A"});

  const auto read = ReadReply(server::WriteReply(reply));

  EXPECT_EQ(read.error, reply.error);
  ASSERT_EQ(read.records.size(), 2u);
  EXPECT_EQ(read.records[0].rows->columns(), rows.columns());
  for (std::size_t row = 0; row < kValuesOfEveryKind.size(); ++row) {
    EXPECT_EQ(read.records[0].rows->Get(row, "A"), kValuesOfEveryKind[row]) << "value " << row;
  }
  EXPECT_EQ(read.records[0].rows->CurrentRow(), 0u);
  EXPECT_TRUE(read.records[1].rows->IsEmpty());
}

TEST(WireFormat, CarriesARequestWithItsKeysInTheirOrder) {
  const auto read =
      ReadRequest(tests::WireText({.type = 83,
                                   .keys = {{"key: LTR_TYP_ID", " 110 "}, {"key:THIN", ""}},
                                   .records = {{"XML_CONTEXT_INPUT", {{{"CUST_ID", "100001"}}}}},
                                   .inquiry = "<a>&amp;</a>",
                                   .message_key = "m-7"}));
  EXPECT_EQ(read.message_key, "m-7");
  EXPECT_EQ(read.message_type, 83);
  EXPECT_EQ(read.user_id, "DEMO01");
  EXPECT_EQ(read.inquiry_xml, "<a>&amp;</a>");
  EXPECT_THAT(read.keys, testing::ElementsAre(platform::Criterion("key: LTR_TYP_ID", " 110 "),
                                              platform::Criterion("key:THIN", "")));
  ASSERT_NE(read.Rows("xml_context_input"), nullptr);
  EXPECT_TRUE(read.Rows("XML_CONTEXT_INPUT")->Get(0, "FORM_NBR").IsNull());
}

TEST(WireFormat, RefusesEveryTruncationAndWhatFollowsTheEnd) {
  const auto text =
      tests::WireText({.type = 82, .keys = {{"key:A", "1"}}, .records = {{"CORRHIST", {{{"SEQ_NBR", 7}}}}}});
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_THROW(ReadRequest(text.substr(0, length)), platform::Failure) << length << " bytes";
  }
  EXPECT_THROW(ReadRequest(text + "0:,"), platform::Failure);
  EXPECT_THROW(ReadReply(text), platform::Failure);
}

TEST(WireFormat, RefusesGarbageWithoutTakingMemoryForIt) {
  for (const std::string garbage :
       {"", "x", "99999999999999999999:a,", "18446744073709551615:a,", "-1:,", "1:a", "1:\xFF,",
        "9:request/1,1:k,0:,0:,2:82,0:,0:,9:999999999,", "9:request/1,1:k,0:,0:,2:82,0:,0:,2:-1,0:,",
        "7:reply/1,1:k,0:,1:1,1:R,1:1,1:A,1:1,2:dx,"}) {
    EXPECT_THROW(ReadRequest(garbage), platform::Failure) << garbage;
    EXPECT_THROW(ReadReply(garbage), platform::Failure) << garbage;
  }
}

TEST(WireFormat, RefusesToSendWhatIsNotUtf8) {
  server::Reply reply{.message_key = "k", .error = "\xC3", .records = {}};
  EXPECT_THROW(server::WriteReply(reply), platform::Failure);
}

}  // namespace
