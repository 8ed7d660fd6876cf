// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Connects to a Fluxor transmitter, reads and writes items and shows the audit file that resulted,
// with every event on the way.
//
//   read_write.exe <settings name> <history folder> <language index>
//
// The same round as read_write.vbs, early-bound: calls go straight to the interfaces of the type
// library. Needs pvItems32 and Fluxor.Server registered. Ends with DONE; anything wrong ends it
// with exit code 1.

#include <cstdio>
#include <string>

#include "../fluxor_server/library.h"
#include "progress_listener.h"

namespace fluxor {
namespace {

constexpr const wchar_t* kEnterPassword = L"140";
constexpr const wchar_t* kTechnicianPassword = L"2222";
constexpr double kOutOfLimits = 0;
constexpr int kIntendedRefusals = 1;  // writes that the transmitter is meant to refuse

void print(const std::wstring& line) {
  const int size = WideCharToMultiByte(CP_OEMCP, 0, line.c_str(), -1, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_OEMCP, 0, line.c_str(), -1, text.data(), size, nullptr, nullptr);
  std::puts(text.c_str());
  std::fflush(stdout);
}

ComPtr<IDispatch> create_by_name(const wchar_t* prog_id) {
  CLSID clsid;
  check(CLSIDFromProgID(prog_id, &clsid));
  return create<IDispatch>(clsid);
}

class Host {
 public:
  Host(const std::wstring& settings, const std::wstring& history_folder, int language) {
    const auto languages = get(utility_, &_CUtility::get_Languages);
    put(languages, &_CLanguages::put_ActiveLanguageID, static_cast<pvLanguageTypes>(language));
    put(utility_, &_CUtility::put_AppDirectory, appDirHistory, bstr(history_folder));
    put(transmitter_, &_CTxm::putref_Server, create_by_name(L"Fluxor.Server").Get());
    put(transmitter_, &_CTxm::put_Name, bstr(L"Cooling water"));
    put(transmitter_, &_CTxm::put_ComSettings, bstr(L"9600,n,8,1"));
    put(transmitter_, &_CTxm::put_Historian, histSilent);
    put(transmitter_, &_CTxm::put_HistorianTechName, bstr(L"M. Keller"));
    put(transmitter_, &_CTxm::put_HistorianComment, bstr(L"Commissioning"));
    if (!get(transmitter_, &_CTxm::LoadSettings, bstr(settings))) {
      throw CallFailure(E_FAIL, L"The settings files cannot be loaded.");
    }
  }

  void run() {
    if (!get(transmitter_, &_CTxm::AutoConnect, VARIANT_TRUE)) {
      throw CallFailure(E_FAIL, L"There is no transmitter.");
    }
    search_report_ = line_report();
    print(L"COM1:" + get(transmitter_, &_CTxm::get_ComSettings) + L", software " +
          get(transmitter_, &_CTxm::get_Version));
    for (const wchar_t* key : {L"1", L"4", L"21", L"30", L"110", L"133"}) read(key);
    change(L"30", 25.0);
    enter(kTechnicianPassword);
    change(L"30", 25.0);
    change(L"110", L"FT-1203 NORTH");
    change(L"30", kOutOfLimits);
    enter(L"");
  }

  // At a wrong baud rate the transmitter keeps silent: these time-outs are no faults.
  void show_line() const {
    print(L"Search for the baud rate: " + search_report_);
    print(L"With reading and writing: " + line_report());
    print(L"Refused writes: " + std::to_wstring(refusals_) + L", intended: " +
          std::to_wstring(kIntendedRefusals) + L" (a value out of limits)");
  }

 private:
  ComPtr<_CItem> item(const wchar_t* key) const {
    const auto items = get(transmitter_, &_CTxm::get_Items);
    const auto found = get(items, &_CItems::get_Item, _variant_t(key));
    if (!found) throw CallFailure(E_FAIL, L"There is no item " + std::wstring(key));
    return found;
  }

  std::wstring shown(const ComPtr<_CItem>& item) const {
    return text_of(get(transmitter_, &_CTxm::get_ItemValue, item.Get(), short{1}, short{-1},
                       short{-2}, smValueAndUnit, VARIANT_FALSE, VARIANT_TRUE));
  }

