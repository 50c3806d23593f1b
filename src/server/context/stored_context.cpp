#include "server/context/stored_context.h"

#include <array>
#include <utility>
#include <vector>

#include <zlib.h>

#include "platform/failure.h"
#include "server/context/letter_context.h"

namespace server {
namespace {

using platform::Failure;
using platform::Money;
using platform::Value;

// The dictionary does most of the work: higher levels take longer and save a few bytes in a hundred.
constexpr int kLevel = 4;
constexpr int kWindowBits = 15;
constexpr int kMemoryLevel = 8;

Bytef* InputOf(std::string_view text) {
  // zlib reads it only; its interface is older than const.
  return const_cast<Bytef*>(reinterpret_cast<const Bytef*>(text.data()));  // NOLINT
}

Failure Damaged(std::int64_t letter) {
  return {Failure::Kind::kDamaged,
          "The stored data of letter \"" + std::to_string(letter) +
              "\" cannot be read any more. Restore the server's data from a backup."};
}

/// Nothing where the bytes are not what was packed.
std::optional<std::string> Unpack(const std::string& packed, std::size_t size,
                                  const std::string& dictionary) {
  z_stream stream{};
  if (inflateInit2(&stream, kWindowBits) != Z_OK) return std::nullopt;
  std::string context(size, '\0');
  // One byte of room always: an empty output buffer is an error of its own.
  context.push_back('\0');
  stream.next_in = InputOf(packed);
  stream.avail_in = static_cast<uInt>(packed.size());
  stream.next_out = reinterpret_cast<Bytef*>(context.data());
  stream.avail_out = static_cast<uInt>(context.size());
  auto status = inflate(&stream, Z_FINISH);
  if (status == Z_NEED_DICT &&
      inflateSetDictionary(&stream, InputOf(dictionary), static_cast<uInt>(dictionary.size())) == Z_OK) {
    status = inflate(&stream, Z_FINISH);
  }
  const bool whole = status == Z_STREAM_END && stream.total_out == size;
  inflateEnd(&stream);
  context.resize(size);
  return whole ? std::optional(std::move(context)) : std::nullopt;
}

/// A subject that no customer is: what its context holds is common to all contexts of the type.
LetterSubject SampleSubject(const std::string& letter_type) {
  using namespace std::chrono_literals;
  const Address address{
      .line_1 = "1 Main St", .line_2 = "", .city = "Hartsfield", .state = "KV", .zip = "88301"};
  const auto period = [](std::string name, std::string due) {
    return TaxPeriod{std::move(name), std::move(due), Money::FromCents(100'000), Money::FromCents(10'000),
                     Money::FromCents(1'000)};
  };
  return {.letter_type = letter_type,
          .today = 2025y / 7 / 15,
          .customer = {.id = "100001",
                       .business_name = "Oil Co.",
                       .first_name = "",
                       .last_name = "",
                       .mail = address,
                       .residential = address,
                       .phone = "5550000000",
                       .fuel_tax_account = "6200010000101",
                       .county_number = "13",
                       .county_name = "Hartsfield"},
          .customer_was_given = true,
          .form = Form{"C", "3100004", "9"},
          .periods = {period("May 2025", "2025-06-20"), period("June 2025", "2025-07-20")},
          .office = {}};
}

std::string DictionaryText(Database& database, const std::string& letter_type) {
  const auto subject = SampleSubject(letter_type);
  const AddressVerdict verdict{.use = AddressVerdict::Use::kMail, .flags = address::kMailUsed};
  return ContextXml(BuildLetterContext(subject, FindLetterFields(database, letter_type), verdict, true),
                    {.descriptors = true, .states = true});
}

}  // namespace

struct ContextPacker::Deflater {
  Deflater() {
    if (deflateInit2(&stream, kLevel, Z_DEFLATED, kWindowBits, kMemoryLevel, Z_DEFAULT_STRATEGY) != Z_OK) {
      throw Failure(Failure::Kind::kUnavailable, "There is no memory to pack a letter's data.");
    }
  }
  Deflater(const Deflater&) = delete;
  Deflater& operator=(const Deflater&) = delete;
  ~Deflater() { deflateEnd(&stream); }
  z_stream stream{};
};

ContextPacker::ContextPacker(ContextDictionary dictionary)
    : dictionary_(std::move(dictionary)), deflater_(std::make_unique<Deflater>()) {}
ContextPacker::ContextPacker(ContextPacker&&) noexcept = default;
ContextPacker::~ContextPacker() = default;

ContextPacker::Packed ContextPacker::Pack(std::string_view context) {
  auto& stream = deflater_->stream;
  deflateReset(&stream);
  const auto& text = dictionary_.text;
  if (dictionary_.number != 0) deflateSetDictionary(&stream, InputOf(text), static_cast<uInt>(text.size()));
  std::string bytes(deflateBound(&stream, context.size()), '\0');
  stream.next_in = InputOf(context);
  stream.avail_in = static_cast<uInt>(context.size());
  stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
  stream.avail_out = static_cast<uInt>(bytes.size());
  if (deflate(&stream, Z_FINISH) != Z_STREAM_END)
    throw Failure(Failure::Kind::kInternal, "A letter's data cannot be packed.");
  bytes.resize(stream.total_out);
  return {dictionary_.number, static_cast<std::int64_t>(context.size()), std::move(bytes)};
}

void StoreContextDictionaries(Database& database) {
  const auto types = database.Select("SELECT DISTINCT LTR_TYP_ID FROM letter_field ORDER BY LTR_TYP_ID");
  for (std::size_t row = 0; row < types->RecordCount(); ++row) {
    const auto type = types->Text(row, "LTR_TYP_ID");
    const auto text = DictionaryText(database, type);
    if (FindContextDictionary(database, type).text == text) continue;
    database.Change("INSERT INTO context_dictionary (LTR_TYP_ID, DICT_TXT) VALUES (?, ?)", {type, text});
  }
}

ContextDictionary FindContextDictionary(Database& database, const std::string& letter_type) {
  const auto rows = database.Select(
      "SELECT DICT_NBR, DICT_TXT FROM context_dictionary WHERE LTR_TYP_ID = ? ORDER BY DICT_NBR DESC LIMIT 1",
      {letter_type});
  if (rows->IsEmpty()) return {};
  return {rows->Get("DICT_NBR").AsInteger(), rows->Text("DICT_TXT")};
}

void StoreContext(Database& database, std::int64_t letter, const std::string& letter_type,
                  std::string_view context) {
  StoreContext(database, letter, ContextPacker(FindContextDictionary(database, letter_type)).Pack(context));
}

void StoreContext(Database& database, std::int64_t letter, const ContextPacker::Packed& packed) {
  const auto dictionary = packed.dictionary_number == 0 ? Value() : Value(packed.dictionary_number);
  database.ChangeWithBytes(
      "INSERT INTO letter_context (SEQ_NBR, DICT_NBR, CNTXT_SIZE, CNTXT) VALUES (?, ?, ?, ?)",
      {letter, dictionary, packed.size}, packed.bytes);
}

std::optional<std::string> FindContext(Database& database, std::int64_t letter) {
  const auto rows = database.Select(
      R"(SELECT CNTXT_SIZE, DICT_TXT FROM letter_context
         LEFT JOIN context_dictionary ON context_dictionary.DICT_NBR = letter_context.DICT_NBR
         WHERE SEQ_NBR = ?)",
      {letter});
  if (rows->IsEmpty()) return std::nullopt;
  const auto packed = database.SelectBytes("SELECT CNTXT FROM letter_context WHERE SEQ_NBR = ?", {letter});
  auto context =
      Unpack(packed, static_cast<std::size_t>(rows->Get("CNTXT_SIZE").AsInteger()), rows->Text("DICT_TXT"));
  if (!context) throw Damaged(letter);
  return context;
}

}  // namespace server
