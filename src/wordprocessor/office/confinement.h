#pragma once

#include <cstdint>
#include <filesystem>

namespace wordprocessor {

/// What the layout process gives up before it opens the first document. A document that breaks the office is
/// left with what the kernel still lets this process do: read fonts and the office's own files, and write its
/// own folder.

/// Ends this process when the thread that started it ends, keeps it from leaving core files of letters, and
/// lets it be the first to go when the machine runs out of memory.
void TieToParent();

/// Private writable memory beyond `bytes` is refused from now on; 0 sets no limit.
void LimitMemory(std::uint64_t bytes);

/// From now on this process and its threads write below `own_folder` only and read only that, `office_folder`
/// and the system's fonts, libraries and office settings. Enforced where the kernel has Landlock
/// (Linux 5.13). Decision [confined-worker].
void ConfineFiles(const std::filesystem::path& own_folder, const std::filesystem::path& office_folder);

/// From now on this process and its threads open no socket, run no program, send no signal to another process
/// and look into none. Enforced by a seccomp filter, on x86-64 and 64-bit ARM.
void ConfineCalls();

}  // namespace wordprocessor
