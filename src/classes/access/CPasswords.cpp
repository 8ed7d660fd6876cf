// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/access/CPasswords.h"

#include <exception>

#include "core/access/password_code.h"
#include "core/text/number_text.h"
#include "dialogs/password_dialog.h"
#include "platform/code_page.h"

namespace pv {

template ClassEntry class_entry<CPasswords>();

namespace {

constexpr DISPID kOnPasswordSet = 1;
constexpr DISPID kOnPasswordReset = 2;

std::wstring encoded(std::wstring_view text) { return encode_password(ansi_codec().narrow(text)); }
std::wstring decoded(std::wstring_view digits) {
  return ansi_codec().widen(decode_password(digits));
}

const std::wstring& element(const std::vector<std::wstring>& elements, std::size_t index) {
  if (index >= elements.size()) {
    throw automation_error(ErrorCode::kSubscript, L"element " + std::to_wstring(index));
  }
  return elements[index];
}

Ref<CPassword> password_of(std::wstring_view reference, std::wstring_view current) {
  auto password = make<CPassword>();
  password->assign(reference, current);
  return password;
}

}  // namespace

Ref<CPassword> CPasswords::add(std::wstring_view reference, std::wstring_view current) {
  auto password = password_of(reference, current);
  password->set_index(next_index());
  list_.append(password);
  return password;
}

short CPasswords::next_index() const { return to_short(Variant(list_.size() + 1)); }

void CPasswords::fire_state(DISPID event, short index) {
  const Variant argument(index);
  fire(event, static_cast<VARIANT>(argument));
}

STDMETHODIMP CPasswords::Add(BSTR reference, BSTR current, _CPassword** result) noexcept {
  return method_with_result(result, [&] { return add(view_of(reference), view_of(current)); });
}

STDMETHODIMP CPasswords::ReIndex() noexcept {
  return method([&] {
    short position = 0;
    for (const auto& password : list_) password->set_index(++position);
  });
}

STDMETHODIMP CPasswords::Status(short index, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    if (list_.at(static_cast<long>(index))->is_open()) return true;
    const bool edited = edit_password(this, Variant(index));
    return edited && list_.at(static_cast<long>(index))->is_open();
  });
}

STDMETHODIMP CPasswords::Edit(VARIANT index, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return edit_password(this, dereferenced(index)); });
}

STDMETHODIMP CPasswords::Save(BSTR* result) noexcept {
  return method_with_result(result, [&] {
    std::wstring text = format_integer(list_.size()) + L"|";
    for (const auto& password : list_) {
      text += encoded(password->reference()) + L"|" + encoded(password->current()) + L"|";
    }
    return text;
  });
}

// What cannot be read raises an error; the passwords before it are taken. All memory is had before
// the former passwords go, so that a lack of it changes nothing.
short CPasswords::load(std::wstring_view settings) {
  const std::vector<std::wstring> elements = split_record(settings);
  const double count = to_double(Variant(element(elements, 0)));
  std::vector<Members> loaded;
  std::exception_ptr unreadable;
  try {
    for (std::size_t i = 1; static_cast<double>(i) <= count * 2; i += 2) {
      const std::wstring reference = decoded(element(elements, i));
      loaded.emplace_back(no_members())
          .append(password_of(reference, decoded(element(elements, i + 1))));
    }
  } catch (const automation_error&) {
    unreadable = std::current_exception();
  }
  Members room = no_members();
  room.reserve(loaded.size());
  std::swap(list_, room);
  room.clear();
  for (Members& each : loaded) {
    const Ref<CPassword> password = each.at(1);
    password->set_index(next_index());
    list_.take_over(std::move(each));
    fire_state(password->is_open() ? kOnPasswordSet : kOnPasswordReset, password->index());
  }
  if (unreadable) std::rethrow_exception(unreadable);
  return to_short(Variant(count));
}

STDMETHODIMP CPasswords::Load(BSTR settings, short* result) noexcept {
  return method_with_result(result, [&] { return load(view_of(settings)); });
}

STDMETHODIMP CPasswords::Encode64(BSTR text, BSTR* result) noexcept {
  return method_with_result(result, [&] { return encoded(view_of(text)); });
}

STDMETHODIMP CPasswords::Decode64(BSTR text, BSTR* result) noexcept {
  return method_with_result(result, [&] { return decoded(view_of(text)); });
}

STDMETHODIMP CPasswords::RaiseOnPasswordSet(short index, VARIANT* result) noexcept {
  return method_with_result(result, [&] {
    fire_state(kOnPasswordSet, index);
    return Variant();
  });
}

STDMETHODIMP CPasswords::RaiseOnPasswordReset(short index, VARIANT* result) noexcept {
  return method_with_result(result, [&] {
    fire_state(kOnPasswordReset, index);
    return Variant();
  });
}

}  // namespace pv
