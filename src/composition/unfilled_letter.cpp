#include "composition/unfilled_letter.h"

#include "platform/failure.h"
#include "platform/text.h"

namespace composition {

bool AskToLetOut(const platform::Services& services, const std::vector<std::string>& names) {
  const std::string line_break(platform::kLineBreak);
  auto text = "Nothing fills these places of the letter, which show the template's placeholder:" + line_break;
  for (const auto& name : names) text += name + line_break;
  text += "Should the letter go out all the same?";
  const auto answer = services.host.ShowMessage(
      {text, platform::MessageIcon::kQuestion, services.host.Caption(), platform::MessageButtons::kYesNo,
       platform::MessageAnswer::kNo, platform::MessageTopic::kUnfilledLetter});
  return answer == platform::MessageAnswer::kYes;
}

void RefuseToLetOut(const std::vector<std::string>& names) {
  std::string listed;
  for (const auto& name : names) listed += (listed.empty() ? "" : ", ") + platform::Quoted(name);
  throw platform::Failure(platform::Failure::Kind::kRefused,
                          "The letter was not printed, because nothing fills " + listed +
                              ". View the letter and print it from there, or correct its template.");
}

}  // namespace composition
