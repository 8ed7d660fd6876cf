// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/automation/txm/audit.h"

namespace pv::test {
namespace {

std::string without_moment(const std::string& line) {
  const std::string date = printable(today()) + ",";
  return line.starts_with(date) ? line.substr(line.find(',', date.size()) + 1) : line;
}

}  // namespace

std::wstring today() {
  wchar_t text[64] = L"";
  GetDateFormatW(LOCALE_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr, text, ARRAYSIZE(text));
  return text;
}

std::wstring time_of_day() {
  wchar_t text[64] = L"";
  GetTimeFormatW(LOCALE_USER_DEFAULT, LOCALE_NOUSEROVERRIDE, nullptr, nullptr, text,
                 ARRAYSIZE(text));
  return text;
}

std::string entry(const std::string& id, const std::string& value, const std::string& comment) {
  return "Ann,Fluxor,1,TXM#1:Untitled TXM (Fluxor)," + id + ",Caption 1," + value + ",," + comment;
}

Lines HistoryFile::lines() const {
  const std::string content = bytes();
  Lines found;
  for (std::size_t start = 0; start < content.size();) {
    const auto end = content.find("\r\n", start);
    if (end == std::string::npos) {
      ADD_FAILURE() << "a line has no end";
      break;
    }
    found.push_back(without_moment(content.substr(start, end - start)));
    start = end + 2;
  }
  return found;
}

Audit::Audit() : directory_before_(utility.get(L"AppDirectory", kHistoryDirectory)) {
  device_answers(true);
  utility.put(L"AppDirectory", kHistoryDirectory, history.folder());
  txm.put(L"Historian", kSilent);
  txm.put(L"HistorianTechName", L"Ann");
  txm.put(L"HistorianComment", L"why");
}

Audit::~Audit() { utility.put(L"AppDirectory", kHistoryDirectory, directory_before_); }

Object Audit::item_with_variables(int count) {
  const Object item = add_item(7, 0, true, 10);
  for (int i = 2; i <= count; ++i) {
    item.get_object(L"Variables")
        .call(L"Add", std::to_wstring(i), L"Caption " + std::to_wstring(i), L"", L"", 0, 17, 1, 2,
              i * 10, 0, 4);
  }
  return item;
}

}  // namespace pv::test
