#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "platform/failure.h"
#include "platform/parties/request_message.h"
#include "platform/text.h"
#include "platform/xml/xml.h"
#include "server/requests/request_processor.h"
#include "server/setup/server_data.h"
#include "server/storage/database.h"
#include "server/storage/server_folders.h"
#include "server/wire/wire_format.h"
#include "tests/fakes/fake_rights.h"
#include "tests/fakes/fake_verifier.h"
#include "tests/fakes/manual_clock.h"
#include "tests/fakes/rows.h"
#include "tests/support/temporary_folder.h"

namespace tests {

inline constexpr auto kToday = std::chrono::year(2026) / 11 / 22;

inline server::InitOptions DemoOptions(const std::filesystem::path& data_folder) {
  return {.data_folder = data_folder,
          .product_data_folder = std::filesystem::path(ZEMLO_SOURCE_DIR) / "data",
          .customers = 30,
          .today = kToday};
}

/// Demo data are made once for the whole program and copied for each test.
inline void PrepareData(const std::filesystem::path& data_folder) {
  static const TemporaryFolder prepared;
  static const bool made = [] {
    server::CreateServerData(DemoOptions(prepared.path()));
    return true;
  }();
  static_cast<void>(made);
  std::filesystem::copy(prepared / "server", data_folder / "server",
                        std::filesystem::copy_options::recursive);
}

/// A request as a test writes it.
struct Question {
  int type = 0;
  std::vector<std::pair<std::string, std::string>> keys = {};
  std::vector<platform::KeyItem> key_items = {};  ///< those that need another system or operator
  std::vector<std::pair<std::string, std::vector<fakes::Row>>> records = {};
  std::string inquiry = {};
  std::string message_key = "m-1";
};

/// A question as the message component hands it to the server.
inline std::string WireText(const Question& question) {
  class Nowhere : public platform::MessageTransport {
    std::string BuildMessage(const platform::RequestMessage&) override { return ""; }
    void Send(const platform::RequestMessage&, std::chrono::milliseconds) override {}
  } nowhere;
  platform::RequestMessage message(nowhere, question.message_key);
  message.Application("ZEMLO_Corresp");
  message.MessageType(question.type);
  message.UserId("DEMO01");
  message.AddInquiryXml(question.inquiry);
  for (const auto& [key, value] : question.keys) message.AddKey(platform::Criterion(key, value));
  for (const auto& key : question.key_items) message.AddKey(key);
  for (const auto& [name, rows] : question.records) {
    message.AddRecord(std::make_shared<platform::RequestRecord>(fakes::RowsOf(name, rows)), name);
  }
  return server::WriteRequest(message);
}

/// The record of that name in a reply; null where there is none.
inline const platform::RecordSet* Record(const server::Reply& reply, std::string_view name) {
  for (const auto& record : reply.records) {
    if (platform::EqualsIgnoringCase(record.name, name)) return record.rows.get();
  }
  return nullptr;
}

/// A server of its own on demo data of its own, asked without threads.
class ServerTest : public testing::Test {
 protected:
  ServerTest() {
    PrepareData(folder_.path());
    clock_.SetToday(kToday);
  }

  server::Reply Ask(const Question& question) {
    return server::ReadReply(processor_.Answer(WireText(question)));
  }

  static Question ContextOf(const std::string& letter_type, fakes::Row input) {
    return {.type = 83,
            .keys = {{"key: LTR_TYP_ID", letter_type},
                     {"key: POPULATE_LTR_BOOKMARKS", "Y"},
                     {"key: EmitFieldDescriptors", "Y"},
                     {"key: ExplainState", "Y"}},
            .records = {{"XML_CONTEXT_INPUT", {std::move(input)}}}};
  }

  static Question PrintedLetter(const std::string& message_key, fakes::Row changes = {}) {
    fakes::Row letter = {{"ACTION", "ADD"},
                         {"PRNT_STTS_CD", "F"},
                         {"LST_PRNT_TS", "1900-01-01 01.01.01"},
                         {"SYS_RFRNC_CD", "O"},
                         {"LTR_TYP_ID", "101"},
                         {"CUST_ID", "100001"},
                         {"DCMT_FILE_TXT", "REG101_2401.docx"},
                         {"QZ_CNTY_NBR", "13"},
                         {"LST_PRCS_TS", "2026-11-22 08.59.00"},
                         {"ADDR_TYP_CD", 1},
                         {"XML_CONTEXT", "<XML_CONTEXT><CUST_ID>100001</CUST_ID></XML_CONTEXT>"}};
    for (auto& [column, value] : changes) {
      const auto same = [&](const auto& cell) { return cell.first == column; };
      std::erase_if(letter, same);
      letter.emplace_back(column, value);
    }
    return {.type = 82, .records = {{"CORRHIST", {letter}}}, .message_key = message_key};
  }

  static Question Reprint(const std::string& message_key, const std::string& letter) {
    return {.type = 82,
            .records = {{"CORRHIST",
                         {{{"ACTION", "UPD"},
                           {"SEQ_NBR", letter},
                           {"PRNT_STTS_CD", "F"},
                           {"LST_PRNT_TS", "1900-01-01 01.01.01"}}}}},
            .message_key = message_key};
  }

  static Question Fetch(const std::string& letter) {
    return {.type = 83, .keys = {{"key:FetchContext", letter}}};
  }

  std::int64_t LettersRecorded() const {
    server::Database database(server::DatabaseFile(folder_.path()), server::Database::Opening::kExisting);
    return database.Select("SELECT COUNT(*) FROM letter_history")->Get(0, "COUNT(*)").AsInteger();
  }

  TemporaryFolder folder_;
  fakes::ManualClock clock_;
  fakes::FakeRights rights_;
  fakes::FakeVerifier verifier_;
  const server::ServerParties parties_{clock_, rights_, verifier_};
  server::RequestProcessor processor_{folder_.path(), parties_};
};

}  // namespace tests
