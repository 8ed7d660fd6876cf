// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "dialogs/kit/accessible.h"
#include "dialogs/kit/metrics.h"

namespace pv {

class Form;

/// A control of a form. It keeps its state while the form is hidden and has no window; while the
/// form is shown, the window and the state agree. Controls are members of their form; the order of
/// their construction is the tab order, so a label comes right before the field that it names.
class Control {
 public:
  /// How the text is shown, and what '&' in a window text means to the window class.
  enum class Caption {
    kNone,     // the text is no caption; the control shows it itself
    kLiteral,  // '&' is shown
    kEscaped,  // '&' would be read as a mark, so it is doubled
    kMnemonic  // the form gives the control an access key
  };

  /// `id` is the control's window id: stable, so that test tools can rely on it.
  Control(Form& form, int id, const wchar_t* window_class, DWORD style, DWORD extended_style = 0);
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  int id() const { return id_; }
  /// None while the form is hidden.
  HWND window() const { return window_; }

  /// A localised text, fetched again when the language changes.
  void set_caption(int text_id);
  /// A text that is the same in every language, '&' included.
  void set_text(std::wstring text);
  const std::wstring& text() const { return text_; }

  bool visible() const { return visible_; }
  /// A hidden control is disabled as well, and shows no access key after the next refresh.
  void set_visible(bool visible);
  bool enabled() const { return enabled_; }
  void set_enabled(bool enabled);
  void focus();

  /// The place in the form, set by the form's layout.
  const TwipBox& box() const { return box_; }
  void place(const TwipBox& box) { box_ = box; }
  /// The size that shows everything; texts that may break do so at `width`.
  TwipSize natural_size(Twips width = 0) const;
  /// Where the control's text begins when the control itself, in its natural height, begins at
  /// `top`. A label that begins there shares the base line. Only while the form is shown.
  Twips text_top(Twips top) const;

 protected:
  virtual Caption caption() const { return Caption::kLiteral; }
  virtual TwipSize measure(const Metrics& metrics, Twips width) const;
  /// Pixels between the upper edge and the text.
  virtual int text_inset(const Metrics&) const { return 0; }
  /// The window was created: it takes over the state.
  virtual void fill_window() {}
  /// The window is about to go: the state takes over what the user did.
  virtual void read_window() {}
  /// The language changed.
  virtual void refresh_texts();
  /// The height that the window is given.
  virtual Twips window_height(const Metrics&) const { return box_.height; }
  /// The window has its new place.
  virtual void on_moved() {}
  /// The window tells that something happened; `code` belongs to its window class.
  virtual void on_notification(WORD) {}

  LRESULT send(UINT message, WPARAM w = 0, LPARAM l = 0) const;
  /// Runs what the platform made happen: an exception ends the show of the form.
  void protect(const std::function<void()>& reaction) const;
  void show_text(const std::wstring& marked_text);

  Form& form_;
  std::wstring text_;

 private:
  friend class Form;

  void create_window(HWND form, const Metrics& metrics);
  void show_enabled() const;
  void drop_window();
  void move_window(const Metrics& metrics);

  int id_;
  const wchar_t* window_class_;
  DWORD style_;
  DWORD extended_style_;
  HWND window_ = nullptr;
  int text_id_ = 0;
  bool visible_ = true;
  bool enabled_ = true;
  TwipBox box_;
};

/// A text to read; '&' has no meaning in it.
class Label : public Control {
 public:
  Label(Form& form, int id);

 protected:
  Label(Form& form, int id, DWORD style);
  /// With width 0 lines break only where the text says so.
  TwipSize measure(const Metrics& metrics, Twips width) const override;
};

/// The name of the field that follows it; its access key leads there. It ends a group of choice
/// buttons before it.
class FieldLabel : public Label {
 public:
  FieldLabel(Form& form, int id) : Label(form, id, WS_GROUP) {}

 protected:
  Caption caption() const override { return Caption::kMnemonic; }
};

/// One of the platform's own icons, IDI_ERROR and its like.
class Icon : public Control {
 public:
  Icon(Form& form, int id, LPCWSTR platform_icon);

 protected:
  Caption caption() const override { return Caption::kNone; }
  TwipSize measure(const Metrics& metrics, Twips width) const override;
  void fill_window() override;
  void read_window() override;

