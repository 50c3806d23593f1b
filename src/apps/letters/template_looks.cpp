#include "apps/letters/template_looks.h"

#include <QPdfDocument>
#include <QPdfSelection>
#include <QTemporaryDir>
#include <array>

#include "apps/product_files.h"
#include "platform/failure.h"
#include "wordprocessor/authoring/address.h"
#include "wordprocessor/authoring/typefaces.h"
#include "wordprocessor/document/template_file.h"
#include "wordprocessor/layout/pool.h"

namespace apps {
namespace {

using platform::Failure;
using wordprocessor::PlacedWord;
using wordprocessor::TemplateFinding;

constexpr std::array<Listing::Column, 3> kTypefaceColumns{
    {{"name", "Typeface"}, {"laid_out_in", "Laid out in"}, {"widths", "Widths"}}};

constexpr double kPointsInAnInch = 72;

/// Adds where `word` stands on a page.
void FindWord(QPdfDocument& pdf, int page, std::string_view word, std::vector<PlacedWord>& found) {
  const auto text = pdf.getAllText(page).text();
  const auto sought = QString::fromUtf8(word.data(), static_cast<qsizetype>(word.size()));
  for (auto place = text.indexOf(sought); place >= 0; place = text.indexOf(sought, place + 1)) {
    const auto box = pdf.getSelectionAtIndex(page, static_cast<int>(place), static_cast<int>(sought.size()))
                         .boundingRectangle();
    found.push_back({word, page, box.left() / kPointsInAnInch, box.top() / kPointsInAnInch,
                     box.bottom() / kPointsInAnInch});
  }
}

std::vector<PlacedWord> SampleWordsIn(const std::filesystem::path& file) {
  QPdfDocument pdf;
  if (pdf.load(QString::fromStdString(file.string())) != QPdfDocument::Error::None)
    throw Failure(Failure::Kind::kInternal, "The pages cannot be read.");
  std::vector<PlacedWord> found;
  for (int page = 0; page < pdf.pageCount(); ++page) {
    for (const auto word : wordprocessor::kSampleAddress) FindWord(pdf, page, word, found);
  }
  return found;
}

}  // namespace

wordprocessor::DocxDocument WithLetterhead(wordprocessor::DocxDocument letter,
                                           const std::filesystem::path& file) {
  auto common = wordprocessor::CommonTemplateBeside(file);
  if (common.empty()) common = ProductDataFolder() / "templates" / wordprocessor::kCommonTemplate;
  letter.AttachTemplate(wordprocessor::DocxDocument::Open(common));
  return letter;
}

Listing TypefaceList(const wordprocessor::DocxDocument& letter) {
  Listing listing{kTypefaceColumns, {}};
  for (const auto& use : wordprocessor::TypefacesOf(letter)) {
    listing.rows.push_back({use.name, use.embedded ? "the document's own" : use.laid_out_in,
                            use.same_widths ? "the same" : "other"});
  }
  return listing;
}

std::vector<TemplateFinding> CheckPages(const wordprocessor::DocxDocument& letter) {
  const auto sample = wordprocessor::SampleLetter(letter);
  if (!sample) return {};
  const QTemporaryDir folder;
  const auto pdf = std::filesystem::path(folder.path().toStdString()) / "letter.pdf";
  try {
    wordprocessor::LayoutPool pool(wordprocessor::LayoutSettings::ForThisProgram());
    pool.Layout(letter.Source().file_name(), sample->Bytes(), pdf).get();
    return wordprocessor::CheckAddress(SampleWordsIn(pdf));
  } catch (const Failure& failure) {
    return {{TemplateFinding::Grade::kWarning, "",
             "Whether the envelope's window shows the address is not checked: " + failure.description()}};
  }
}

}  // namespace apps
