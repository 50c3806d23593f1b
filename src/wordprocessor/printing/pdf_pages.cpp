#include "wordprocessor/printing/pdf_pages.h"

#include <exception>

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <qpdf/QPDFWriter.hh>

#include "platform/failure.h"
#include "platform/whole_file.h"

namespace wordprocessor {

std::size_t CountPdfPages(const std::filesystem::path& pdf) {
  try {
    QPDF document;
    document.setSuppressWarnings(true);
    document.processFile(pdf.c_str());
    return QPDFPageDocumentHelper(document).getAllPages().size();
  } catch (const std::exception& failure) {
    throw platform::Failure(platform::Failure::Kind::kDamaged,
                            "The pages of \"" + pdf.string() + "\" cannot be read: " + failure.what() + ".");
  }
}

void JoinPdfs(const std::vector<std::filesystem::path>& files, const std::filesystem::path& joined) {
  auto unfinished = joined;
  unfinished += ".part";
  std::filesystem::path at = joined;
  try {
    QPDF all;
    all.emptyPDF();
    QPDFPageDocumentHelper pages(all);
    for (const auto& file : files) {
      at = file;
      QPDF one;
      one.setSuppressWarnings(true);
      one.processFile(file.c_str());
      one.setImmediateCopyFrom(true);  // its file is closed behind it: there may be thousands
      for (auto& page : QPDFPageDocumentHelper(one).getAllPages()) pages.addPage(page, false);
    }
    at = joined;
    QPDFWriter(all, unfinished.c_str()).write();
  } catch (const std::exception& failure) {
    throw platform::Failure(
        platform::Failure::Kind::kDamaged,
        "The pages of \"" + at.string() + "\" cannot be put together: " + failure.what() + ".");
  }
  platform::MoveWholeFile(unfinished, joined);
}

}  // namespace wordprocessor
