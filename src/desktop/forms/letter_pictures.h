#pragma once

#include <string>

#include <QIcon>

namespace desktop {

/// The picture of a field of the letter information: a tick in a disc for a correct one, a cross in a square
/// for an error, a triangle that points down for an error further down. Told apart by shape as well as by
/// colour. A null icon for any other key.
QIcon LetterPicture(const std::string& key);

}  // namespace desktop
