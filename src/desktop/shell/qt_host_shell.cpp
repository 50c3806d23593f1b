#include "desktop/shell/qt_host_shell.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QStandardPaths>
#include <QTimer>

#include "desktop/look/qt_text.h"
#include "desktop/shell/form_dialog.h"
#include "desktop/shell/print_dialog.h"
#include "platform/agreed/saved_letter.h"
#include "platform/failure.h"

namespace desktop {

using platform::MessageAnswer;
using platform::MessageButtons;
using platform::MessageIcon;
using platform::MousePointer;

namespace {

constexpr auto kCaption = "Correspondence";
constexpr auto kTag = "zemlo-corresp";

// In the view settings.
constexpr std::string_view kSaveFolder = "SaveFolder";
constexpr std::string_view kPrinter = "Printer";
constexpr std::string_view kPrintSides = "PrintSides";
constexpr auto kSidesRemembered =
    std::to_array<std::string_view>({"", "one", "both"});  // as PrintChoice::Sides

struct SaveFormat {
  const char* ending;
  const char* filter;
};
constexpr auto kSaveFormats = std::to_array<SaveFormat>({
    {platform::kDocumentEnding, "Letter document (*.docx)"},
    {platform::kPdfEnding, "PDF document (*.pdf)"},
});

QMessageBox::Icon IconOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::kNone:
      return QMessageBox::NoIcon;
    case MessageIcon::kInformation:
      return QMessageBox::Information;
    case MessageIcon::kExclamation:
      return QMessageBox::Warning;
    case MessageIcon::kQuestion:
      return QMessageBox::Question;
    case MessageIcon::kCritical:
      return QMessageBox::Critical;
  }
  return QMessageBox::NoIcon;
}

/// The file with the ending of the chosen format, unless it has one of the endings already.
QString WithEnding(const QString& file, const QString& filter) {
  const auto has = [&](const SaveFormat& format) {
    return file.endsWith(QLatin1String(format.ending), Qt::CaseInsensitive);
  };
  if (std::ranges::any_of(kSaveFormats, has)) return file;
  const auto chosen = std::ranges::find_if(
      kSaveFormats, [&](const SaveFormat& format) { return filter == QLatin1String(format.filter); });
  return file + QLatin1String(chosen == kSaveFormats.end() ? kSaveFormats.front().ending : chosen->ending);
}

}  // namespace

/// Something keeps the user: replies are held back, and nothing that waits for a quiet moment begins.
class QtHostShell::WorkScope {
 public:
  explicit WorkScope(QtHostShell& shell) : shell_(shell), hold_(shell.events_) {
    ++shell_.under_work_;
    shell_.TellGuard();
  }
  WorkScope(const WorkScope&) = delete;
  WorkScope& operator=(const WorkScope&) = delete;
  ~WorkScope() {
    --shell_.under_work_;
    shell_.TellGuard();
  }

 private:
  QtHostShell& shell_;
  QtEventQueue::Hold hold_;
};

/// A box is open: the pointer is one to click with. At its end the window behind it has the keyboard again.
class QtHostShell::BoxScope {
 public:
  explicit BoxScope(QtHostShell& shell) : shell_(shell), work_(shell) {
    ++shell_.open_boxes_;
    shell_.ShowPointer();
  }
  BoxScope(const BoxScope&) = delete;
  BoxScope& operator=(const BoxScope&) = delete;
  ~BoxScope() {
    --shell_.open_boxes_;
    shell_.ShowPointer();
    shell_.Front()->activateWindow();  // not every host does
  }

 private:
  QtHostShell& shell_;
  const WorkScope work_;
};

QtHostShell::QtHostShell(QtEventQueue& events, platform::ViewSettings* remembered)
    : events_(events), remembered_(remembered), window_(QLatin1String(kCaption)) {}

QtHostShell::~QtHostShell() {
  QtHostShell::SetMousePointer(MousePointer::kNormal);
}

std::string QtHostShell::Caption() const {
  return FromQt(window_.windowTitle());
}

std::string QtHostShell::Tag() const {
  return kTag;
}

void QtHostShell::SetMousePointer(MousePointer pointer) {
  if (pointer == pointer_) return;
  pointer_ = pointer;
  ShowPointer();
  TellGuard();
}

