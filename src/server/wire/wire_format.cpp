#include "server/wire/wire_format.h"

#include <charconv>
#include <optional>
#include <utility>
#include <variant>

#include "platform/failure.h"
#include "platform/text.h"
#include "server/wire/wire_text.h"

namespace server {
namespace {

using platform::Date;
using platform::Failure;
using platform::Money;
using platform::RecordSet;
using platform::Timestamp;
using platform::Value;

constexpr std::string_view kRequestMark = "request/1";
constexpr std::string_view kReplyMark = "reply/1";

// A cell is one letter for its kind, and its text. Written into the same string over and over: replies have
// hundreds of thousands of cells.
class CellText {
 public:
  std::string_view Of(const Value& value) {
    std::visit(*this, value.held());
    return text_;
  }
  void operator()(std::monostate) { text_ = "0"; }
  void operator()(const std::string& text) { Put('t', text); }
  void operator()(std::int64_t number) { Put('i', std::to_string(number)); }
  void operator()(Money amount) { Put('m', amount.AsText()); }
  void operator()(Date date) { Put('d', platform::DateText(date)); }
  void operator()(Timestamp time) { Put('s', platform::TimestampText(time)); }

 private:
  void Put(char kind, std::string_view text) {
    text_ = kind;
    text_ += text;
  }
  std::string text_;
};

template <typename Parsed>
Value Whole(const std::optional<Parsed>& parsed, std::string_view cell) {
  if (parsed) return *parsed;
  throw Failure(Failure::Kind::kDamaged,
                "The message cannot be read: \"" + std::string(cell) + "\" is no value.");
}

std::optional<std::int64_t> ParseInteger(std::string_view text) {
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

Value ReadCell(std::string_view cell) {
  const auto text = cell.substr(cell.empty() ? 0 : 1);
  switch (cell.empty() ? ' ' : cell.front()) {
    case '0':
      return {};
    case 't':
      return text;
    case 'i':
      return Whole(ParseInteger(text), cell);
    case 'm':
      return Whole(Money::Parse(text), cell);
    case 'd':
      return Whole(platform::ParseDate(text), cell);
    case 's':
      return Whole(platform::ParseTimestamp(text), cell);
    default:
      return Whole(std::optional<Date>(), cell);
  }
}

void WriteRows(WireWriter& writer, std::string_view name, const RecordSet& rows) {
  writer.Text(name);
  writer.Number(static_cast<std::int64_t>(rows.columns().size()));
  for (const auto& column : rows.columns()) writer.Text(column);
  writer.Number(static_cast<std::int64_t>(rows.RecordCount()));
  CellText text;
  for (std::size_t row = 0; row < rows.RecordCount(); ++row) {
    for (const auto& cell : rows.Cells(row)) writer.Text(text.Of(cell));
  }
}

NamedRows ReadRows(WireReader& reader) {
  NamedRows read{std::string(reader.Text()), nullptr};
  std::vector<std::string> columns(reader.Count());
  for (auto& column : columns) column = reader.Text();
  read.rows = std::make_shared<RecordSet>(columns);
  RecordSet::Edit edit(*read.rows);
  const auto count = reader.Count();
  for (std::size_t row = 0; row < count; ++row) {
    std::vector<Value> cells(columns.size());
    for (auto& cell : cells) cell = ReadCell(reader.Text());
    read.rows->Append(std::move(cells));
  }
  read.rows->MoveFirst();
  return read;
}

void Expect(WireReader& reader, std::string_view mark) {
  if (reader.Text() == mark) return;
  throw Failure(Failure::Kind::kDamaged, "The message cannot be read: it is no " + std::string(mark) + ".");
}

std::vector<NamedRows> ReadRecords(WireReader& reader) {
  std::vector<NamedRows> records(reader.Count());
  for (auto& record : records) record = ReadRows(reader);
  return records;
}

}  // namespace

const RecordSet* Request::Rows(std::string_view record_name) const {
  for (const auto& record : records) {
    if (platform::EqualsIgnoringCase(record.name, record_name)) return record.rows.get();
  }
  return nullptr;
}

RecordSet& Reply::AddRecord(std::string name, std::vector<std::string> columns) {
  records.push_back({std::move(name), std::make_shared<RecordSet>(std::move(columns))});
  return *records.back().rows;
}

std::string WriteRequest(const platform::RequestMessage& message) {
  WireWriter writer;
  for (const std::string_view text :
       {kRequestMark, std::string_view(message.MessageKey()), std::string_view(message.application()),
        std::string_view(message.version())}) {
    writer.Text(text);
  }
  writer.Number(message.message_type());
  writer.Text(message.user_id());
  writer.Text(message.inquiry_xml());
  writer.Number(static_cast<std::int64_t>(message.keys().size()));
  for (const auto& key : message.keys()) {
    for (const auto* text : {&key.System, &key.Key, &key.Operator, &key.Value}) writer.Text(*text);
  }
  writer.Number(static_cast<std::int64_t>(message.records().size()));
  for (const auto& [name, record] : message.records()) {
    if (!record || !record->Recordset()) {
      throw Failure(Failure::Kind::kRefused,
                    "The record \"" + name + "\" was not opened and cannot be sent.");
    }
    WriteRows(writer, name, *record->Recordset());
  }
  return std::move(writer).Take();
}

Request ReadRequest(std::string_view text) {
  WireReader reader(text);
  Expect(reader, kRequestMark);
  Request request;
  for (auto* field : {&request.message_key, &request.application, &request.version}) *field = reader.Text();
  request.message_type = static_cast<int>(reader.Number());
  request.user_id = reader.Text();
  request.inquiry_xml = reader.Text();
  request.keys.resize(reader.Count());
  for (auto& key : request.keys) {
    for (auto* field : {&key.System, &key.Key, &key.Operator, &key.Value}) *field = reader.Text();
  }
  request.records = ReadRecords(reader);
  reader.End();
  return request;
}

std::string WriteReply(const Reply& reply) {
  WireWriter writer;
  for (const std::string_view text :
       {kReplyMark, std::string_view(reply.message_key), std::string_view(reply.error)}) {
    writer.Text(text);
  }
  writer.Number(static_cast<std::int64_t>(reply.records.size()));
  for (const auto& record : reply.records) WriteRows(writer, record.name, *record.rows);
  return std::move(writer).Take();
}

Reply ReadReply(std::string_view text) {
  WireReader reader(text);
  Expect(reader, kReplyMark);
  Reply reply;
  reply.message_key = reader.Text();
  reply.error = reader.Text();
  reply.records = ReadRecords(reader);
  reader.End();
  return reply;
}

}  // namespace server
