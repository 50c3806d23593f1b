#pragma once

#include <cstddef>

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "desktop/binders/option_binding.h"
#include "platform/controls/command.h"
#include "platform/controls/label.h"
#include "platform/controls/option_button.h"

/// How the pages and forms lay out their controls: captions before fields, options below one another.
namespace desktop {

/// A caption whose mnemonic ("&") leads to `field` and whose text is the name `field` is read out under.
QLabel* CaptionFor(QWidget& field, const char* caption);

/// A caption and its field, side by side, in one row of `layout`; `column` is that of the caption.
void AddField(QGridLayout& layout, int row, int column, const char* caption, QWidget& field);

/// A caption and the label that shows the value. The value is never cut silently: it wraps.
void AddShown(QGridLayout& layout, int row, int column, const char* caption, platform::Label& label);

/// A new button bound to the command; `mnemonic` as in Bind.
QPushButton* MakeButton(platform::Command& command, QWidget* parent = nullptr, char mnemonic = '\0');

/// New option buttons, filled into `layout` row by row.
template <std::size_t Count>
void AddOptions(platform::OptionGroup<Count>& options, OptionRadio::Arrows arrows, QGridLayout& layout,
                int columns = 1) {
  int cell = 0;
  for (auto& option : options) {
    auto* radio = new OptionRadio(arrows);
    layout.addWidget(radio, cell / columns, cell % columns);
    Bind(option, *radio);
    ++cell;
  }
}

}  // namespace desktop
