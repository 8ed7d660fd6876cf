// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What is asked of every form alike: its layout, its access keys, its texts, real key strokes.

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/dialogs/driver/dialog_state.h"
#include "tests/dialogs/driver/every_form.h"

namespace pv::dialogs_test {
namespace {

constexpr int kResolutions[] = {96, 120, 144, 192};
constexpr long kLanguages = 6;
constexpr long kEnglish = 1, kItalian = 4;

class EveryForm : public testing::TestWithParam<FormKind> {
 protected:
  EveryForm() { utility_.set_language(kEnglish); }
  ~EveryForm() override { utility_.set_language(kEnglish); }

  bool show(const Script& script) const { return GetParam().show(utility_, script); }

  Utility utility_;
};

std::string name_of(const testing::TestParamInfo<FormKind>& info) {
  std::string name = info.param.name;
  std::erase(name, '-');
  return name;
}

INSTANTIATE_TEST_SUITE_P(Forms, EveryForm, testing::ValuesIn(every_form()), name_of);

std::vector<int> visible_controls(const Dialog& dialog) {
  std::vector<int> ids = control_ids(dialog);
  std::erase_if(ids, [&](int id) { return !dialog.shows(id); });
  return ids;
}

bool is_tab_stop(const Dialog& dialog, int id) {
  return (GetWindowLongW(dialog.control(id), GWL_STYLE) & WS_TABSTOP) && dialog.enabled(id);
}

// Row by row, from left to right.
std::vector<int> tab_stops(const Dialog& dialog) {
  std::vector<int> ids = visible_controls(dialog);
  std::erase_if(ids, [&](int id) { return !is_tab_stop(dialog, id); });
  std::ranges::sort(ids, [&](int one, int other) {
    const RECT a = dialog.pixels(one);
    const RECT b = dialog.pixels(other);
    const bool same_row = a.top < b.bottom && b.top < a.bottom;
    return same_row ? a.left < b.left : a.top < b.top;
  });
  return ids;
}

bool shows_caption(const Dialog& dialog, int id) {
  const std::wstring name = class_of(dialog.control(id));
  return name == L"Static" || name == L"Button";
}

/// OK and Cancel in the language of the thread that shows the forms: Enter and Esc press them.
struct Answers {
  explicit Answers(const Utility& utility) : ok(utility.text(200)), cancel(utility.text(201)) {}
  bool has(const std::wstring& caption) const { return caption == ok || caption == cancel; }

