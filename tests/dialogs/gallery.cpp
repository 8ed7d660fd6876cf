#include "tests/dialogs/gallery.h"

#include <windows.h>

#include <cstdio>
#include <fstream>
#include <vector>

#include "tests/dialogs/dialog_driver.h"

namespace pv::dialogs_test {
namespace {

using test::Object;
using test::Value;

constexpr int kResolutions[] = {96, 144};
constexpr const char* kLanguages[] = {"us", "hu", "ger", "ita", "fra", "nl"};

/// The colours of a rectangle of the screen, 24 bits each, bottom row first.
struct Picture {
  LONG width = 0;
  LONG height = 0;
  std::vector<char> bits;

  bool operator==(const Picture&) const = default;
};

BITMAPINFOHEADER header_of(const Picture& picture) {
  BITMAPINFOHEADER header{};
  header.biSize = sizeof header;
  header.biWidth = picture.width;
  header.biHeight = picture.height;
  header.biPlanes = 1;
  header.biBitCount = 24;
  return header;
}

Picture photograph(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  Picture picture{place.right - place.left, place.bottom - place.top, {}};
  BITMAPINFO description{};
  description.bmiHeader = header_of(picture);
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  void* bits = nullptr;
  const HBITMAP bitmap = CreateDIBSection(screen, &description, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ previous = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, picture.width, picture.height, screen, place.left, place.top, SRCCOPY);
  GdiFlush();
  const auto row = static_cast<std::size_t>((picture.width * 3 + 3) / 4 * 4);
  const auto first = static_cast<const char*>(bits);
  picture.bits.assign(first, first + row * static_cast<std::size_t>(picture.height));
  SelectObject(memory, previous);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return picture;
}

// The screen follows the window with a delay: until two looks are the same, it still changes.
Picture photograph_when_painted(HWND window) {
  Picture picture;
  wait_until([&] {
    RedrawWindow(window, nullptr, nullptr, RDW_ALLCHILDREN | RDW_INVALIDATE | RDW_UPDATENOW);
    Sleep(100);
    const Picture next = photograph(window);
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

/// One row of the page: a form in one state, in all languages.
struct Exhibit {
  std::string name;
  std::function<void(const Utility&, const Script&)> show;
};

Exhibit message_box(std::string name, long prompt_id, short buttons, short picture) {
  return {std::move(name), [=](const Utility& utility, const Script& script) {
            show(utility,
                 {.prompt = utility.text(prompt_id),
                  .buttons = buttons,
                  .picture = picture,
                  .title = utility.text(402)},
                 script);
          }};
}

Exhibit long_message_box(std::string name, int repetitions, const wchar_t* separator) {
  return {std::move(name), [=](const Utility& utility, const Script& script) {
            std::wstring prompt;
            for (int i = 0; i < repetitions; ++i) prompt += utility.text(302) + separator;
            show(utility, {.prompt = prompt, .buttons = 3, .picture = 48}, script);
          }};
}

Exhibit password_dialog(std::string name, bool modifies) {
  return {std::move(name), [=](const Utility&, const Script& script) {
            const Object passwords = Object::create(L"pvItems32.CPasswords");
            passwords.call(L"Add", L"secret", modifies ? L"secret" : L"");
            drive(
                L"frmPW", [&] { passwords.call(L"Edit", 1); },
                [&](const Dialog& dialog) {
                  constexpr int kModify = 1002;
                  if (modifies) {
                    dialog.click(kModify);
                    dialog.drain();
                  }
                  script(dialog);
                });
          }};
}

Exhibit access_editor() {
  return {"frmAccessEdit", [](const Utility& utility, const Script& script) {
            const Device device;
            const Object item = device.add_item(33, 19, L"Damping");
            drive(
                L"frmAccessEdit",
                [&] { utility.object().call(L"ItemAccessEdit", device.txm, item); }, script);
          }};
}

Exhibit input_box(std::string name, const wchar_t* method, long prompt_id, Value initial,
                  const wchar_t* unit) {
  return {std::move(name), [=](const Utility& utility, const Script& script) {
            const Object box = Object::create(L"pvItems32.CInputBox");
            const std::wstring prompt = utility.text(prompt_id);
            drive(
                L"frmInputBox", [&] { box.call(method, prompt, utility.text(402), initial, unit); },
                script);
            box.call(L"CloseMe");
          }};
}

Exhibit technician_prompt() {
  return {"frmTechName", [](const Utility&, const Script& script) {
            const Device device;
            device.txm.put(L"Historian", 2);
            Value item = device.add_item(33, 0, L"Damping");
            drive(
                L"frmTechName", [&] { device.txm.call(L"WriteTxm", test::by_ref(item), false); },
                script);
          }};
}

// A transmitter on its pipe, with an alarm lamp.
constexpr const wchar_t* kSymbol =
    L"S1:P45B6P24B3J4B3P4M5P11B2J10B2P2MO3MP10B2J12B2PMO3MP9B2J14B2MO3MP9BJ16BM5P8B2J16B2P12BJ"
    L"2A14J2BP12BJ2AP12AJ2BP12BJ2APC2PCPC2PC2PAJ2BP11B2J2APC2PCPC2PC2PAJ2B2P11BJ2APC2PCPC2PC2P"
    L"AJ2BP12BJ2AP12AJ2BP12BJ2A14J2BP12B2J16B2P13BJ16BP14B2J14B2P15B2J12B2P17B2J10B2P20B3J4B3P"
    L"24B6P26I6P26I6P26I6P13I32H64I32P96";

Exhibit symbol_editor(std::string name, const wchar_t* symbol) {
  return {std::move(name), [=](const Utility& utility, const Script& script) {
            const Device device;
            const Object item = device.add_item(33, 0);
            item.put(L"Symbol", symbol);
            drive(
                L"frmSymbolEdit", [&] { utility.object().call(L"ItemSymbolEdit", item); }, script);
          }};
}

std::vector<Exhibit> exhibits() {
  return {
      message_box("frmMsgBox-0", 610, 0, 16),
      message_box("frmMsgBox-1", 611, 1, 64),
      message_box("frmMsgBox-2", 401, 2, 48),
      message_box("frmMsgBox-3", 401, 3, 32),
      message_box("frmMsgBox-4", 401, 4, 32),
      message_box("frmMsgBox-5", 611, 5, 0),
      message_box("frmMsgBox-short", 200, 2, 64),
      long_message_box("frmMsgBox-wrapped", 6, L" "),
      long_message_box("frmMsgBox-scrolled", 80, L"\r\n"),
      password_dialog("frmPW-enter", false),
      password_dialog("frmPW-modify", true),
      access_editor(),
      input_box("frmInputBox-text", L"ShowMe", 303, L"12.5", L"m\u00B3/h"),
      input_box("frmInputBox-masked", L"ShowMePW", 602, L"secret", L""),
      input_box("frmInputBox-moment", L"ShowMeDT", 302, 45000.75, L"UTC"),
      technician_prompt(),
      symbol_editor("frmSymbolEdit-new", L""),
      symbol_editor("frmSymbolEdit-drawn", kSymbol),
  };
}

std::string picture_name(const Exhibit& exhibit, const char* language, int dpi) {
  return exhibit.name + "-" + language + "-" + std::to_string(dpi);
}

void write_page(const std::string& file, const std::vector<Exhibit>& rows) {
  std::ofstream page(file);
  page << "<!DOCTYPE html>\n<meta charset=\"utf-8\">\n<title>Dialogs of pvItems32</title>\n"
          "<style>body{font-family:sans-serif;background:#888}td{vertical-align:top;padding:8px}"
          "th{text-align:left;padding:8px}</style>\n<h1>Dialogs of pvItems32</h1>\n";
  for (const int dpi : kResolutions) {
    page << "<h2>" << dpi << " dpi</h2>\n<table>\n<tr><th>";
    for (const char* language : kLanguages) page << "<th>" << language;
    page << "\n";
    for (const Exhibit& row : rows) {
      page << "<tr><th>" << row.name;
      for (const char* language : kLanguages)
        page << "<td><img src=\"" << picture_name(row, language, dpi) << ".png\">";
      page << "\n";
    }
    page << "</table>\n";
  }
}

}  // namespace

int make_gallery(const std::string& folder,
                 const std::function<void(const std::string& what)>& progress) {
  const Utility utility;
  const std::vector<Exhibit> rows = exhibits();
  int failures = 0;
  for (const int dpi : kResolutions) {
    const Resolution resolution(dpi);
    long index = 0;
    for (const char* language : kLanguages) {
      utility.set_language(++index);
      for (const Exhibit& row : rows) {
        const std::string name = picture_name(row, language, dpi);
        progress(name);
        bool saved = false;
        row.show(utility, [&](const Dialog& dialog) {
          saved = save(photograph_when_painted(dialog.window()), folder + "\\" + name + ".bmp");
        });
        if (!saved) {
          std::printf("no picture of %s\n", name.c_str());
          ++failures;
        }
      }
    }
  }
  write_page(folder + "\\index.html", rows);
  return failures == 0 ? 0 : 1;
}

}  // namespace pv::dialogs_test