void QtHostShell::ShowPointer() {
  const bool wanted = pointer_ == MousePointer::kHourglass && open_boxes_ == 0;
  if (std::exchange(shows_hourglass_, wanted) == wanted) return;
  if (wanted) {
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  } else {
    QGuiApplication::restoreOverrideCursor();
  }
}

void QtHostShell::SetReady(bool ready) {
  ready_ = ready;
  TellGuard();
}

void QtHostShell::TellGuard() {
  guard_.SetBusy(!ready_ || pointer_ == MousePointer::kHourglass || under_work_ > 0 || layout_under_way_);
}

void QtHostShell::LayoutUnderWay(bool is_under_way) {
  layout_under_way_ = is_under_way;
  window_.ShowWork(is_under_way);
  TellGuard();
}

QWidget* QtHostShell::Front() {
  auto* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : &window_;
}

MessageAnswer QtHostShell::ShowMessage(const platform::Message& message) {
  const BoxScope open(*this);
  QMessageBox box(Front());
  box.setIcon(IconOf(message.icon));
  box.setWindowTitle(ToQt(message.title));
  box.setTextFormat(Qt::PlainText);
  box.setText(MessageText(message.text));
  if (message.buttons == MessageButtons::kOk) {
    box.setStandardButtons(QMessageBox::Ok);
    box.exec();
    return MessageAnswer::kOk;
  }
  const bool may_cancel = message.buttons == MessageButtons::kYesNoCancel;
  const auto way_out = may_cancel ? QMessageBox::Cancel : QMessageBox::No;
  box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | way_out);
  box.setDefaultButton(message.default_answer == MessageAnswer::kYes ? QMessageBox::Yes : way_out);
  box.setEscapeButton(way_out);
  const auto answer = box.exec();
  if (answer == QMessageBox::Yes) return MessageAnswer::kYes;
  return answer == QMessageBox::No ? MessageAnswer::kNo : MessageAnswer::kCancel;
}

std::unique_ptr<FormDialog> QtHostShell::MakeDialog(platform::Form& form) {
  const auto maker = makers_.find(typeid(form));
  if (maker == makers_.end()) {
    throw platform::Failure(platform::Failure::Kind::kNotFound,
                            "The window has no view for the form \"" + form.caption() + "\".");
  }
  return std::make_unique<FormDialog>(form, maker->second(form), Front());
}

void QtHostShell::ShowModal(platform::Form& form) {
  form.Load();
  if (!form.loaded()) return;  // it closed itself while it was loading
  const QtEventQueue::LetIn replies(events_);
  const auto dialog = MakeDialog(form);
  QEventLoop loop;
  bool hidden = false;
  dialog->form_hidden = [&] {
    hidden = true;
    loop.quit();
  };
  dialog->setWindowModality(Qt::ApplicationModal);
  dialog->Present();
  if (!hidden) loop.exec(QEventLoop::DialogExec);
}

void QtHostShell::Show(platform::Form& form) {
  form.Load();
  if (!form.loaded()) return;
  modeless_.push_back(MakeDialog(form));
  auto* dialog = modeless_.back().get();
  dialog->form_hidden = [this, dialog] {
    const auto gone =
        std::ranges::find_if(modeless_, [dialog](const auto& open) { return open.get() == dialog; });
    if (gone == modeless_.end()) return;
    gone->release()->deleteLater();  // it is telling us; the form may be gone when it is deleted
    modeless_.erase(gone);
  };
  dialog->Present();
}

void QtHostShell::ShowNotice(const QString& text) {
  window_.ShowNotice(text);
  for (auto* front = QApplication::activeModalWidget(); front != nullptr; front = front->parentWidget()) {
    if (front == &window_) return;
    if (auto* place = dynamic_cast<NoticePlace*>(front)) return place->ShowNotice(text);
  }
}

void QtHostShell::RunPendingEvents() {
  QApplication::processEvents();
}

void QtHostShell::WaitUntil(const std::function<bool()>& done) {
  constexpr std::chrono::milliseconds kLook(10);
  const WorkScope work(*this);
  QTimer look;  // wakes the loop, so that it asks again
  look.start(kLook);
  while (!done()) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
  }
}

