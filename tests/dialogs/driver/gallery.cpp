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

constexpr int kResolutions[] = {96, 144};
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

// With a registered control in the place of the library's own drawing part.
FormKind hosted_symbol_editor() {
  FormKind kind = every_form().back();
  kind.name = "frmSymbolEdit-control";
  kind.ask = [](const Utility& utility, HWND) {
    const RegisteredPictureControl control;
    const Device device;
    const test::Object item = device.add_item(33, 0);
    return utility.object().call(L"ItemSymbolEdit", item).boolean();
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
  kinds.push_back(hosted_symbol_editor());
  return kinds;
}

std::string picture_name(const FormKind& exhibit, const char* language, int dpi) {
  return exhibit.name + "-" + language + "-" + std::to_string(dpi);
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
    for (const int dpi : kResolutions) {
      page << "<tr><th>" << dpi << " dpi";
      for (const char* language : kLanguages)
        page << "<td><img src=\"" << picture_name(exhibit, language, dpi) << ".png\">";
      page << "\n";
    }
    page << "</table>\n";
  }
}

}  // namespace

int make_gallery(const std::string& folder,
                 const std::function<void(const std::string& what)>& progress) {
  const Utility utility;
  const std::vector<FormKind> rows = exhibits();
  int failures = 0;
  for (const int dpi : kResolutions) {
    const Resolution resolution(dpi);
    long index = 0;
    for (const char* language : kLanguages) {
      utility.set_language(++index);
      for (const FormKind& row : rows) {
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
