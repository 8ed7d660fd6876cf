// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Settings files: loading against the platform's way to read such files, saving, and growth.
#include <algorithm>
#include <stdexcept>

#include "tests/bench/subject.h"

namespace pv::bench {
namespace {

constexpr int kItems = 10'000;
constexpr int kVariables = 4;
constexpr double kLinear = 1.5;

void save_items(const Ref<_CItems>& items, const std::wstring& path) {
  const Bstr file(path);
  VARIANT_BOOL saved = VARIANT_FALSE;
  check(items->SaveSettingsNew(file, &saved));
  if (!saved) throw std::runtime_error("an item file could not be saved");
}

struct ItemFile {
  ItemFile(int count, std::wstring_view name) : items(count), path(scratch_file(name)) {
    save_items(make_items(count, kVariables), path);
  }
  Ref<_CItems> load() const {
    auto loaded = create<CItems, _CItems>();
    const Bstr file(path);
    VARIANT_BOOL worked = VARIANT_FALSE;
    check(loaded->LoadSettingsNew(file, &worked));
    long count = 0;
    check(loaded->get_AllItemCount(&count));
    if (!worked || count != items) throw std::runtime_error("an item file could not be loaded");
    return loaded;
  }

  int items;
  std::wstring path;
};

// The keys of some items, spread over the whole file.
void read_sample(const ItemFile& file, int sampled) {
  const wchar_t* keys[] = {L"Count", L"Settings", L"VAR1", L"VAR2", L"VAR3", L"VAR4"};
  wchar_t text[512];
  for (int i = 0; i < sampled; ++i) {
    const int item = 1 + i * (file.items / sampled);
    const std::wstring section = L"ITEM" + std::to_wstring(item);
    for (const wchar_t* key : keys) {
      if (GetPrivateProfileStringW(section.c_str(), key, L"", text, ARRAYSIZE(text),
                                   file.path.c_str()) == 0) {
        throw std::runtime_error("the private-profile functions do not find a key");
      }
    }
  }
}

// Reads and splits the file into lines and fields, the least that any loader does.
void scan(const std::wstring& path) {
  const std::string bytes = read_bytes(path);
  std::vector<std::string> fields;
  std::size_t total = 0;
  for (std::size_t at = 0; at < bytes.size();) {
    const std::size_t end = std::min(bytes.find('\n', at), bytes.size());
    fields.clear();
    for (std::size_t from = at; from < end;) {
      const std::size_t bar = std::min(bytes.find('|', from), end);
      fields.emplace_back(bytes, from, bar - from);
      from = bar + 1;
    }
    total += fields.size();
    at = end + 1;
  }
  if (total == 0) throw std::runtime_error("the scan found nothing");
}

// What the library does for a safe replacement.
void write_and_rename(const std::wstring& path, const std::string& bytes) {
  const std::wstring beside = path + L".new";
  const HANDLE file = CreateFileW(beside.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  DWORD written = 0;
  const bool worked =
      WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
      FlushFileBuffers(file);
  CloseHandle(file);
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (!worked || !MoveFileExW(beside.c_str(), path.c_str(), kHow)) {
    throw std::runtime_error("a file could not be written");
  }
}

void measure_save(Report& report, const Ref<_CItems>& items, const std::string& bytes) {
  const std::wstring ours = scratch_file(L"save.itm"), theirs = scratch_file(L"other.itm");
  report.ratio(
      "save 10,000 items x 4 variables", "the same bytes, new file renamed",
      compare({[&] { save_items(items, ours); }}, {[&] { write_and_rename(theirs, bytes); }}), 2);
}

void measure_items(Report& report) {
  const ItemFile small(kItems / 10, L"small.itm"), large(kItems, L"large.itm");
  const Task load{[&] { large.load(); }};
  constexpr int kSampled = 10;
  constexpr double kSampleShare = static_cast<double>(kSampled) / kItems;
  report.ratio("load 10,000 items x 4 variables", "private-profile functions, all keys (by sample)",
               compare(load, {[&] { read_sample(large, kSampled); }, kSampleShare}), 0.01);
  report.ratio("load 10,000 items x 4 variables", "scan into lines and fields",
               compare(load, {[&] { scan(large.path); }}), 2.5);
  report.ratio("load 10,000 items, per item", "load 1,000 items, per item",
               compare({[&] { large.load(); }, kItems}, {[&] { small.load(); }, kItems / 10}),
               kLinear);
  measure_save(report, large.load(), read_bytes(large.path));
}

struct DimensionFile {
  DimensionFile(int count, int units, std::wstring_view name)
      : total(count * units), path(scratch_file(name)) {
    VARIANT_BOOL saved = VARIANT_FALSE;
    check(make_dimensions(count, units)->SaveSettingsNew(Bstr(path), &saved));
    if (!saved) throw std::runtime_error("a dimension file could not be saved");
  }
  Task load() const {
    return {[this] {
              VARIANT_BOOL loaded = VARIANT_FALSE;
              check(create<CDimensions, _CDimensions>()->LoadSettingsNew(Bstr(path), &loaded));
              if (!loaded) throw std::runtime_error("a dimension file could not be loaded");
            },
            static_cast<double>(total)};
  }

  int total;
  std::wstring path;
};

void measure_dimensions(Report& report) {
  const DimensionFile small(22, 20, L"small.dim"), large(200, 200, L"large.dim");
  report.ratio("load 200 x 200 units, per unit", "load 22 x 20 units, per unit",
               compare(large.load(), small.load()), kLinear);
}

}  // namespace

void measure_files(Report& report) {
  measure_items(report);
  measure_dimensions(report);
}

}  // namespace pv::bench