  static std::wstring name_of(const ComPtr<_CItem>& item) {
    return std::to_wstring(get(item, &_CItem::get_ItemID)) + L", " +
           get(item, &_CItem::get_Caption, short{1});
  }

  // With its parent: the item that carries its unit is read first.
  bool read_item(ComPtr<_CItem>& item) const {
    return get(transmitter_, &_CTxm::ReadTxm, item.GetAddressOf(), VARIANT_TRUE, VARIANT_FALSE) !=
           0;
  }

  void read(const wchar_t* key) const {
    auto item = this->item(key);
    print(name_of(item) + (read_item(item) ? L": " + shown(item) : L" cannot be read"));
  }

  // A refusal would open a message box, so the levels are compared before.
  void change(const wchar_t* key, const _variant_t& value) {
    auto item = this->item(key);
    if (!get(transmitter_, &_CTxm::IsWriteable, item.Get())) {
      print(name_of(item) + L" needs password level " +
            std::to_wstring(get(transmitter_, &_CTxm::GetWritePWLevel, item.Get())));
      return;
    }
    if (!read_item(item)) return;
    const std::wstring before = shown(item);
    put(transmitter_, &_CTxm::put_ItemValue, item.Get(), short{1}, short{-1}, short{-1},
        smValueOnly, VARIANT_FALSE, VARIANT_TRUE, value);
    const bool written =
        get(transmitter_, &_CTxm::WriteTxm, item.GetAddressOf(), VARIANT_TRUE) != 0;
    // A write that got no answer was not refused.
    if (!written && get(transmitter_, &_CTxm::get_ComError) == ComErrNone) ++refusals_;
    print(name_of(item) +
          (written && read_item(item) ? L": " + before + L" -> " + shown(item) : L": refused"));
  }

  void enter(const wchar_t* password) const {
    auto item = this->item(kEnterPassword);
    put(item, &_CItem::put_Value, short{1}, _variant_t(password));
    get(transmitter_, &_CTxm::WriteTxm, item.GetAddressOf(), VARIANT_TRUE);
    print(L"level " + std::to_wstring(get(transmitter_, &_CTxm::get_Password)));
  }

  std::wstring line_report() const { return get(transmitter_, &_CTxm::GetMessage); }

  ComPtr<_CUtility> utility_ = create<_CUtility>(CLSID_CUtility);
  ComPtr<_CTxm> transmitter_ = create<_CTxm>(CLSID_CTxm);
  ProgressListener listener_{get(utility_, &_CUtility::get_TxmEvents),
                             [](const std::wstring& line) { print(L"    " + line); }};
  std::wstring search_report_;
  int refusals_ = 0;
};

// The file is in the ANSI code page.
void show_history(const std::wstring& folder) {
  const std::wstring path = folder + L"\\Historian.csv";
  FILE* file = _wfopen(path.c_str(), L"rb");
  if (!file) throw CallFailure(E_FAIL, L"There is no file " + path);
  char line[1024];
  while (std::fgets(line, sizeof line, file)) {
    wchar_t wide[1024];
    MultiByteToWideChar(CP_ACP, 0, line, -1, wide, 1024);
    std::wstring text(wide);
    text.resize(text.find_last_not_of(L"\r\n") + 1);
    print(text);
  }
  std::fclose(file);
}

void run(wchar_t** arguments) {
  Host host(arguments[1], arguments[2], static_cast<int>(std::wcstol(arguments[3], nullptr, 10)));
  host.run();
  show_history(arguments[2]);
  host.show_line();
}

}  // namespace
}  // namespace fluxor

int main() {
  int count = 0;
  wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
  if (count != 4) {
    std::puts("Usage: read_write.exe <settings name> <history folder> <language index>");
    return 1;
  }
  if (FAILED(CoInitialize(nullptr))) return 1;
  int result = 0;
  try {
    fluxor::run(arguments);
    fluxor::print(L"DONE");
  } catch (const fluxor::CallFailure& failure) {
    fluxor::print(L"Error " + std::to_wstring(failure.code()) + L": " + failure.text());
    result = 1;
  }
  CoUninitialize();
  LocalFree(arguments);
  return result;
}
