// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include <algorithm>
#include <array>

#include "apartment/localized.h"
#include "apartment/thread_state.h"
#include "classes/txm/CTxm.h"
#include "com/call.h"
#include "core/text/file_name.h"
#include "core/text/number_text.h"
#include "core/txm/history_text.h"
#include "dialogs/technician_prompt.h"
#include "platform/code_page.h"
#include "platform/files.h"
#include "platform/locale.h"
#include "resources/text_ids.h"

// The audit log: who changed what, when and why. Errors are ignored; results tell whether lines
// were written.
namespace pv {
namespace {

constexpr short kGeneralDecimals = -1;
constexpr long kMostVariables = 32766;  // indexes are 16-bit integers

// Items that are recorded with a change: the state of the device when it was made.
constexpr std::array kConditionItems = {5, 223, 33, 60, 65, 183, 184};

std::wstring history_file() {
  FileName name = at_path(thread_state().directories[appDirHistory]);
  name.name = L"Historian";
  name.extension = L"csv";
  return make_full_name(name);
}

std::wstring header_line() {
  std::vector<std::wstring> columns;
  for (int id = TEXT_COLUMN_DATE; id <= TEXT_COLUMN_COMMENTS; ++id)
    columns.push_back(localized(id));
  return history_line(columns);
}

std::string bytes_of(std::wstring_view line) { return ansi_codec().narrow(line) + "\r\n"; }

// Each line is one write call, so that the lines of two hosts never mix. All of them are made
// before the first is written: running out of memory leaves no partial entry.
bool append_lines(const std::wstring& file, const std::vector<std::wstring>& lines) {
  const std::string header = bytes_of(header_line());
  std::vector<std::string> all;
  all.reserve(lines.size());
  for (const std::wstring& line : lines) all.push_back(bytes_of(line));
  create_file(file, header);
  bool written = true;
  for (const std::string& line : all) written &= append_file(file, line);
  return written;
}

bool append_empty_line(const std::wstring& file) { return append_file(file, "\r\n"); }

// A field that cannot be read stays empty.
template <class Field>
std::wstring field(Field&& read) {
  std::wstring text;
  attempt([&] { text = read(); });
  return text;
}

TechnicianNote note_of(BSTR name, BSTR comment) {
  return {std::wstring(view_of(name)), std::wstring(view_of(comment))};
}

}  // namespace

std::optional<std::wstring> CTxm::append_entry(_CItem* item, const TechnicianNote& note) {
  if (!item) {
    historian_ = histDisabled;
    return std::nullopt;
  }
  const auto shown = [&](short variable, ShowModeTypes display) {
    return field([&] {
      return to_text(shown_value(item, variable, -1, kGeneralDecimals, display, true, true));
    });
  };
  HistoryEntry entry;
  entry.date = field([] { return current_time_text(L"short date"); });
  entry.time = field([] { return current_time_text(L"long time"); });
  entry.signature = note.name;
  entry.txm_type = field([&] { return server_.type_name(); });
  entry.txm_address = format_integer(address_);
  entry.txm_name = field([&] { return formatted(txmNameFull); });
  entry.item_id = field([&] { return format_integer(result_of(item, &_CItem::get_ItemID)); });
  entry.comment = note.comment;
  long count = 0;
  attempt(
      [&] { count = result_of(result_of(item, &_CItem::get_Variables), &_CVariables::get_Count); });
  for (short i = 1; i <= std::min(count, kMostVariables); ++i) {
    HistoryVariable variable{
        field([&] { return result_of(item, &_CItem::get_Caption, i); }), {}, {}};
    if (i > 1 || count == 1) {  // the first of several has a caption only
      variable.value = history_value(shown(i, smValueOnly));
      variable.unit = shown(i, smUnitOnly);
    }
    entry.variables.push_back(std::move(variable));
  }

  std::wstring file = history_file();
  if (!append_lines(file, history_lines(entry))) return std::nullopt;
  return file;
}

bool CTxm::record_change(_CItem* item, const TechnicianNote& note) {
  // The empty line ends the block of the last entry. A host may change the directory in between.
  std::wstring file = history_file();
  bool recorded = true;
  const auto append = [&](_CItem* changed, const TechnicianNote& signature) {
    auto entry_file = append_entry(changed, signature);
    recorded &= entry_file.has_value();
    if (entry_file) file = std::move(*entry_file);
  };
  switch (txm_type_) {
    case txmFluxor:
    case txmHydrel:
    case txmRivane:
    case txmGravixTester:
      append(item, note);
      break;
    case txmGravix:
      append(item, note);
      for (int id : kConditionItems) {
        Ref<_CItem> condition = item_with_id(id);
        if (condition) read(condition.in_out(), false, false);
        if (!condition) continue;  // the server may have taken the item away
        append(condition.get(), {note.name, localized(TEXT_CONDITIONS)});
      }
      break;
    default:
      break;
  }
  append_empty_line(file);
  return recorded;
}

STDMETHODIMP CTxm::DoHistorian(_CItem* item, BSTR tech_name, BSTR comment,
                               VARIANT_BOOL* result) noexcept {
  return method_with_result(result,
                            [&] { return record_change(item, note_of(tech_name, comment)); });
}

STDMETHODIMP CTxm::DoHistorianX(_CItem* item, BSTR tech_name, BSTR comment,
                                VARIANT_BOOL* result) noexcept {
  return method_with_result(
      result, [&] { return append_entry(item, note_of(tech_name, comment)).has_value(); });
}

STDMETHODIMP CTxm::WriteLine(VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return append_empty_line(history_file()); });
}

}  // namespace pv
