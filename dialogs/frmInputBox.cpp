#include "dialogs/frmInputBox.h"

#include <algorithm>
#include <cmath>

#include "com/boundary.h"
#include "dialogs/form_layout.h"
#include "dialogs/thread_form.h"
#include "platform/locale.h"
#include "util/library_version.h"

namespace pv {
namespace {

constexpr int kOk = 200;
constexpr int kCancel = 201;
constexpr wchar_t kMask = L'*';
constexpr Twips kFieldWidth = 3000;
constexpr Twips kTextWidth = 4200;

// A date, a number or a date text; anything else means now.
SYSTEMTIME moment_of(const Variant& initial) {
  SYSTEMTIME moment{};
  GetLocalTime(&moment);
  attempt([&] {
    if (initial.vt == VT_EMPTY || is_empty_text(initial)) return;
    SYSTEMTIME given{};
    if (VariantTimeToSystemTime(converted(initial, VT_DATE).date, &given)) moment = given;
  });
  return moment;
}

double variant_time(SYSTEMTIME moment) {
  double time = 0;
  SystemTimeToVariantTime(&moment, &time);
  return time;
}

}  // namespace

frmInputBox::frmInputBox()
    : Form(L"frmInputBox"),
      lblPrompt_(*this, 1010),
      txtInput_(*this, 1020),
      dtDate_(*this, 1022, DateTimePicker::Kind::kDate),
      dtTime_(*this, 1023, DateTimePicker::Kind::kTime),
      lblUnit_(*this, 1021),
      butOK_(*this, 1000, [this] { confirm(); }),
      butCancel_(*this, 1001, [this] { cancel(); }) {
  butOK_.set_caption(kOk);
  butCancel_.set_caption(kCancel);
  set_default(butOK_);
}

void frmInputBox::prepare(const InputRequest& request) {
  ok_ = false;
  value_ = Variant();
  const bool asks_text = request.kind != InputKind::kDateTime;
  set_title(request.title.empty() ? library_title() : request.title);
  lblPrompt_.set_text(request.prompt);
  lblUnit_.set_text(request.unit);
  txtInput_.set_visible(asks_text);
  txtInput_.set_mask(request.kind == InputKind::kMasked ? kMask : L'\0');
  txtInput_.set_text(asks_text ? text_of(request.initial) : std::wstring());
  for (DateTimePicker* picker : {&dtDate_, &dtTime_}) {
    picker->set_visible(!asks_text);
    picker->set_value(moment_of(asks_text ? Variant() : request.initial));
  }
}

Control* frmInputBox::first_focus() {
  if (asks_for_text()) return &txtInput_;
  return &dtDate_;
}

// Whole days of the one picker, time of day of the other, whatever its own date.
double frmInputBox::entered_moment() const {
  SYSTEMTIME date = dtDate_.value();
  date.wHour = date.wMinute = date.wSecond = date.wMilliseconds = 0;
  SYSTEMTIME time = dtTime_.value();
  // On day zero the number of the moment is the time of day alone.
  time.wYear = 1899;
  time.wMonth = 12;
  time.wDay = 30;
  return variant_time(date) + std::fabs(variant_time(time));
}

void frmInputBox::confirm() {
  value_ = asks_for_text() ? Variant(txtInput_.typed_text()) : Variant(entered_moment());
  ok_ = true;
  hide();
}

void frmInputBox::cancel() {
  ok_ = false;
  hide();
}

void frmInputBox::layout() {
  const Twips unit_width = lblUnit_.text().empty() ? 0 : lblUnit_.natural_size().width;
  const Twips unit_room = unit_width ? kFormGap + unit_width : 0;
  const Column column{kFormMargin, std::max(kTextWidth, kFieldWidth + unit_room), 0};
  const Twips top = place_text(lblPrompt_, column, kFormMargin);
  const Twips height = txtInput_.natural_size().height;
  const Twips field_width = column.width - unit_room;
  const Twips half = (field_width - kFormGap) / 2;
  txtInput_.place({column.left, top, field_width, height});
  dtDate_.place({column.left, top, half, height});
  dtTime_.place({column.left + half + kFormGap, top, half, height});
  const Twips unit_height = lblUnit_.natural_size().height;
  lblUnit_.place(
      {column.right() - unit_width, top + (height - unit_height) / 2, unit_width, unit_height});
  const Twips bottom = place_buttons({&butOK_, &butCancel_}, column, top + height + 2 * kFormGap);
  resize_inner({column.right() + kFormMargin, bottom + kFormMargin});
}

bool show_input_box(const InputRequest& request) {
  auto& form = thread_form<frmInputBox>();
  if (form.is_shown()) return false;  // asked again from within the box
  form.prepare(request);
  form.show_modal(request.owner);
  return form.ok();
}

Variant input_box_value() {
  const auto* form = loaded_form<frmInputBox>();
  return form ? form->value() : Variant();
}

void close_input_box() { unload_form<frmInputBox>(); }

}  // namespace pv
