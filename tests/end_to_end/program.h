#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "tests/support/temporary_folder.h"

/// The programs as a user starts them.
namespace tests {

struct Outcome {
  int status = -1;
  std::string out;
  std::string err;
};

/// One word as the shell takes it, whatever it holds.
inline std::string Quoted(const std::string& word) {
  std::string quoted = "'";
  for (const char character : word)
    quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
  return quoted + "'";
}

/// Runs a shell command line and waits for its end.
inline Outcome RunShell(const std::string& command_line) {
  const TemporaryFolder folder;
  const auto out = folder / "out";
  const auto err = folder / "err";
  const int ended = std::system(
      ("( " + command_line + " ) > " + Quoted(out.string()) + " 2> " + Quoted(err.string()) + " < /dev/null")
          .c_str());
  return {WIFEXITED(ended) ? WEXITSTATUS(ended) : -1, ReadFile(out), ReadFile(err)};
}

/// `environment` stands before the program's name, as in "env -i PATH=/usr/bin".
inline Outcome RunProgram(const std::string& program, const std::vector<std::string>& words,
                          const std::string& environment = "") {
  auto line = environment + " " + Quoted(std::string(ZEMLO_BINARY_DIR) + "/bin/" + program);
  for (const auto& word : words) line += " " + Quoted(word);
  return RunShell(line);
}

inline Outcome RunLetters(const std::vector<std::string>& words, const std::string& environment = "") {
  return RunProgram("zemlo-letters", words, environment);
}

/// The text of a PDF as pdftotext (poppler) reads it.
inline std::string PdfText(const std::filesystem::path& pdf) {
  return RunShell("pdftotext -layout " + Quoted(pdf.string()) + " -").out;
}

inline std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) files.push_back(entry.path());
  return files;
}

}  // namespace tests
