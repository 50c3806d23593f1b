#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "composition/node_state.h"
#include "platform/controls/command.h"
#include "platform/controls/form.h"
#include "platform/controls/label.h"
#include "platform/controls/tree.h"
#include "platform/counter.h"
#include "platform/parties/services.h"
#include "platform/xml/xml.h"

namespace composition {

/// The letter information form: a letter's data context as a tree, with what is wrong in it.
///
/// The tree shows the fields on the way to an error. In the diagnostic mode it shows every field, and the
/// frame explains the one the user selects. The caller sets `ErrBookMark`, and the labels that concern a
/// printed letter, before it shows the form; "OK" closes it. What fails is reported, and what has been built
/// of the tree stays.
class frmBatch : public platform::Form {
 public:
  /// `services` outlives the form.
  explicit frmBatch(const platform::Services& services);

  /// The data context, as XML. It is read when the form is loaded.
  const std::string& ErrBookMark() const { return err_book_mark_; }
  void ErrBookMark(std::string context);

  /// A letter that was to be made is not, because of its errors; the caller says so before the form is shown.
  bool is_refused = false;

  // Keys of the tree's images.
  static constexpr const char* kCorrect = "CorrectBK";
  static constexpr const char* kErrorInChild = "ErrorInChild";
  static constexpr const char* kError = "ErrorBK";

  platform::Tree tvw;  ///< each node's tag is its XmlElement

  // In words, of the context; empty where no field is in error.
  platform::Label verdict;
  platform::Label problems;  ///< a line for each field in error, in their order: its name, and what is wrong

  // Of the context.
  platform::Label error_count;
  platform::Label account;
  platform::Label address_status;
  // Of a printed letter: the caller fills them.
  platform::Label first_printed;
  platform::Label last_printed;
  platform::Label print_status;
  platform::Label print_error;
  platform::Label batch_error;  ///< hidden until ShowBatchError

  platform::Frame bookmark_information{"BookMark Information"};
  platform::Label bookmark_name;
  platform::Label bookmark_type;
  platform::Label bookmark_value;
  platform::Label bookmark_raw_value;
  platform::Label bookmark_state;
  platform::Label bookmark_attribute;
  platform::Label bookmark_error;

  platform::Command cmdOk{"OK"};

  /// Shows a text in a label word by word: an "&" in it marks no mnemonic.
  static void SetText(platform::Label& label, std::string_view text);
  /// The error of a letter of a batch run, word by word.
  void ShowBatchError(const std::string& text);

  /// A label and the caption that stands before it.
  struct Line {
    const char* caption;
    platform::Label frmBatch::*label;
  };
  static constexpr auto kHeader = std::to_array<Line>({
      {"Doc. First Printed:", &frmBatch::first_printed},
      {"Last Printed:", &frmBatch::last_printed},
      {"Num of Errors:", &frmBatch::error_count},
      {"Account #/Type:", &frmBatch::account},
      {"Print Status:", &frmBatch::print_status},
      {"Print Error Code:", &frmBatch::print_error},
      {"Address Status:", &frmBatch::address_status},
      {"Batch Error:", &frmBatch::batch_error},
  });
  static constexpr auto kBookmarkInformation = std::to_array<Line>({
      {"Name:", &frmBatch::bookmark_name},
      {"Type:", &frmBatch::bookmark_type},
      {"Value:", &frmBatch::bookmark_value},
      {"Raw Value:", &frmBatch::bookmark_raw_value},
      {"State:", &frmBatch::bookmark_state},
      {"Attribute:", &frmBatch::bookmark_attribute},
      {"Error:", &frmBatch::bookmark_error},
  });

  bool is_diagnostic() const { return is_diagnostic_; }

 protected:
  void OnLoad() override;

 private:
  void SetMode();
  void FillTree();
  std::string WhyEmpty() const;
  /// Adds the element, where the mode shows it, and all below it: at most 256 levels, which is what parses.
  void AddNode(const platform::XmlElement& element, platform::Tree::Node* parent);
  bool IsShown() const;
  platform::Tree::Node NodeOf(const platform::XmlElement& element);
  void CountError(const std::string& field, const platform::XmlElement& element);
  std::string Verdict() const;
  void FillLabels();
  std::string AccountText() const;
  void tvw_NodeClick(const platform::Tree::Node& node);

  const platform::Services& services_;
  std::string err_book_mark_;
  bool is_diagnostic_ = false;
  std::optional<platform::XmlDocument> document_;  // lives as long as the tree, whose tags point into it
  ZEMLO_NodeState state_;                          // of the element at hand
  platform::Counter errors_;
  bool errors_overflowed_ = false;
  std::string problems_;
  std::vector<platform::Connection> connections_;
};

}  // namespace composition
