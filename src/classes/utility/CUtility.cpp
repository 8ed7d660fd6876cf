// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "classes/utility/CUtility.h"

#include "apartment/localized.h"
#include "apartment/shared_objects.h"
#include "apartment/thread_state.h"
#include "com/call.h"
#include "com/lenient.h"
#include "core/items/data_type.h"
#include "core/text/library_version.h"
#include "core/text/trim.h"
#include "core/txm/txm_type_name.h"
#include "dialogs/access_editor.h"
#include "dialogs/message_box.h"
#include "host/late_bound.h"
#include "host/owner_window.h"
#include "host/window_memory.h"
#include "platform/bitmap_size.h"
#include "platform/code_page.h"
#include "platform/locale.h"
#include "platform/open_file.h"
#include "platform/profile.h"

namespace pv {

template ClassEntry class_entry<CUtility>();

namespace {

constexpr short kPictureConnected = 200;
constexpr short kPictureNotConnected = 201;
constexpr short kModemPort = 9;

std::wstring text(BSTR value) { return std::wstring(view_of(value)); }

std::wstring& directory_slot(AppDirectories directory) {
  const auto slot = static_cast<std::size_t>(directory);
  if (slot >= ThreadState::kDirectories) {
    throw automation_error(ErrorCode::kSubscript, L"directory " + std::to_wstring(directory));
  }
  return thread_state().directories[slot];
}

std::wstring with_first_replaced(std::wstring text, wchar_t what, wchar_t by) {
  if (const auto at = text.find(what); at != std::wstring::npos) text[at] = by;
  return text;
}

// The platform reads numbers with one decimal separator only; a trial shows which one.
bool is_number(const VARIANT& value) {
  const bool point_fails = !attempt([] { to_double(Variant(L"0.5")); });
  const std::wstring given = to_text(dereferenced(value));
  to_double(Variant(point_fails ? with_first_replaced(given, L'.', L',')
                                : with_first_replaced(given, L',', L'.')));
  return true;
}

// If anything fails, the position in the file is restored.
Bstr read_open_file(const OpenFile& file, std::wstring_view section, std::wstring_view key,
                    std::wstring_view fallback, bool reset, bool search_section_first) {
  const auto before = file.position();
  try {
    if (search_section_first && reset) file.seek(0);
    const auto start = file.position();
    const auto bytes = file.rest();
    if (!bytes) return Bstr(fallback);
    SettingsReader reader(*bytes, ansi_codec());
    Bstr value(reader.value(section, key, fallback, false, search_section_first));
    file.seek(start + reader.offset());  // the next search reads on from there
    return value;
  } catch (...) {
    file.seek(before);
    throw;
  }
}

bool write_line(short file, const std::wstring& line) {
  return OpenFile(file).write(ansi_codec().narrow(line) + "\r\n");
}

bool is_application(const LateBound& object) {
  return object.has(L"Title") && object.has(L"Major") && object.has(L"Minor") &&
         object.has(L"Revision");
}

}  // namespace

STDMETHODIMP CUtility::get_ecomDIRTY(BSTR* result) noexcept {
  return method_with_result(result, [] { return L"?"; });
}

STDMETHODIMP CUtility::get_RegSeparator(BSTR* result) noexcept {
  return method_with_result(result, [] { return L"|"; });
}

STDMETHODIMP CUtility::get_PICID_TXMCONNECTED(short* result) noexcept {
  return method_with_result(result, [] { return kPictureConnected; });
}

STDMETHODIMP CUtility::get_PICID_TXMNOTCONNECTED(short* result) noexcept {
  return method_with_result(result, [] { return kPictureNotConnected; });
}

STDMETHODIMP CUtility::get_ModemPortID(short* result) noexcept {
  return method_with_result(result, [] { return kModemPort; });
}

STDMETHODIMP CUtility::pvCBool(VARIANT value, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return lenient_boolean(value); });
}

STDMETHODIMP CUtility::pvCByte(VARIANT value, unsigned char* result) noexcept {
  return method_with_result(result, [&] { return lenient_integer<unsigned char>(value); });
}

STDMETHODIMP CUtility::pvCInt(VARIANT value, short* result) noexcept {
  return method_with_result(result, [&] { return lenient_integer<short>(value); });
}

