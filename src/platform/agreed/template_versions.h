#pragma once

#include <span>
#include <string>
#include <string_view>

/// Templates of letter types, as the catalogue FLS_LTR_TEMPLATE has them.
namespace platform {

/// The template all letters share: letterhead, page set-up and styles. It is no letter type's version.
inline constexpr const char* kCommonTemplate = "kvcorr.dot";

struct TemplateVersion {
  std::string file;        ///< DCMT_NM
  std::string time_stamp;  ///< TMPLT_TS, "yyyy-mm-dd hh.mm.ss"
  std::string first_day;   ///< EFCTV_DT, "yyyy-mm-dd"
  std::string last_day;    ///< EXPRTN_DT; "" where it has no end
};

/// The version that a letter of that day ("yyyy-mm-dd") is made from: of those in force the one with the
/// newest time stamp, whichever began last. Null where none is in force. The workspace asks the catalogue in
/// one statement for the same version (workspace/letters/letter_templates.cpp).
const TemplateVersion* TemplateInForce(std::span<const TemplateVersion> versions, std::string_view day);

}  // namespace platform
