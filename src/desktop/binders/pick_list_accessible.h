#pragma once

namespace desktop {

/// Has pick lists read out under their name, with what they show as their value. (Qt's own reading of an
/// editable list takes the text for the name, so that nobody hears which field it is.) Once is enough; more
/// does no harm.
void InstallPickListAccessible();

}  // namespace desktop