STDMETHODIMP CUtility::pvCLng(VARIANT value, long* result) noexcept {
  return method_with_result(result, [&] { return lenient_integer<long>(value); });
}

STDMETHODIMP CUtility::pvCSng(VARIANT value, float* result) noexcept {
  return method_with_result(result, [&] {
    const auto single = single_of(lenient_number(value));
    if (!single)
      throw automation_error(ErrorCode::kOverflow, lenient_number_text(value, decimal_separator()));
    return *single;
  });
}

STDMETHODIMP CUtility::pvCDbl(VARIANT value, double* result) noexcept {
  return method_with_result(result, [&] { return lenient_number(value); });
}

STDMETHODIMP CUtility::pvCStr(VARIANT value, BSTR* result) noexcept {
  return method_with_result(result, [&] { return to_text(dereferenced(value)); });
}

STDMETHODIMP CUtility::pvCNumber(VARIANT value, BSTR* result) noexcept {
  return method_with_result(result,
                            [&] { return lenient_number_text(value, decimal_separator()); });
}

STDMETHODIMP CUtility::pvCVar(VARIANT value, VARIANT* result) noexcept {
  return method_with_result(result, [&] {
    Variant copy;
    attempt([&] { copy = dereferenced(value); });
    return copy;
  });
}

STDMETHODIMP CUtility::IsNumber(VARIANT value, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return attempt([&] { is_number(value); }); });
}

STDMETHODIMP CUtility::pvTrim(BSTR value, BSTR* result) noexcept {
  return method_with_result(result, [&] { return trim(view_of(value)); });
}

STDMETHODIMP CUtility::pvGetSetting(BSTR file, BSTR section, BSTR key, BSTR fallback,
                                    VARIANT* result) noexcept {
  return method_with_result(result, [&] {
    return Variant(read_profile(text(file), text(section), text(key), text(fallback)));
  });
}

STDMETHODIMP CUtility::pvSaveSetting(BSTR file, BSTR section, BSTR key, BSTR setting,
                                     VARIANT_BOOL* result) noexcept {
  return method_with_result(
      result, [&] { return write_profile(text(file), text(section), text(key), text(setting)); });
}

STDMETHODIMP CUtility::pvClearSetting(BSTR file, BSTR section, VARIANT_BOOL* result) noexcept {
  return method_with_result(result,
                            [&] { return clear_profile_section(text(file), text(section)); });
}

STDMETHODIMP CUtility::GetIniSettings(short file, BSTR section, BSTR key, BSTR fallback,
                                      VARIANT_BOOL reset, VARIANT_BOOL search_section_first,
                                      BSTR* result) noexcept {
  return method_with_result(result, [&] {
    return read_open_file(OpenFile(file), view_of(section), view_of(key), view_of(fallback),
                          reset != VARIANT_FALSE, search_section_first != VARIANT_FALSE);
  });
}

STDMETHODIMP CUtility::SaveIniSection(short file, BSTR section, VARIANT_BOOL* result) noexcept {
  return method_with_result(
      result, [&] { return write_line(file, format_section_line(view_of(section))); });
}

STDMETHODIMP CUtility::SaveIniSettings(short file, BSTR key, BSTR settings,
                                       VARIANT_BOOL* result) noexcept {
  return method_with_result(
      result, [&] { return write_line(file, format_value_line(view_of(key), view_of(settings))); });
}

STDMETHODIMP CUtility::get_AppIniFileName(BSTR* result) noexcept {
  return method_with_result(result, [] { return thread_state().ini_file; });
}

STDMETHODIMP CUtility::put_AppIniFileName(BSTR value) noexcept {
  return method([&] { thread_state().ini_file = view_of(value); });
}

STDMETHODIMP CUtility::get_AppHelpFileName(BSTR* result) noexcept {
  return method_with_result(result, [] { return thread_state().help_file; });
}

STDMETHODIMP CUtility::put_AppHelpFileName(BSTR value) noexcept {
  return method([&] { thread_state().help_file = view_of(value); });
}

STDMETHODIMP CUtility::get_AppDirectory(AppDirectories directory, BSTR* result) noexcept {
  return method_with_result(result, [&] { return directory_slot(directory); });
}

