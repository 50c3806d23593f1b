#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>

#include <LibreOfficeKit/LibreOfficeKit.hxx>

#include "wordprocessor/office/profile.h"

// The office alone: loads and saves FOLDER/1.docx to FOLDER/COUNT.docx in one loop, with the settings our own
// process gives it and nothing around it. Prints the milliseconds of the loop; the first file is laid out
// once before it, as a warm process has done.

namespace {

bool LayOut(lok::Office& office, const std::string& name) {
  const std::unique_ptr<lok::Document> document(office.documentLoad((name + ".docx").c_str(), "Batch=true"));
  return document != nullptr && document->saveAs((name + ".bare.pdf").c_str(), "pdf");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  const std::string folder = argv[2];
  wordprocessor::SeedProfile(folder + "/bare-profile");
  const auto office = lok::lok_cpp_init(argv[1], ("file://" + folder + "/bare-profile").c_str());
  if (office == nullptr || !LayOut(*office, "file://" + folder + "/1")) return 1;
  const auto start = std::chrono::steady_clock::now();
  for (int letter = 1; letter <= std::atoi(argv[3]); ++letter) {
    if (!LayOut(*office, "file://" + folder + "/" + std::to_string(letter))) return 1;
  }
  const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
  std::cout << taken.count() << std::endl;
  _exit(0);
}
