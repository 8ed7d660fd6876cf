#include "dialogs/frmTechName.h"

#include <algorithm>

#include "dialogs/thread_form.h"

namespace pv {
namespace {

constexpr int kTitle = 301;
constexpr int kPrompt = 302;
constexpr int kName = 303;
constexpr int kComment = 304;
constexpr int kOk = 200;
constexpr int kCancel = 201;

constexpr Twips kMargin = 180;
constexpr Twips kGap = 120;
constexpr Twips kTextWidth = 5400;

}  // namespace

frmTechName::frmTechName()
    : Form(L"frmTechName"),
      lblPrompt_(*this, 1010),
      lblItem_(*this, 1011),
      lblName_(*this, 1020),
      txtName_(*this, 1021),
      lblComment_(*this, 1022),
      txtComment_(*this, 1023),
      cmdOK_(*this, 1000, [this] { confirm(); }),
      cmdCancel_(*this, 1001, [this] { cancel(); }) {
  set_caption(kTitle);
  lblPrompt_.set_caption(kPrompt);
  lblName_.set_caption(kName);
  lblComment_.set_caption(kComment);
  cmdOK_.set_caption(kOk);
  cmdCancel_.set_caption(kCancel);
  set_default(cmdOK_);
}

void frmTechName::prepare(const std::wstring& item_label) {
  lblItem_.set_text(item_label);
  txtName_.set_text(L"");
  txtComment_.set_text(L"");
  note_.reset();
}

void frmTechName::confirm() {
  note_ = TechnicianNote{txtName_.typed_text(), txtComment_.typed_text()};
  hide();
}

void frmTechName::cancel() {
  note_.reset();
  hide();
}

void frmTechName::layout() {
  Twips top = kMargin;
  for (Label* text : {&lblPrompt_, &lblItem_}) {
    const TwipSize size = text->natural_size(kTextWidth);
    text->place({kMargin, top, kTextWidth, size.height});
    top += size.height + kGap;
  }
  const Twips label_width =
      std::max(lblName_.natural_size().width, lblComment_.natural_size().width);
  const Twips field_left = kMargin + label_width + kGap;
  const auto place_field = [&](FieldLabel& label, TextBox& field) {
    const Twips height = field.natural_size().height;
    const Twips label_height = label.natural_size().height;
    label.place({kMargin, top + (height - label_height) / 2, label_width, label_height});
    field.place({field_left, top, kMargin + kTextWidth - field_left, height});
    top += height + kGap;
  };
  place_field(lblName_, txtName_);
  place_field(lblComment_, txtComment_);

  top += kGap;
  const TwipSize ok = cmdOK_.natural_size();
  const TwipSize cancel = cmdCancel_.natural_size();
  const Twips width = std::max(ok.width, cancel.width);
  const Twips right = kMargin + kTextWidth;
  cmdOK_.place({right - 2 * width - kGap, top, width, ok.height});
  cmdCancel_.place({right - width, top, width, ok.height});
  resize_inner({right + kMargin, top + ok.height + kMargin});
}

std::optional<TechnicianNote> ask_technician(const std::wstring& item_label) {
  auto& form = thread_form<frmTechName>();
  if (form.is_shown()) return std::nullopt;  // asked again from within the prompt
  form.prepare(item_label);
  form.show_modal(nullptr);
  std::optional<TechnicianNote> note = form.note();
  unload_form<frmTechName>();
  return note;
}

}  // namespace pv
