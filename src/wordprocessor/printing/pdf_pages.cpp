#include "wordprocessor/printing/pdf_pages.h"

#include <exception>

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

#include "platform/failure.h"

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

}  // namespace wordprocessor
