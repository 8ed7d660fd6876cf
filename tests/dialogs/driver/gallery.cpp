// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/dialogs/driver/gallery.h"

#include <windows.h>

#include <cstdio>
#include <fstream>
#include <vector>

#include "tests/dialogs/driver/every_form.h"
#include "tests/dialogs/driver/photograph.h"
#include "tests/dialogs/driver/picture_control.h"

namespace pv::dialogs_test {
namespace {

/// A way of looking at all forms: on a screen of its kind, in a resolution.
struct View {
  const char* name;
  const char* screen;
  int dpi;
};
constexpr View kViews[] = {
    {"96", "usual", 96}, {"144", "usual", 144}, {"192", "wide", 192}, {"wide", "wide", 96}};
constexpr const char* kLanguages[] = {"us", "hu", "ger", "ita", "fra", "nl"};

// The screen follows the window with a delay: until two looks are the same, it still changes.
Picture photograph_when_painted(HWND window) {
  Picture picture;
  RECT place{};
  GetWindowRect(window, &place);
  wait_until([&] {
    RedrawWindow(window, nullptr, nullptr, RDW_ALLCHILDREN | RDW_INVALIDATE | RDW_UPDATENOW);
    Sleep(100);
    const Picture next = photograph(place);
    const bool same = next == picture;
    picture = next;
    return same;
  });
  return picture;
}

bool save(const Picture& picture, const std::string& file) {
  BITMAPFILEHEADER file_header{};
  const BITMAPINFOHEADER header = header_of(picture);
  file_header.bfType = 0x4D42;
  file_header.bfOffBits = sizeof file_header + sizeof header;
  file_header.bfSize = file_header.bfOffBits + static_cast<DWORD>(picture.bits.size());
  std::ofstream out(file, std::ios::binary);
  out.write(reinterpret_cast<const char*>(&file_header), sizeof file_header);
  out.write(reinterpret_cast<const char*>(&header), sizeof header);
  out.write(picture.bits.data(), static_cast<std::streamsize>(picture.bits.size()));
  return out.good();
}

FormKind long_message_box(std::string name, int repetitions, const wchar_t* separator) {
  FormKind kind{.name = std::move(name), .form = L"frmMsgBox", .ask = {}};
  kind.ask = [=](const Utility& utility, HWND) {
    std::wstring prompt;
    for (int i = 0; i < repetitions; ++i) prompt += utility.text(302) + separator;
    return utility.message_box({.prompt = prompt, .buttons = 3, .picture = 48}) == 6;
  };
  return kind;
}

FormKind short_message_box() {
  FormKind kind{.name = "frmMsgBox-short", .form = L"frmMsgBox", .ask = {}};
  kind.ask = [](const Utility& utility, HWND) {
    return utility.message_box({.prompt = utility.text(200), .buttons = 2}) == 3;
  };
  return kind;
}

FormKind symbol_editor(std::string name, const wchar_t* symbol) {
  FormKind kind{.name = std::move(name), .form = L"frmSymbolEdit", .ask = {}};
  kind.ask = [=](const Utility& utility, HWND) {
    const Device device;
    const test::Object item = device.add_item(33, 0);
    item.put(L"Symbol", symbol);
    return utility.object().call(L"ItemSymbolEdit", item).boolean();
  };
  return kind;
}

// With a registered control in the place of the library's own drawing part.
FormKind hosted_symbol_editor() {
  FormKind kind = symbol_editor("frmSymbolEdit-control", L"");
  kind.ask = [ask = kind.ask](const Utility& utility, HWND owner) {
    const RegisteredPictureControl control;
    return ask(utility, owner);
  };
  return kind;
}

// Esc asks before a drawing is lost.
FormKind question_of_symbol_editor() {
  FormKind kind = every_form().back();
  kind.name = "frmSymbolEdit-discard";
  kind.ready = [](const Dialog& dialog) {
    constexpr int kClear = 1112;
    dialog.click(kClear);
    dialog.press_key(VK_ESCAPE);
    wait_for_dialog(GetWindowThreadProcessId(dialog.window(), nullptr));
  };
  return kind;
}

/// One part of the page for each.
std::vector<FormKind> exhibits() {
  std::vector<FormKind> kinds;
  for (const FormKind& kind : every_form()) {
    kinds.push_back(kind);
    if (kind.name == "frmMsgBox-5") {
      kinds.push_back(short_message_box());
      kinds.push_back(long_message_box("frmMsgBox-wrapped", 6, L" "));
      kinds.push_back(long_message_box("frmMsgBox-scrolled", 80, L"\r\n"));
    }
  }
  kinds.push_back(symbol_editor("frmSymbolEdit-foreign", L"of another editor"));
  kinds.push_back(question_of_symbol_editor());
  kinds.push_back(hosted_symbol_editor());
  return kinds;
}

std::string picture_name(const FormKind& exhibit, const char* language, const View& view) {
  return exhibit.name + "-" + language + "-" + view.name;
}

void write_page(const std::string& file, const std::vector<FormKind>& exhibits) {
  std::ofstream page(file);
  page << "<!DOCTYPE html>\n<meta charset=\"utf-8\">\n<title>Dialogs of pvItems32</title>\n"
          "<style>body{font-family:sans-serif;background:#888}td{vertical-align:top;padding:8px}"
          "th{text-align:left;padding:8px}</style>\n<h1>Dialogs of pvItems32</h1>\n";
  for (const FormKind& exhibit : exhibits) {
    page << "<h2>" << exhibit.name << "</h2>\n<table>\n<tr><th>";
    for (const char* language : kLanguages) page << "<th>" << language;
    page << "\n";
    for (const View& view : kViews) {
      page << "<tr><th>" << view.dpi << " dpi, " << view.screen << " screen";
      for (const char* language : kLanguages)
        page << "<td><img src=\"" << picture_name(exhibit, language, view) << ".png\">";
      page << "\n";
    }
    page << "</table>\n";
  }
}

// The form that is shown, or what it asks.
bool save_form(const FormKind& kind, const Utility& utility, const std::string& file) {
  bool saved = false;
  kind.show(utility, [&](const Dialog& dialog) {
    const Dialog front(GetLastActivePopup(dialog.window()));
    saved = save(photograph_when_painted(front.window()), file);
    if (front.window() == dialog.window()) return;
    front.click(kConfirmButton);
    dialog.wait_closed();
  });
  return saved;
}

}  // namespace

int make_gallery(const std::string& folder, const std::string& screen,
                 const std::function<void(const std::string& what)>& progress) {
  const Utility utility;
  const std::vector<FormKind> rows = exhibits();
  int failures = 0;
  for (const View& view : kViews) {
    if (view.screen != screen) continue;
    const Resolution resolution(view.dpi);
    long index = 0;
    for (const char* language : kLanguages) {
      utility.set_language(++index);
      for (const FormKind& row : rows) {
        const std::string name = picture_name(row, language, view);
        progress(name);
        if (save_form(row, utility, folder + "\\" + name + ".bmp")) continue;
        std::printf("no picture of %s\n", name.c_str());
        ++failures;
      }
    }
  }
  write_page(folder + "\\index.html", rows);
  return failures == 0 ? 0 : 1;
}

}  // namespace pv::dialogs_test
