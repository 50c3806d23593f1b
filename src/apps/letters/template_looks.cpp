#include "apps/letters/template_looks.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <algorithm>
#include <array>

#include "apps/product_files.h"
#include "platform/agreed/template_versions.h"
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

/// The words of a PDF file's pages and their places, as pdftotext tells them (Debian's poppler-utils). A
/// library of PDF files linked here would cost every start of the program a quarter of its time.
QString WordPlaces(const std::filesystem::path& file) {
  QProcess pdftotext;
  pdftotext.start(QStringLiteral("pdftotext"),
                  {QStringLiteral("-bbox"), QString::fromStdString(file.string()), QStringLiteral("-")});
  if (!pdftotext.waitForFinished() || pdftotext.exitStatus() != QProcess::NormalExit ||
      pdftotext.exitCode() != 0) {
    throw Failure(Failure::Kind::kUnavailable,
                  "The pages cannot be read with \"pdftotext\". Install poppler-utils.");
  }
  return QString::fromUtf8(pdftotext.readAllStandardOutput());
}

std::vector<PlacedWord> SampleWordsIn(const std::filesystem::path& file) {
  static const QRegularExpression places(
      QStringLiteral("<page |<word xMin=\"([0-9.-]+)\" yMin=\"([0-9.-]+)\" xMax=\"[0-9.-]+\" "
                     "yMax=\"([0-9.-]+)\">([^<]*)<"));
  const auto text = WordPlaces(file);
  std::vector<PlacedWord> found;
  int page = -1;
  for (const auto& place : places.globalMatch(text)) {
    if (!place.hasCaptured(4)) {
      ++page;
      continue;
    }
    const auto word = std::ranges::find(wordprocessor::kSampleAddress, place.captured(4).toStdString());
    const auto inches = [&](int number) { return place.captured(number).toDouble() / kPointsInAnInch; };
    if (word != wordprocessor::kSampleAddress.end())
      found.push_back({*word, page, inches(1), inches(2), inches(3)});
  }
  return found;
}

}  // namespace

wordprocessor::DocxDocument LetterheadFor(const std::filesystem::path& file) {
  auto common = wordprocessor::CommonTemplateBeside(file);
  if (common.empty()) common = ProductDataFolder() / "templates" / platform::kCommonTemplate;
  return wordprocessor::DocxDocument::Open(common);
}

wordprocessor::DocxDocument WithLetterhead(wordprocessor::DocxDocument letter,
                                           const wordprocessor::DocxDocument& letterhead) {
  letter.AttachTemplate(letterhead);
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
