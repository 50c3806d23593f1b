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
#include "wordprocessor/authoring/bookmark_spots.h"
#include "wordprocessor/authoring/read_template.h"
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

/// A page's words one after the other, without blanks: a narrow column breaks words, wide type parts their
/// letters.
class PageText {
 public:
  void Add(const std::string& word, const PlacedWord& place) {
    text_ += word;
    places_.resize(text_.size(), place);
  }

  void FindSample(std::vector<PlacedWord>& found) const {
    for (const auto word : wordprocessor::kSampleAddress) {
      for (auto at = text_.find(word); at != text_.npos; at = text_.find(word, at + 1)) {
        found.push_back(places_[at]);
        found.back().word = word;
        for (auto i = at; i < at + word.size(); ++i) {
          found.back().left = std::min(found.back().left, places_[i].left);
          found.back().top = std::min(found.back().top, places_[i].top);
          found.back().bottom = std::max(found.back().bottom, places_[i].bottom);
        }
      }
    }
  }

 private:
  std::string text_;
  std::vector<PlacedWord> places_;  // of each byte: its word's
};

std::vector<PlacedWord> SampleWordsIn(const std::filesystem::path& file) {
  static const QRegularExpression places(
      QStringLiteral("<page |<word xMin=\"([0-9.-]+)\" yMin=\"([0-9.-]+)\" xMax=\"[0-9.-]+\" "
                     "yMax=\"([0-9.-]+)\">([^<]*)<"));
  const auto text = WordPlaces(file);
  std::vector<PageText> pages;
  for (const auto& place : places.globalMatch(text)) {
    if (!place.hasCaptured(4)) {
      pages.emplace_back();
      continue;
    }
    const auto inches = [&](int number) { return place.captured(number).toDouble() / kPointsInAnInch; };
    const int page = static_cast<int>(pages.size()) - 1;
    pages.back().Add(place.captured(4).toStdString(), {"", page, inches(1), inches(2), inches(3)});
  }
  std::vector<PlacedWord> found;
  for (const auto& page : pages) page.FindSample(found);
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
    auto findings = wordprocessor::CheckAddress(SampleWordsIn(pdf));
    const wordprocessor::BookmarkSpots spots(wordprocessor::StoriesOfLetters(letter));
    for (auto& finding : findings) finding.place = spots.Of(finding.bookmark);
    return findings;
  } catch (const Failure& failure) {
    return {{TemplateFinding::Grade::kWarning, "",
             "Whether the envelope's window shows the address is not checked: " + failure.description()}};
  }
}

}  // namespace apps
