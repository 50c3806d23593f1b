#pragma once

#include "platform/file_failure.h"
#include "platform/whole_file.h"

namespace wordprocessor {

using platform::FileFailure;
using platform::MoveWholeFile;
using platform::ReadWholeFile;
using platform::RemoveUnfinishedFiles;
using platform::ReplaceFile;
using platform::WriteNewFile;
using platform::WriteScratchFile;
using platform::WriteWholeFile;

}  // namespace wordprocessor
