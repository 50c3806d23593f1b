#include "apps/letters/headless_office.h"

#include <iostream>
#include <utility>

namespace apps {

HeadlessOffice::HeadlessOffice(const host::DataFolder& folder, Options options)
    : shell_(loop_, std::cerr, std::move(options.answers)),
      preview_(loop_, options.preview),
      office_(folder, {shell_, shell_, loop_, preview_, outcome_,
                       [this](const std::string& description, const std::string&) {
                         reported_ = true;
                         std::cerr << description << '\n';
                       }}) {
  if (options.tell_steps) {
    shell_.status_listener = [](const std::string& text) { std::cerr << "   " << text << '\n'; };
  }
}

void HeadlessOffice::Start() {
  workspace().Initialize();
  workspace().Show();
  RunUntilIdle();
}

void HeadlessOffice::RunUntilIdle() {
  loop_.RunPending();
  loop_.RunUntil([this] { return !office_.HasWorkUnderWay() && !preview_.is_open(); });
  loop_.RunPending();
}

}  // namespace apps
