#include "wordprocessor/office/session.h"

#include <array>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include <LibreOfficeKit/LibreOfficeKit.hxx>

#include "wordprocessor/office/percent_escape.h"

namespace wordprocessor {
namespace {

constexpr auto kProgramFolders = std::to_array<const char*>({
    "/usr/lib/libreoffice/program",
    "/usr/lib64/libreoffice/program",
    "/opt/libreoffice/program",
});

// No questions asked of a user who is not there; numbers and dates as the office's own settings say.
constexpr const char* kLoadOptions = "Batch=true,Language=en-US";

// Tags say to a reader who does not see the pages what is a heading, a table, its head, and what a picture
// shows. They cost a millisecond or two a letter. Decision [tagged-pdf].
constexpr const char* kPdfOptions = R"({"UseTaggedPDF":{"type":"boolean","value":"true"}})";

// As RFC 3986, 3.3, asks: everything but unreserved characters and "/" is escaped.
std::string FileUrl(const std::filesystem::path& file) {
  static constexpr std::string_view kPlain = "/-._~";
  std::string url = "file://";
  for (const char c : file.native()) {
    const bool letter_or_digit = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    if (letter_or_digit || kPlain.find(c) != std::string_view::npos) {
      url += c;
    } else {
      AppendEscaped(url, c);
    }
  }
  return url;
}

// The office reads a hundred formats and takes whatever has none for a plain text; letters come in one.
bool IsPackage(const std::filesystem::path& file) {
  std::array<char, 4> start = {};
  std::ifstream(file, std::ios::binary).read(start.data(), start.size());
  return std::string_view(start.data(), start.size()) == "PK\3\4";
}

bool HasContent(const std::filesystem::path& file) {
  std::error_code error;
  const auto size = std::filesystem::file_size(file, error);
  return !error && size > 0;
}

}  // namespace

std::filesystem::path OfficeSession::FindProgramFolder() {
  if (const char* named = std::getenv("ZEMLO_OFFICE_FOLDER"); named != nullptr && *named != '\0')
    return named;
  for (const auto* folder : kProgramFolders) {
    if (std::filesystem::exists(folder)) return folder;
  }
  throw std::runtime_error(
      "LibreOffice is not installed in any of the usual places. Install the package "
      "libreoffice-writer-nogui, or set ZEMLO_OFFICE_FOLDER to the \"program\" folder of an office.");
}

OfficeSession::OfficeSession(const std::filesystem::path& program_folder,
                             const std::filesystem::path& profile)
    : foreign_typefaces_(profile / "user/temp/embeddedfonts/fromdocs"),
      office_(lok::lok_cpp_init(program_folder.c_str(), FileUrl(profile).c_str())) {
  if (office_ == nullptr) {
    throw std::runtime_error("LibreOffice in \"" + program_folder.string() +
                             "\" does not start. Install the package libreoffice-writer-nogui again, or set "
                             "ZEMLO_OFFICE_FOLDER to the \"program\" folder of another office.");
  }
}

// The process ends without taking the office down: that takes longer and has nothing to save.
OfficeSession::~OfficeSession() {
  static_cast<void>(office_.release());
}

std::string OfficeSession::LastError() {
  char* text = office_->getError();
  if (text == nullptr) return "no reason given";
  std::string reason = *text == '\0' ? "no reason given" : text;
  office_->freeError(text);
  return reason;
}

// The office (LibreOffice 7.4, vcl/source/gdi/embeddedfontshelper.cxx) unpacks them there and never forgets
// them.
bool OfficeSession::HasForeignTypefaces() const {
  std::error_code error;
  const bool none = std::filesystem::is_empty(foreign_typefaces_, error);
  return !error && !none;
}

void OfficeSession::Layout(const std::filesystem::path& document, const std::filesystem::path& pdf) {
  if (!IsPackage(document)) throw std::runtime_error("it is no package of a document");
  const std::unique_ptr<lok::Document> loaded(office_->documentLoad(FileUrl(document).c_str(), kLoadOptions));
  if (loaded == nullptr) throw std::runtime_error("it cannot read the document");
  if (loaded->getDocumentType() != LOK_DOCTYPE_TEXT) throw std::runtime_error("it is no text document");
  if (loaded->saveAs(FileUrl(pdf).c_str(), "pdf", kPdfOptions) && HasContent(pdf)) return;
  const auto reason = LastError();
  std::error_code ignored;
  std::filesystem::remove(pdf, ignored);
  throw std::runtime_error("it cannot write the pages (" + reason + ")");
}

}  // namespace wordprocessor
