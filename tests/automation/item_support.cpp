#include "tests/automation/item_support.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "tests/support/module.h"

namespace pv::test {

namespace fs = std::filesystem;

TestFolder::TestFolder() {
  static int count = 0;
  path_ = scratch_folder() + L"items" + std::to_wstring(++count) + L"\\";
  fs::create_directories(path_);
}

std::wstring TestFolder::write(std::wstring_view name, std::string_view bytes) const {
  const std::wstring path = file(name);
  std::ofstream stream(fs::path(path), std::ios::binary);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  if (!stream.flush()) throw std::runtime_error("cannot write " + printable(path));
  return path;
}

bool TestFolder::takes(const std::wstring& name) const {
  const HANDLE probe = CreateFileW(file(name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                   FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (probe == INVALID_HANDLE_VALUE) return false;
  CloseHandle(probe);
  return true;
}

Texts TestFolder::names() const {
  Texts names;
  for (const auto& entry : fs::directory_iterator(path_)) {
    names.push_back(entry.path().filename().wstring());
  }
  std::sort(names.begin(), names.end());
  return names;
}

std::string bytes_of(const std::wstring& file) {
  std::ifstream stream(fs::path(file), std::ios::binary);
  if (!stream) throw std::runtime_error("cannot read " + printable(file));
  return {std::istreambuf_iterator<char>(stream), {}};
}

std::wstring example_file(std::wstring_view name) {
  return fs::path(PV_SOURCE_DIR).wstring() + L"/examples/data/" + std::wstring(name);
}

LockedFile::LockedFile(const std::wstring& file, DWORD share)
    : handle_(CreateFileW(file.c_str(), GENERIC_READ, share, nullptr, OPEN_EXISTING, 0, nullptr)) {
  if (handle_ == INVALID_HANDLE_VALUE) throw std::runtime_error("cannot lock " + printable(file));
}

LockedFile::~LockedFile() { CloseHandle(handle_); }

std::wstring user_decimal() {
  wchar_t text[8] = L"";
  GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, text, ARRAYSIZE(text));
  return text;
}

std::vector<Object> members_of(const Object& collection) {
  const Value held = collection.invoke(DISPID_NEWENUM, DISPATCH_PROPERTYGET).value;
  const auto enumerator = query<IEnumVARIANT>(held.punkVal);
  if (!enumerator) throw CallFailed("the collection has no enumerator");
  std::vector<Object> members;
  Value member;
  while (enumerator->Next(1, &member, nullptr) == S_OK) {
    members.emplace_back(member);
    VariantClear(&member);
  }
  return members;
}

Texts texts_of(const Object& collection, std::wstring_view property) {
  Texts texts;
  for (const Object& member : members_of(collection)) texts.push_back(member.get(property).text());
  return texts;
}

Object add_variable(const Object& variables, std::wstring_view key) {
  return variables.call_object(L"Add", key, L"Caption " + std::wstring(key), L"", L"", 0, 1, 1, 2,
                               0.0, 0, 4);
}

Object add_item(const Object& items, std::wstring_view key, int item_id, int variables) {
  const Object item =
      items.call_object(L"Add", key, item_id, true, 1, false, false, 0.5f, 4, Value::missing());
  for (int i = 1; item && i <= variables; ++i) {
    add_variable(item.get_object(L"Variables"), std::to_wstring(i));
  }
  return item;
}

Outcome item_by_variable(const Object& collection, Value index) {
  return collection.try_get(L"Item", by_ref(index));
}

}  // namespace pv::test
