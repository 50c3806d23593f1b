#include "composition/bookmark_name.h"

#include "platform/agreed/field_names.h"
#include "platform/text.h"
#include "platform/xml/xml_escape.h"

namespace composition {

bool CheckDoubleUnderScore(std::string_view name) {
  return platform::IsRepeat(platform::Trim(name));
}

void XmlEscapeDecode(std::string& text) {
  text = platform::XmlUnescaped(text);
}

}  // namespace composition