  std::wstring ok;
  std::wstring cancel;
};

void expect_access_keys(const Dialog& dialog, const Answers& answers) {
  std::set<wchar_t> keys;
  for (const int id : control_ids(dialog)) {
    if (!shows_caption(dialog, id)) continue;
    const wchar_t key = dialog.access_key(id);
    EXPECT_TRUE(key == 0 || keys.insert(key).second) << "control " << id << " shares its key";
    const bool button = class_of(dialog.control(id)) == L"Button";
    const bool wants_key =
        button && is_tab_stop(dialog, id) && dialog.shows(id) && !answers.has(dialog.caption(id));
    EXPECT_TRUE(key || !wants_key) << "control " << id << " has no key";
    EXPECT_TRUE(!key || !answers.has(dialog.caption(id))) << "control " << id << " has a key";
  }
}

// Where the platform looks for access keys it finds hidden controls, too.
void expect_hidden_controls_asleep(const Dialog& dialog) {
  for (const int id : control_ids(dialog)) {
    if (dialog.shows(id)) continue;
    EXPECT_FALSE(dialog.enabled(id)) << "control " << id;
    if (shows_caption(dialog, id)) {
      EXPECT_EQ(dialog.access_key(id), L'\0') << "control " << id;
    }
  }
}

// Screen readers name a field by the text before it, and Alt leads from there to the field.
void expect_fields_after_their_labels(const Dialog& dialog) {
  std::wstring before;
  for (const int id : visible_controls(dialog)) {
    const std::wstring name = class_of(dialog.control(id));
    const bool field = name != L"Static" && name != L"Button";
    const bool second_of_two = name == L"SysDateTimePick32" && before == name;
    EXPECT_TRUE(!field || second_of_two || before == L"Static") << "control " << id;
    before = name;
  }
}

TEST_P(EveryForm, IsWholeAndInPlaceInEveryLanguageAndResolution) {
  for (const int dpi : kResolutions) {
    const Resolution resolution(dpi);
    for (long language = 1; language <= kLanguages; ++language) {
      utility_.set_language(language);
      SCOPED_TRACE(testing::Message() << "language " << language << ", dpi " << dpi);
      const Answers answers(utility_);
      show([&](const Dialog& dialog) {
        EXPECT_EQ(dialog.layout_faults(), "");
        expect_access_keys(dialog, answers);
        expect_hidden_controls_asleep(dialog);
        expect_fields_after_their_labels(dialog);
      });
    }
  }
}

TEST_P(EveryForm, OpensInTheMiddleOfTheMonitorOfItsOwner) {
  const HostWindow host;
  for (const HWND owner : {HWND{}, host.window()}) {
    drive(
        GetParam().form, [&] { GetParam().ask(utility_, owner); },
        [](const Dialog& dialog) { EXPECT_TRUE(dialog.is_centred()); });
  }
}

TEST_P(EveryForm, RealTabsLeadThroughItInReadingOrderAndBack) {
  show([](const Dialog& dialog) {
    const std::vector<int> stops = tab_stops(dialog);
    const auto first = std::ranges::find(stops, dialog.focused());
    ASSERT_NE(first, stops.end());
    std::vector<int> expected(first, stops.end());
    expected.insert(expected.end(), stops.begin(), first);
    const auto follow = [&](WORD with) {
      for (std::size_t i = 0; i < expected.size(); ++i) {
        const int next = expected[(i + 1) % expected.size()];
        EXPECT_TRUE(dialog.stroke(VK_TAB, with, [&] { return dialog.focused() == next; }))
            << "the focus is on " << dialog.focused() << " instead of " << next;
      }
    };
    follow(0);
    std::ranges::reverse(expected.begin() + 1, expected.end());
    follow(VK_SHIFT);
  });
}

TEST_P(EveryForm, RealAccessKeysLeadToTheirFieldsAndMarkBoxes) {
  show([](const Dialog& dialog) {
    const std::vector<int> ids = visible_controls(dialog);
    for (std::size_t i = 0; i + 1 < ids.size(); ++i) {
      const wchar_t key = dialog.access_key(ids[i]);
      const bool label = class_of(dialog.control(ids[i])) == L"Static";
      const bool box =
          (GetWindowLongW(dialog.control(ids[i]), GWL_STYLE) & BS_TYPEMASK) == BS_AUTOCHECKBOX;
      if (!key || (!label && !box)) continue;
      const int target = label ? ids[i + 1] : ids[i];
      const LRESULT mark = dialog.ask(target, BM_GETCHECK);
      EXPECT_TRUE(dialog.stroke(LOBYTE(VkKeyScanW(key)), VK_MENU,
                                [&] {
                                  return dialog.focused() == target &&
                                         (!box || dialog.ask(target, BM_GETCHECK) != mark);
                                }))
          << "control " << ids[i];
      if (class_of(dialog.control(target)) == L"Edit") {
        const int length = static_cast<int>(dialog.text(target).size());
        EXPECT_EQ(dialog.selection(target), (std::pair{0, length})) << "not all is selected";
      }
    }
  });
}

TEST_P(EveryForm, ARealEnterConfirmsAndARealEscapeCancels) {
  EXPECT_TRUE(show([](const Dialog& dialog) { EXPECT_TRUE(dialog.stroke_to_close(VK_RETURN)); }));
  EXPECT_EQ(show([](const Dialog& dialog) {
              if (GetParam().can_be_cancelled) {
                EXPECT_TRUE(dialog.stroke_to_close(VK_ESCAPE));
              } else {
                stroke_key(VK_ESCAPE);
                EXPECT_TRUE(dialog.stroke_to_close(VK_RETURN)) << "Esc comes before Enter";
              }
            }),
            !GetParam().can_be_cancelled);
}

// OK itself has none.
TEST_P(EveryForm, TheRealAccessKeyOfAnotherFirstButtonConfirms) {
  EXPECT_TRUE(show([](const Dialog& dialog) {
    const wchar_t key = dialog.access_key(kConfirmButton);
    EXPECT_TRUE(key ? dialog.stroke_to_close(LOBYTE(VkKeyScanW(key)), VK_MENU)
                    : dialog.stroke_to_close(VK_RETURN));
  }));
}

TEST_P(EveryForm, TheCloseBoxCancelsWhereThatIsPossible) {
  EXPECT_EQ(show([](const Dialog& dialog) {
              dialog.press_close_box();
              if (GetParam().can_be_cancelled) {
                EXPECT_TRUE(dialog.wait_closed());
              } else {
                dialog.drain();
                EXPECT_TRUE(dialog.open());
                dialog.click(kConfirmButton);
              }
            }),
            !GetParam().can_be_cancelled);
}

TEST_P(EveryForm, TheFieldThatHasTheFocusIsSelectedAsAWhole) {
  show([](const Dialog& dialog) {
    for (const int id : visible_controls(dialog)) {
      if (class_of(dialog.control(id)) != L"Edit") continue;
      dialog.type(id, L"some text");
      SendMessageW(dialog.window(), WM_NEXTDLGCTL,
                   reinterpret_cast<WPARAM>(dialog.control(kConfirmButton)), TRUE);
      PostMessageW(dialog.window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(dialog.control(id)),
                   TRUE);
      EXPECT_TRUE(wait_until([&] { return dialog.focused() == id; }));
      EXPECT_EQ(dialog.selection(id), (std::pair{0, 9}));
    }
  });
}

std::vector<std::wstring> button_captions(const Dialog& dialog) {
  std::vector<std::wstring> captions;
  for (int id = kConfirmButton; id < kConfirmButton + 3 && dialog.control(id); ++id)
    captions.push_back(dialog.text(id));
  return captions;
}

TEST_P(EveryForm, AnotherLanguageRelabelsItAndKeepsWhatTheUserDid) {
  const HostWindow host;
  Lines italian;
  std::vector<std::wstring> italian_buttons;
  utility_.set_language(kItalian);
  show([&](const Dialog& dialog) {
    italian = appearance(dialog);
    italian_buttons = button_captions(dialog);
  });
  utility_.set_language(kEnglish);
  const bool wrong_password = GetParam().name == "frmPW-enter";
  const bool confirmed = show([&](const Dialog& dialog) {
    change_everything(dialog);
    dialog.drain();
    const Lines before = contents(dialog);
    host.send([&] { utility_.set_language(kItalian); });
    EXPECT_EQ(button_captions(dialog), italian_buttons);
    if (!GetParam().has_host_texts) {
      EXPECT_EQ(appearance(dialog), italian);
    }
    EXPECT_EQ(contents(dialog), before);
    EXPECT_EQ(dialog.layout_faults(), "");
    dialog.click(kConfirmButton);
    if (wrong_password) answer_message(dialog);
  });
  EXPECT_EQ(confirmed, !wrong_password);
}

TEST_P(EveryForm, NothingOfOneShowIsLeftInTheNext) {
  const auto is_sibling = [](const FormKind& kind) { return kind.form == GetParam().form; };
  std::vector<FormKind> siblings;
  std::ranges::copy_if(every_form(), std::back_inserter(siblings), is_sibling);
  std::vector<Lines> fresh;
  const auto look = [&](const FormKind& kind) {
    Lines lines;
    kind.show(utility_, [&](const Dialog& dialog) {
      lines = appearance(dialog);
      std::ranges::copy(contents(dialog), std::back_inserter(lines));
    });
    return lines;
  };
  for (const FormKind& kind : siblings) fresh.push_back(look(kind));
  for (std::size_t i = 0; i < siblings.size(); ++i) {
    show([](const Dialog& dialog) {
      change_everything(dialog);
      SetWindowPos(dialog.window(), nullptr, 3, 4, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    });
    EXPECT_EQ(look(siblings[i]), fresh[i]) << siblings[i].name;
  }
}

}  // namespace
}  // namespace pv::dialogs_test
