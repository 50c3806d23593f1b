#pragma once

#include <string>

#include "platform/controls/control.h"

namespace platform {

/// A dialog: its caption and its life. Controls are the named members of the class derived from it.
///
/// Load, Activate, then QueryUnload, Hide and Unload; a form that is told to close while one of its handlers
/// runs goes when the handlers have returned (see RunHandler).
class Form {
 public:
  explicit Form(std::string caption) : caption_(std::move(caption)) {}
  Form(const Form&) = delete;
  Form& operator=(const Form&) = delete;
  virtual ~Form() = default;

  const std::string& caption() const { return caption_; }
  void SetCaption(std::string caption);

  bool loaded() const { return loaded_; }
  bool shown() const { return shown_; }

  /// Loads the form once; showing does it where it was not done.
  void Load();
  /// The host has put it on the screen.
  void Activate();
  /// Off the screen; the values stay readable.
  void Hide();
  /// The user or the code closes it. Returns false when the form refused; true when it is closed or will be
  /// once its handlers have returned. Values stay readable. Decision [form-close].
  bool Close();

  /// Runs what an event of the form does; a Close meanwhile takes effect after it.
  template <typename Work>
  void RunHandler(Work&& work) {
    HandlerScope scope(*this);
    work();
  }

  Event<> CaptionChanged;
  /// No longer on the screen: hidden or unloaded. ShowModal returns then.
  Event<> Hidden;

 protected:
  // Procedures: no failure leaves them.
  virtual void OnLoad() {}
  virtual void OnActivate() {}
  /// Returns whether the form may be closed.
  virtual bool OnQueryUnload() { return true; }
  virtual void OnUnload() {}

 private:
  struct HandlerScope {
    explicit HandlerScope(Form& form) : form_(form) { ++form_.handlers_; }
    ~HandlerScope() { form_.HandlerEnded(); }
    Form& form_;
  };
  void HandlerEnded();
  bool Unload();

  std::string caption_;
  bool loaded_ = false;
  bool shown_ = false;
  int handlers_ = 0;
  bool close_wanted_ = false;
};

}  // namespace platform
