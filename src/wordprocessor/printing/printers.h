#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/parties/clock.h"
#include "wordprocessor/printing/printer_queues.h"

namespace wordprocessor {

/// Where letters can go: the print queues, and a folder that takes each letter as a PDF file. User-interface
/// thread.
class Printers {
 public:
  static constexpr std::string_view kPdfFolder = "PDF folder";

  /// `pdf_folder` is made when the first letter goes there; what a program that was killed left half written
  /// in it is removed.
  Printers(PrinterQueues& queues, std::filesystem::path pdf_folder, const platform::Clock& clock);

  /// The queues, then the PDF folder, which takes no options.
  std::vector<platform::OfferedPrinter> Offered() const;
  /// The default queue; the PDF folder where there is none.
  std::string Default() const;

  /// Returns where the letter went once spooler or file system have accepted it: "laser, job 17", or the
  /// file's path. `letter` is its template's name.
  ///
  /// Throws Failure: kUnavailable with the spooler's reason, for an unknown printer too; kPermissionDenied or
  /// kUnavailable where the folder cannot take the file, which leaves nothing behind then; kRefused for
  /// copies or pages in the folder.
  std::string Print(const platform::PrintChoice& choice, const std::filesystem::path& pdf,
                    const std::string& letter);

 private:
  std::string File(const std::filesystem::path& pdf, const std::string& letter) const;

  PrinterQueues& queues_;
  const std::filesystem::path pdf_folder_;
  const platform::Clock& clock_;
};

}  // namespace wordprocessor
