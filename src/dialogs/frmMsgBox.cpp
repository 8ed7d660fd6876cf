// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "dialogs/frmMsgBox.h"

#include <algorithm>

#include "dialogs/kit/clipboard.h"
#include "resources/text_ids.h"
#include "resources/version.h"

namespace pv {
namespace {

struct ButtonRow {
  int text_id;  // 0 for a free button
  short result;
};

constexpr short kCancel = 2;
constexpr ButtonRow kOkButton{TEXT_OK, 1};
constexpr ButtonRow kCancelButton{TEXT_CANCEL, kCancel};
constexpr ButtonRow kRetryButton{TEXT_RETRY, 4};
constexpr ButtonRow kYesButton{TEXT_YES, 6};
constexpr ButtonRow kNoButton{TEXT_NO, 7};
constexpr ButtonRow kFreeButton{0, 0};

constexpr ButtonRow kButtonSets[][3] = {
    {kOkButton, kFreeButton, kFreeButton},
    {kOkButton, kCancelButton, kFreeButton},
    {{TEXT_ABORT, 3}, kRetryButton, {TEXT_IGNORE, 5}},
    {kYesButton, kNoButton, kCancelButton},
    {kYesButton, kNoButton, kFreeButton},
    {kRetryButton, kCancelButton, kFreeButton},
};

constexpr Twips kIconLeft = 240;
constexpr Twips kIconTop = 240;
constexpr Twips kPromptLeft = 960;
constexpr Twips kPromptTop = 360;
constexpr Twips kRowLeft = 240;
constexpr Twips kAfterPrompt = 240;
constexpr Twips kBelowPrompt = 360;
constexpr Twips kButtonGap = 120;
constexpr Twips kBelowButtons = 120;
constexpr Twips kBesideScrollBar = 120;
constexpr std::size_t kLongestLine = 80;  // characters that the eye follows with ease

bool has_key_of_its_own(short result) {
  constexpr short kOk = 1;
  return result == kOk || result == kCancel;
}

short known_set(short buttons) {
  return buttons >= 0 && buttons < static_cast<short>(std::size(kButtonSets)) ? buttons : short{0};
}

}  // namespace

frmMsgBox::frmMsgBox(const MessageBoxRequest& request)
    : Form(L"frmMsgBox"),
      set_(known_set(request.buttons)),
      Image1_{{*this, 1020, IDI_ERROR},
              {*this, 1021, IDI_QUESTION},
              {*this, 1022, IDI_WARNING},
              {*this, 1023, IDI_INFORMATION}},
      pInfo_(*this, 1010, 1011),
      bBut_{{*this, 1000, [this] { press(0); }},
            {*this, 1001, [this] { press(1); }},
            {*this, 1002, [this] { press(2); }}} {
  set_title(request.title.empty() ? L"" PV_LIBRARY_NAME : request.title);
  prepare_buttons();
  prepare_icon(request.picture);
  pInfo_.set_text(request.prompt);
}

void frmMsgBox::prepare_buttons() {
  for (int i = 0; i < kButtons; ++i) {
    const ButtonRow& row = kButtonSets[set_][i];
    tags_[i] = row.result;
    bBut_[i].set_access_key(!has_key_of_its_own(row.result));
    bBut_[i].set_visible(row.text_id != 0);
    if (row.text_id) {
      bBut_[i].set_caption(row.text_id);
    } else {
      bBut_[i].set_text(L"?");
    }
  }
  set_default(bBut_[0]);
  enable_close_box(has_cancel());
}

void frmMsgBox::prepare_icon(short picture) {
  for (short i = 0; i < 4; ++i) {
    const bool shown = picture == 16 * (i + 1);
    Image1_[i].set_visible(shown);
    if (shown) sound_ = static_cast<UINT>(picture);  // the platform's sounds have the same numbers
  }
}

void frmMsgBox::on_opening() {
  if (sound_) MessageBeep(sound_);
}

// As the platform's own boxes do.
bool frmMsgBox::preview_key(WPARAM key, bool down) {
  if (!down || key != 'C' || GetKeyState(VK_CONTROL) >= 0 || pInfo_.has_selection()) return false;
  copy_to_clipboard(window(), spoken());
  return true;
}

std::wstring frmMsgBox::spoken() const {
  const std::wstring line = std::wstring(27, L'-') + L"\r\n";
  std::wstring buttons;
  for (const Button& button : bBut_)
    if (button.visible()) buttons += button.text() + L"   ";
  return line + title() + L"\r\n" + line + pInfo_.text() + L"\r\n" + line + buttons + L"\r\n" +
         line;
}

bool frmMsgBox::has_cancel() const {
  return std::find(tags_.begin(), tags_.end(), kCancel) != tags_.end();
}

short frmMsgBox::result() const { return result_ == 0 && has_cancel() ? kCancel : result_; }

void frmMsgBox::press(int index) {
  result_ = tags_[index];
  hide();
}

// Sets without Cancel can be answered with their buttons only.
void frmMsgBox::on_close() {
  if (!has_cancel()) return;
  result_ = kCancel;
  hide();
}

void frmMsgBox::layout() {
  for (Icon& icon : Image1_) {
    const TwipSize size = icon.natural_size();
    icon.place({kIconLeft, kIconTop, size.width, size.height});
  }
  const TwipSize button = button_size();
  const Twips below_text = kBelowPrompt + button.height + kBelowButtons + frame().height;
  const TwipBox prompt = fit_prompt(below_text);

  const Twips row_top = prompt.bottom() + kBelowPrompt;
  const Twips row = row_width(button);
  const Twips width = std::max(prompt.right() + kAfterPrompt, row);
  resize_outer({width, prompt.bottom() + below_text});

  Twips left = (width - frame().width - (row - kButtonGap - kRowLeft)) / 2;
  for (Button& each : bBut_) {
    each.place({left, row_top, button.width, button.height});
    if (each.visible()) left += button.width + kButtonGap;
  }
}

// All buttons are as wide as the widest needs to be.
TwipSize frmMsgBox::button_size() const {
  TwipSize size;
  for (const Button& button : bBut_) {
    const TwipSize natural = button.natural_size();
    size = {std::max(size.width, natural.width), std::max(size.height, natural.height)};
  }
  return size;
}

Twips frmMsgBox::row_width(const TwipSize& button) const {
  Twips width = kRowLeft;
  for (const Button& each : bBut_)
    if (each.visible()) width += button.width + kButtonGap;
  return width;
}

// Prompts break where lines get hard to read. Longer ones break at five eighths of the screen's
// width or at its full width, and what is still too high for the screen scrolls: the buttons never
// leave it.
TwipBox frmMsgBox::fit_prompt(Twips height_below) {
  const TwipSize area = work_area();
  const Twips beside = kPromptLeft + kAfterPrompt;
  const Twips highest = area.height - kPromptTop - height_below;
  const Twips readable = metrics().text_size(std::wstring(kLongestLine, L'x'), DT_SINGLELINE).width;
  const Twips usual = area.width * 5 / 8 - beside;
  TwipSize size;
  for (const Twips widest : {std::min(readable, usual), usual, area.width - beside}) {
    size = pInfo_.natural_size(widest);
    if (size.height <= highest) break;
  }
  const bool scrolls = size.height > highest;
  if (scrolls) {
    const Twips bar = metrics().twips(GetSystemMetrics(SM_CXVSCROLL)) + kBesideScrollBar;
    size = {std::min(size.width + bar, area.width - beside), highest};
  }

  const TwipBox box{kPromptLeft, kPromptTop, size.width, size.height};
  pInfo_.place(box, scrolls);
  return box;
}

short show_message_box(const MessageBoxRequest& request) {
  // A box of its own for every call: nothing stays behind, and boxes may be nested.
  frmMsgBox box(request);
  box.show_modal(request.owner);
  return box.result();
}

}  // namespace pv