STDMETHODIMP CUtility::put_AppDirectory(AppDirectories directory, BSTR value) noexcept {
  return method([&] { directory_slot(directory) = view_of(value); });
}

STDMETHODIMP CUtility::get_Application(IDispatch** result) noexcept {
  return method_with_result(result, [] { return thread_state().application; });
}

STDMETHODIMP CUtility::putref_Application(IDispatch* value) noexcept {
  return method([&] {
    const LateBound application{Ref<IDispatch>(value)};
    if (value && !is_application(application)) {
      throw automation_error(ErrorCode::kTypeMismatch, L"the object has no Title or version");
    }
    thread_state().application = application.object();
  });
}

STDMETHODIMP CUtility::AppVersion(IDispatch* application, BSTR* result) noexcept {
  return method_with_result(result, [&] {
    const LateBound object{Ref<IDispatch>(application)};
    const long major = to_long(object.get(L"Major"));
    const long minor = to_long(object.get(L"Minor"));
    return format_version(major, minor, to_long(object.get(L"Revision")));
  });
}

STDMETHODIMP CUtility::get_pvItem32Version(BSTR* result) noexcept {
  return method_with_result(result, [] { return library_identification(); });
}

STDMETHODIMP CUtility::get_CurrentDate(BSTR* result) noexcept {
  return method_with_result(result, [] { return current_time_text(L"yyyy/mmmm/dd"); });
}

STDMETHODIMP CUtility::TxmTypeName(short type, BSTR* result) noexcept {
  return method_with_result(result, [&] { return txm_type_name(type); });
}

STDMETHODIMP CUtility::GetDataType(_CItem* item, short variable, pvDataTypes* result) noexcept {
  return method_with_result(
      result, [&] { return data_class(result_of(item, &_CItem::get_DataType, variable)); });
}

STDMETHODIMP CUtility::GetPictureSize(long bitmap, long dc, long* height, long* width) noexcept {
  return method([&] {
    long& width_out = *required(width);
    long& height_out = *required(height);
    const BitmapSize size = bitmap_size(bitmap, dc);
    width_out = size.width;
    height_out = size.height;
  });
}

STDMETHODIMP CUtility::get_pvString(pvStringTypes id, BSTR* result) noexcept {
  return method_with_result(result, [&] { return published_text(id); });
}

STDMETHODIMP CUtility::pvMsgBox(BSTR prompt, short buttons, short picture, BSTR title,
                                IDispatch* owner, long* result) noexcept {
  return method_with_result(result, [&] {
    MessageBoxRequest message;
    message.prompt = view_of(prompt);
    message.buttons = buttons;
    message.picture = picture;
    message.title = view_of(title);
    message.owner = owner_window(owner);
    return show_message_box(message);
  });
}

STDMETHODIMP CUtility::SaveWindowPos(IDispatch* source, BSTR file, BSTR section, BSTR key,
                                     VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    return save_placement(LateBound(Ref<IDispatch>(source)),
                          {text(file), text(section), text(key)});
  });
}

STDMETHODIMP CUtility::RestoreWindowPos(IDispatch* dest, BSTR file, BSTR section, BSTR key,
                                        VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] {
    return restore_placement(LateBound(Ref<IDispatch>(dest)),
                             {text(file), text(section), text(key)});
  });
}

STDMETHODIMP CUtility::get_Languages(_CLanguages** result) noexcept {
  return method_with_result(result, [] { return shared_languages(); });
}

STDMETHODIMP CUtility::get_PWS(_CPasswords** result) noexcept {
  return method_with_result(result, [] { return shared_passwords(); });
}

STDMETHODIMP CUtility::ItemAccessEdit(_CTxm* txm, _CItem* item, VARIANT_BOOL* result) noexcept {
  return method_with_result(result, [&] { return edit_access(txm, item); });
}

STDMETHODIMP CUtility::get_TxmEvents(_CTxmEvents** result) noexcept {
  return method_with_result(result, [] { return shared_events(); });
}

STDMETHODIMP CUtility::get_pvFile(_CFile** result) noexcept {
  return method_with_result(result, [] { return shared_file(); });
}

}  // namespace pv
