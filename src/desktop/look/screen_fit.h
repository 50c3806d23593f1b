#pragma once

#include <QSize>
#include <QWidget>

/// Windows and the screen they are on, which may be small, or show everything twice as large.
/// Decision [window-fits].
namespace desktop {

/// What a window can take of its screen, its frame left out.
QSize RoomOnScreen(const QWidget& window);
/// A part's smallest size, as long as the screen has room for it beside what a dialog needs for the rest.
QSize SmallestOnScreen(const QWidget& part, QSize usual);
/// Gives a window that is not shown yet its usual size, or what fits, and keeps it and its frame on the
/// screen when it is shown.
void FitToScreen(QWidget& window, QSize usual);
/// Keeps the window and its frame on the screen when it is shown.
void KeepOnScreen(QWidget& window);

}  // namespace desktop
