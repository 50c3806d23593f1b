#include "wordprocessor/printing/printers.h"

#include "platform/agreed/saved_letter.h"
#include "platform/failure.h"
#include "platform/file_access.h"
#include "platform/text.h"
#include "platform/value.h"
#include "platform/whole_file.h"

namespace wordprocessor {
namespace {

// A file name has at most 255 bytes; date, time and number take 40 of them, a character up to four.
constexpr std::size_t kLongestLetterName = 50;

std::string NameInFolder(const std::string& letter) {
  const auto name = std::filesystem::path(platform::ReplaceAll(letter, "\\", "/")).stem().string();
  return std::string(platform::FirstCharacters(name, kLongestLetterName));
}

}  // namespace

Printers::Printers(PrinterQueues& queues, std::filesystem::path pdf_folder, const platform::Clock& clock)
    : queues_(queues), pdf_folder_(std::move(pdf_folder)), clock_(clock) {
  platform::RemoveUnfinishedFiles(pdf_folder_);
}

std::vector<platform::OfferedPrinter> Printers::Offered() const {
  std::vector<platform::OfferedPrinter> offered;
  for (auto& name : queues_.Names()) offered.push_back({std::move(name), /*takes_options=*/true});
  offered.push_back({std::string(kPdfFolder), /*takes_options=*/false});
  return offered;
}

std::string Printers::Default() const {
  const auto queue = queues_.Default();
  return queue.empty() ? std::string(kPdfFolder) : queue;
}

std::string Printers::Print(const platform::PrintChoice& choice, const std::filesystem::path& pdf,
                            const std::string& letter) {
  if (choice.printer != kPdfFolder) return queues_.Print(choice, pdf, letter);
  if (choice.copies == 1 && choice.pages.empty()) return File(pdf, letter);
  throw platform::Failure(
      platform::Failure::Kind::kRefused,
      "The PDF folder takes a letter whole, once. Choose a printer for copies, or for pages of a letter.");
}

std::string Printers::File(const std::filesystem::path& pdf, const std::string& letter) const {
  platform::MakeFolder(pdf_folder_);
  const auto content = platform::ReadWholeFile(pdf);
  const auto name = platform::TimestampText(clock_.Now()) + " " + NameInFolder(letter) + " ";
  for (int number = 1;; ++number) {
    const auto file = pdf_folder_ / (name + std::to_string(number) + platform::kPdfEnding);
    if (!std::filesystem::exists(file) && platform::WriteNewFile(file, content)) return file.string();
  }
}

}  // namespace wordprocessor