std::string QtHostShell::ClipboardText() {
  return FromQt(QGuiApplication::clipboard()->text());
}

void QtHostShell::Beep() {
  QApplication::beep();
}

std::optional<std::string> QtHostShell::AskSaveFile(const std::string& suggested_name) {
  const BoxScope open(*this);
  QStringList filters;
  for (const auto& format : kSaveFormats) filters += QLatin1String(format.filter);
  auto file = QDir(SaveFolder()).filePath(ToQt(suggested_name));
  auto filter = file.endsWith(QLatin1String(kSaveFormats[1].ending)) ? filters[1] : filters[0];
  do {
    // The dialog would ask about the name as it was typed, without the ending that it gets below.
    file = QFileDialog::getSaveFileName(Front(), QStringLiteral("Save Letter"), file,
                                        filters.join(QLatin1String(";;")), &filter,
                                        QFileDialog::DontConfirmOverwrite);
    if (file.isEmpty()) return {};
    file = WithEnding(file, filter);
  } while (!MayReplace(file));
  const QFileInfo folder(QFileInfo(file).absolutePath());
  if (remembered_ != nullptr && folder.isDir()) remembered_->Remember(kSaveFolder, FromQt(folder.filePath()));
  return FromQt(file);
}

/// The one of the last save, else the user's documents; home for a user who has no such folder.
QString QtHostShell::SaveFolder() const {
  auto last = remembered_ == nullptr ? QString() : ToQt(remembered_->Remembered(kSaveFolder));
  if (!last.isEmpty() && QFileInfo(last).isDir()) return last;
  const auto documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

bool QtHostShell::MayReplace(const QString& file) {
  const QFileInfo info(file);
  if (!info.exists()) return true;
  QMessageBox box(QMessageBox::Question, window_.windowTitle(),
                  QStringLiteral("\"%1\" is already in the folder \"%2\". Should this letter take its place?")
                      .arg(info.fileName(), info.absolutePath()),
                  QMessageBox::Yes | QMessageBox::No, Front());
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(QMessageBox::No);
  box.setEscapeButton(QMessageBox::No);
  return box.exec() == QMessageBox::Yes;
}

std::optional<platform::PrintChoice> QtHostShell::AskPrint(const platform::PrintQuestion& question) {
  auto asked = question;
  asked.proposed = Remembered(question);
  if (!question.with_dialog) return asked.proposed;
  const BoxScope open(*this);
  PrintDialog dialog(asked, Front());
  if (dialog.exec() != QDialog::Accepted) return {};
  auto choice = dialog.choice();
  if (choice) Remember(*choice);
  return choice;
}

/// The proposal, as the user chose last. A printer that has gone is not proposed.
platform::PrintChoice QtHostShell::Remembered(const platform::PrintQuestion& question) const {
  auto choice = question.proposed;
  if (remembered_ == nullptr) return choice;
  const auto last = remembered_->Remembered(kPrinter);
  const auto printer = std::ranges::find(question.printers, last, &platform::OfferedPrinter::name);
  if (printer == question.printers.end()) return choice;
  choice.printer = last;
  const auto sides = std::ranges::find(kSidesRemembered, remembered_->Remembered(kPrintSides));
  if (printer->takes_options && sides != kSidesRemembered.end())
    choice.sides = static_cast<platform::PrintChoice::Sides>(sides - kSidesRemembered.begin());
  return choice;
}

void QtHostShell::Remember(const platform::PrintChoice& choice) {
  if (remembered_ == nullptr) return;
  remembered_->Remember(kPrinter, choice.printer);
  remembered_->Remember(kPrintSides, kSidesRemembered[static_cast<std::size_t>(choice.sides)]);
}

void QtHostShell::ShowStatus(std::string_view text) {
  window_.ShowStatus(ToQt(text));
}

void QtHostShell::ShowReason(std::string_view text) {
  window_.ShowReason(ToQt(text));
}

void QtHostShell::EnableToolbarButton(int button_index, bool enabled, std::string_view) {
  window_.EnableToolbarButton(button_index, enabled);
}

}  // namespace desktop
