#pragma once

#include <string>

namespace wordprocessor {

/// What lays out the text of a typeface on this machine.
struct LaidOutTypeface {
  std::string family;        ///< "" where the machine has no typeface at all
  bool same_widths = false;  ///< lines and pages break where the typeface itself would break them
};

/// The typeface itself where this machine has it, else what stands in for it. The layout asks fontconfig for
/// a stand-in, and takes it without a word. Typefaces of a single user do not count, since the layout does
/// not see them. Any thread.
LaidOutTypeface LayoutTypeface(const std::string& family);

}  // namespace wordprocessor