 private:
  struct IconDeleter {
    void operator()(HICON icon) const { DestroyIcon(icon); }
  };

  LPCWSTR platform_icon_;
  std::unique_ptr<std::remove_pointer_t<HICON>, IconDeleter> icon_;
};

class Button : public Control {
 public:
  Button(Form& form, int id, std::function<void()> clicked);
  /// OK and Cancel have none: Enter and Esc press them. Not for a form that is shown.
  void set_access_key(bool has) { has_access_key_ = has; }

 protected:
  Button(Form& form, int id, DWORD style, std::function<void()> clicked);
  Caption caption() const override {
    return has_access_key_ ? Caption::kMnemonic : Caption::kEscaped;
  }
  TwipSize measure(const Metrics& metrics, Twips width) const override;
  void on_notification(WORD code) override;

 private:
  std::function<void()> clicked_;
  bool has_access_key_ = true;
};

class CheckBox : public Control {
 public:
  CheckBox(Form& form, int id);
  bool checked() const;
  void set_checked(bool checked);

 protected:
  Caption caption() const override { return Caption::kMnemonic; }
  TwipSize measure(const Metrics& metrics, Twips width) const override;
  void fill_window() override;
  void read_window() override;

 private:
  bool checked_ = false;
};

/// One of a group of buttons of which one stays pressed.
class ChoiceButton : public Button {
 public:
  /// `first` opens a group; a field label after the last button ends it.
  ChoiceButton(Form& form, int id, bool first, std::function<void()> clicked);
  void set_chosen(bool chosen);

 protected:
  void fill_window() override;

 private:
  bool chosen_ = false;
};

/// A frame around controls, with a heading.
class Frame : public Control {
 public:
  Frame(Form& form, int id);
  /// Shows as much of the heading as fits this width, with an ellipsis for the rest. For layouts.
  void fit_heading(Twips width);

 protected:
  Caption caption() const override { return Caption::kEscaped; }
  TwipSize measure(const Metrics& metrics, Twips width) const override;
};

/// A text to type. When it gets the focus, its whole text is selected.
class TextBox : public Control {
 public:
  enum class Kind { kLine, kPassword, kScrolledReading };

  TextBox(Form& form, int id, Kind kind = Kind::kLine);
  std::wstring typed_text() const;
  /// The character shown for each typed one; 0 shows the text itself.
  void set_mask(wchar_t mask);
  /// The text can be read and copied but not changed.
  void set_locked(bool locked);
  void select_all();
  bool has_selection() const;

 protected:
  Caption caption() const override { return Caption::kNone; }
  TwipSize measure(const Metrics& metrics, Twips width) const override;
  void fill_window() override;
  void read_window() override;
  void on_notification(WORD code) override;

 private:
  int text_inset(const Metrics& metrics) const override;
  std::pair<DWORD, DWORD> selection() const;
  void show_beginning();

  Kind kind_;
  wchar_t mask_;
  bool locked_;
};

/// A list to choose from; the choice is a position from 0, -1 for none.
class DropDownList : public Control {
 public:
  DropDownList(Form& form, int id);
  /// The entries by their text ids; nothing is chosen.
  void set_entries(std::vector<int> text_ids);
  int selection() const;
  /// False for a position that has no entry; the choice stays.
  bool select(int position);

 protected:
  Caption caption() const override { return Caption::kNone; }
  TwipSize measure(const Metrics& metrics, Twips width) const override;
  Twips window_height(const Metrics& metrics) const override;
  int text_inset(const Metrics& metrics) const override;
  void fill_window() override;
  void read_window() override;
  void refresh_texts() override;

 private:
  std::vector<int> entries_;
  int selection_ = -1;
};

/// A date, or a time of day, in the user's own format. Its text is its name for screen readers.
class DateTimePicker : public Control {
 public:
  enum class Kind { kDate, kTime };

  DateTimePicker(Form& form, int id, Kind kind);
  SYSTEMTIME value() const;
  void set_value(const SYSTEMTIME& value);

 protected:
  Caption caption() const override { return Caption::kNone; }
  TwipSize measure(const Metrics& metrics, Twips width) const override;
  int text_inset(const Metrics& metrics) const override;
  void fill_window() override;
  void read_window() override;

 private:
  Kind kind_;
  SYSTEMTIME value_{};
  std::unique_ptr<AccessibleWindow> accessible_;
};

}  // namespace pv
