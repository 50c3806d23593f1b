#include "wordprocessor/printing/pdf_pages.h"

#include <algorithm>
#include <memory>
#include <string>
#include <type_traits>

#include <qpdf/qpdf-c.h>

#include "platform/failure.h"
#include "platform/whole_file.h"

namespace wordprocessor {
namespace {

namespace fs = std::filesystem;

// Each file stays open until what its pages went into is written; a process has a thousand of them or so.
constexpr std::size_t kFilesAtOnce = 200;

/// A PDF that is read or written. (The library's C++ headers are not for every compiler of this standard.)
class Pdf {
 public:
  Pdf() : data_(qpdf_init(), [](qpdf_data data) { qpdf_cleanup(&data); }) {
    qpdf_set_suppress_warnings(data_.get(), QPDF_TRUE);
    qpdf_silence_errors(data_.get());
  }

  void Read(const fs::path& file) {
    qpdf_read(data_.get(), file.c_str(), nullptr);
    Require(file);
  }
  void Begin(const fs::path& file) {
    qpdf_empty_pdf(data_.get());
    Require(file);
  }
  int Pages(const fs::path& file) {
    const int pages = qpdf_get_num_pages(data_.get());
    Require(file);
    return pages;
  }
  void Append(const fs::path& file) {
    Pdf other;
    other.Read(file);
    const int pages = other.Pages(file);
    for (int page = 0; page < pages; ++page) {
      const auto handle = qpdf_get_page_n(other.data_.get(), static_cast<std::size_t>(page));
      qpdf_add_page(data_.get(), other.data_.get(), handle, QPDF_FALSE);
      Require(file);
    }
    read_.push_back(std::move(other));
  }
  void Write(const fs::path& file) {
    qpdf_init_write(data_.get(), file.c_str());
    qpdf_write(data_.get());
    Require(file);
  }

 private:
  void Require(const fs::path& file) const {
    if (qpdf_has_error(data_.get()) == QPDF_FALSE) return;
    const std::string reason = qpdf_get_error_full_text(data_.get(), qpdf_get_error(data_.get()));
    throw platform::Failure(
        platform::Failure::Kind::kDamaged,
        "The pages of \"" + file.string() + "\" cannot be read or written: " + reason + ".");
  }

  std::vector<Pdf> read_;  // their pages are taken when this is written
  std::unique_ptr<std::remove_pointer_t<qpdf_data>, void (*)(qpdf_data)> data_;
};

void Join(const std::vector<fs::path>& files, const fs::path& joined) {
  Pdf all;
  all.Begin(joined);
  for (const auto& file : files) all.Append(file);
  all.Write(joined);
}

}  // namespace

std::size_t CountPdfPages(const fs::path& pdf) {
  Pdf document;
  document.Read(pdf);
  return static_cast<std::size_t>(document.Pages(pdf));
}

void JoinPdfs(const std::vector<fs::path>& files, const fs::path& joined) {
  std::vector<fs::path> pieces;
  const auto piece = [&] {
    return fs::path(joined.string() + "." + std::to_string(pieces.size()) + ".part");
  };
  for (std::size_t first = 0; first < files.size(); first += kFilesAtOnce) {
    const auto end =
        files.begin() + static_cast<std::ptrdiff_t>(std::min(first + kFilesAtOnce, files.size()));
    const auto unfinished = piece();
    Join({files.begin() + static_cast<std::ptrdiff_t>(first), end}, unfinished);
    pieces.push_back(unfinished);
  }
  if (pieces.size() > 1) {
    const auto whole = piece();
    Join(pieces, whole);
    for (const auto& unfinished : pieces) fs::remove(unfinished);
    pieces = {whole};
  }
  if (!pieces.empty()) platform::MoveWholeFile(pieces.front(), joined);
}

}  // namespace wordprocessor
