#include "postal/program_verifier.h"

#include <array>
#include <utility>

#include <QJsonDocument>
#include <QJsonObject>

#include "platform/failure.h"
#include "platform/text.h"
#include "postal/program_process.h"
#include "postal/standard_address.h"

namespace postal {
namespace {

using platform::AddressVerdict;
using platform::Failure;
using platform::PostalAddress;

struct AddressKey {
  const char* name;
  std::string PostalAddress::*part;
};

constexpr auto kAddressKeys = std::to_array<AddressKey>({
    {"line1", &PostalAddress::line1},
    {"line2", &PostalAddress::line2},
    {"city", &PostalAddress::city},
    {"state", &PostalAddress::state},
    {"zip", &PostalAddress::zip},
    {"county_code", &PostalAddress::county_code},
    {"county", &PostalAddress::county},
});

struct VerdictWord {
  const char* word;
  AddressVerdict::Kind kind;
};
constexpr auto kVerdicts = std::to_array<VerdictWord>({
    {"passed", AddressVerdict::Kind::kPassed},
    {"suggested", AddressVerdict::Kind::kSuggested},
    {"unknown", AddressVerdict::Kind::kUnknown},
});

std::string QuestionOf(const PostalAddress& address, std::int64_t id) {
  QJsonObject question{{"id", static_cast<qint64>(id)}};
  for (const auto& [name, part] : kAddressKeys)
    question.insert(QLatin1String(name), QString::fromStdString(address.*part));
  return QJsonDocument(question).toJson(QJsonDocument::Compact).toStdString();
}

/// Reads an answer; throws Failure that ends with what is wrong with it.
class Answer {
 public:
  Answer(const std::filesystem::path& program, const std::string& line)
      : program_(program),
        line_(line),
        object_(QJsonDocument::fromJson(QByteArray::fromStdString(line)).object()) {}

  AddressVerdict Read(std::int64_t id) const {
    if (object_.isEmpty()) Refuse("is no JSON object");
    if (!object_.value(QLatin1String("id")).isDouble() ||
        object_.value(QLatin1String("id")).toInteger() != static_cast<qint64>(id))
      Refuse("is not about the address that was asked for (\"id\" is not " + std::to_string(id) + ")");
    AddressVerdict verdict{VerdictKind(), {}};
    if (verdict.kind == AddressVerdict::Kind::kUnknown) return verdict;
    for (const auto& [name, part] : kAddressKeys) verdict.address.*part = Text(name);
    CheckAddress(verdict.address);
    return verdict;
  }

 private:
  [[noreturn]] void Refuse(const std::string& what) const {
    constexpr std::size_t kShown = 200;
    throw Failure(Failure::Kind::kUnavailable,
                  "The answer of the program " + platform::Quoted(program_.string()) +
                      " that verifies addresses " + what + ": " +
                      (platform::IsValidUtf8(line_) ? std::string(platform::FirstCharacters(line_, kShown))
                                                    : "it is not written in UTF-8") +
                      "\nNothing was stored. Correct the program, and try again.");
  }

  AddressVerdict::Kind VerdictKind() const {
    const auto word = Text("verdict");
    for (const auto& verdict : kVerdicts) {
      if (word == verdict.word) return verdict.kind;
    }
    Refuse("has no \"verdict\" \"passed\", \"suggested\" or \"unknown\"");
  }

  /// "" for a key that is missing.
  std::string Text(const char* name) const {
    const auto value = object_.value(QLatin1String(name));
    if (value.isUndefined()) return "";
    if (!value.isString()) Refuse("has a \"" + std::string(name) + "\" that is no text");
    auto text = value.toString().toStdString();
    for (const char character : text) {
      if (static_cast<unsigned char>(character) < ' ')
        Refuse("has control characters in \"" + std::string(name) + "\"");
    }
    return text;
  }

  void CheckAddress(PostalAddress& address) const {
    for (const auto* name : {"line1", "city", "state", "zip"}) {
      if (platform::IsBlank(Text(name))) Refuse("has no \"" + std::string(name) + "\"");
    }
    const auto zip = ReadAddress(address);
    if (!zip.is_zip_whole || zip.zip.empty()) Refuse("has a \"zip\" that is neither five nor nine digits");
    address.zip = zip.zip + zip.plus_four;
  }

  const std::filesystem::path& program_;
  const std::string& line_;
  const QJsonObject object_;
};

}  // namespace

ProgramVerifier::ProgramVerifier(std::filesystem::path program, std::chrono::milliseconds time_out)
    : program_(std::move(program)), time_out_(time_out) {}

ProgramVerifier::~ProgramVerifier() = default;

AddressVerdict ProgramVerifier::Judge(const PostalAddress& address, const std::stop_token& ending) {
  const auto id = ++last_id_;
  const auto line = Ask(QuestionOf(address, id), ending);
  try {
    auto verdict = Answer(program_, line).Read(id);
    if (verdict.kind != AddressVerdict::Kind::kPassed) return verdict;
    verdict.address = Standardised(verdict.address);
    if (!IsSameButForForm(address, verdict.address)) verdict.kind = AddressVerdict::Kind::kSuggested;
    return verdict;
  } catch (const Failure&) {
    process_.reset();  // what else it has to say is no better
    throw;
  }
}

bool ProgramVerifier::IsSamePlace(const PostalAddress& one, const PostalAddress& other) const {
  return postal::IsSamePlace(one, other);
}

std::string ProgramVerifier::Ask(const std::string& question, const std::stop_token& ending) {
  const auto deadline = std::chrono::steady_clock::now() + time_out_;
  if (process_ && process_->HasSpokenUnasked()) process_.reset();
  if (!process_) process_ = std::make_unique<ProgramProcess>(program_);
  try {
    return process_->Ask(question, deadline, ending);
  } catch (const Failure&) {
    process_.reset();
    throw;
  }
}

}  // namespace postal
