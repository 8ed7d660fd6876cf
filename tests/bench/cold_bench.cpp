// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What is paid once: the first object of a process, the first call of a class by name, the image.
// The first two happen once in a process, so each round is a process of its own: this program
// again, with "--cold <what>". It hands back what it measured as its exit code, in nanoseconds; 1
// stands for a failure.

#include <algorithm>
#include <chrono>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "tests/bench/subject.h"
#include "tests/support/module.h"

namespace pv::bench {
namespace {

constexpr int kRounds = 15;
constexpr double kMostImage = 1.5 * 1024 * 1024;  // bytes
constexpr double kMostTouch = 2e6;                // nanoseconds, of all classes together

/// A member of each class that does little.
struct Call {
  const wchar_t* class_name;
  const wchar_t* member;
  const wchar_t* argument = nullptr;
};
constexpr Call kCalls[] = {
    {L"CVariable", L"Key"},
    {L"CVariables", L"Count"},
    {L"CItem", L"Key"},
    {L"CItems", L"Count"},
    {L"CVerItem", L"Key"},
    {L"CVerItems", L"Count"},
    {L"CVersion", L"Name"},
    {L"CVersions", L"Count"},
    {L"CDListMember", L"Key"},
    {L"CDListMembers", L"Count"},
    {L"CDList", L"Key"},
    {L"CDLists", L"Count"},
    {L"CUnit", L"Key"},
    {L"CUnits", L"Count"},
    {L"CDimension", L"Key"},
    {L"CDimensions", L"Count"},
    {L"CLanguage", L"Name"},
    {L"CLanguages", L"Count"},
    {L"CFile", L"FullName"},
    {L"CUtility", L"ecomDIRTY"},
    {L"CComDetail", L"Protocol"},
    {L"CComHistory", L"Count"},
    {L"CProtocol", L"Name"},
    {L"CProtocols", L"Count"},
    {L"CComUtility", L"CHexToInt", L"1F"},
    {L"CTxmEvents", L"RaiseSending"},
    {L"CFunction", L"Version"},
    {L"CFunctions", L"Count"},
    {L"CTxm", L"Name"},
    {L"CPassword", L"Current"},
    {L"CPasswords", L"Count"},
    {L"CInputBox", L"Value"},
    {L"CStatistics", L"Sample"},
    {L"CDirEntry", L"Path"},
    {L"CDirectory", L"Count"},
    {L"CError", L"Number"},
    {L"Cerrors", L"Count"},
};

template <class Work>
double nanoseconds_of(Work&& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count();
}

CLSID clsid_of(const std::wstring& prog_id) {
  CLSID clsid{};
  check(CLSIDFromProgID(prog_id.c_str(), &clsid));
  return clsid;
}

std::vector<CLSID> all_clsids() {
  std::vector<CLSID> clsids;
  for (const Call& call : kCalls) {
    clsids.push_back(clsid_of(std::wstring(L"pvItems32.") + call.class_name));
  }
  return clsids;
}

// ---------------------------------------------------------------- in a process of its own

double first_object(const wchar_t* prog_id) {
  return nanoseconds_of([&] {
    Ref<IDispatch> object;
    check(CoCreateInstance(clsid_of(prog_id), nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                           reinterpret_cast<void**>(object.put())));
  });
}

void call(const Ref<IDispatch>& object, const Call& call) {
  constexpr WORD kFlags = DISPATCH_METHOD | DISPATCH_PROPERTYGET;
  if (!call.argument) {
    late_bound(object.get(), call.member, kFlags);
    return;
  }
  const Bstr argument(call.argument);
  late_bound(object.get(), call.member, kFlags, {borrowed(argument)});
}

/// One call of each class: the first one, or what later ones take on average.
double calls(bool first) {
  std::vector<Ref<IDispatch>> objects;
  for (const CLSID& clsid : all_clsids()) objects.push_back(create(clsid));
  const auto pass = [&] {
    return nanoseconds_of([&] {
      for (std::size_t i = 0; i < objects.size(); ++i) call(objects[i], kCalls[i]);
    });
  };
  const double cold = pass();
  if (first) return cold;
  constexpr int kLater = 10;
  double later = 0;
  for (int i = 0; i < kLater; ++i) later += pass();
  return later / kLater;
}

/// An object and a call of each class, all that the library does once it is loaded.
double touch() {
  const std::vector<CLSID> clsids = all_clsids();
  create(clsids[0]);  // loads the library
  return nanoseconds_of([&] {
    for (std::size_t i = 0; i < clsids.size(); ++i) call(create(clsids[i]), kCalls[i]);
  });
}

struct Cold {
  std::wstring_view name;
  std::function<double()> measure;
};

const Cold kMeasurements[] = {
    {L"our-object", [] { return first_object(L"pvItems32.CItems"); }},
    {L"their-object", [] { return first_object(L"Scripting.Dictionary"); }},
    {L"first-calls", [] { return calls(true); }},
    {L"later-calls", [] { return calls(false); }},
    {L"touch", touch},
};

// ---------------------------------------------------------------- in the process that reports

double in_fresh_process(std::wstring_view what) {
  wchar_t program[MAX_PATH];
  GetModuleFileNameW(nullptr, program, ARRAYSIZE(program));
  std::wstring line = L"\"" + std::wstring(program) + L"\" --cold " + std::wstring(what);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(program, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                      &process)) {
    throw std::runtime_error("a process could not be started");
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD nanoseconds = 0;
  GetExitCodeProcess(process.hProcess, &nanoseconds);
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  if (nanoseconds <= 1) throw std::runtime_error("a measurement in a process of its own failed");
  return nanoseconds;
}

double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

Medians compare_fresh(std::wstring_view ours, std::wstring_view theirs) {
  std::vector<double> our_times, their_times;
  for (int round = 0; round < kRounds; ++round) {
    our_times.push_back(in_fresh_process(ours));
    their_times.push_back(in_fresh_process(theirs));
  }
  return {median(our_times), median(their_times)};
}

/// The library's file without the linker's symbols, which the package leaves out.
double image_bytes() {
  const std::string file = read_bytes(test::program_folder() + L"pvItems32.dll");
  const auto read = [&](std::size_t at, auto& into) {
    if (at + sizeof into > file.size()) throw std::runtime_error("the library is no image");
    std::memcpy(&into, file.data() + at, sizeof into);
  };
  IMAGE_DOS_HEADER dos{};
  IMAGE_NT_HEADERS headers{};
  read(0, dos);
  read(static_cast<std::size_t>(dos.e_lfanew), headers);
  DWORD end = 0;
  auto at = static_cast<std::size_t>(dos.e_lfanew) + sizeof headers;
  for (WORD i = 0; i < headers.FileHeader.NumberOfSections;
       ++i, at += sizeof(IMAGE_SECTION_HEADER)) {
    IMAGE_SECTION_HEADER section{};
    read(at, section);
    const bool is_debug = section.Name[0] == '/';  // a long name, among the symbols
    if (!is_debug) end = std::max(end, section.PointerToRawData + section.SizeOfRawData);
  }
  return end;
}

}  // namespace

unsigned measure_in_this_process(const std::wstring& what) {
  for (const Cold& each : kMeasurements) {
    if (each.name == what) return static_cast<unsigned>(each.measure());
  }
  throw std::runtime_error("there is no such measurement");
}

void measure_cold(Report& report) {
  in_fresh_process(L"our-object");  // the files are in the system's cache from now on
  in_fresh_process(L"their-object");
  report.ratio("first object of a process", "Scripting.Dictionary",
               compare_fresh(L"our-object", L"their-object"), 1.5);
  report.ratio("first call by name of each of the 37 classes", "the same calls later",
               compare_fresh(L"first-calls", L"later-calls"), 1.5);
  report.time("an object and a call by name of each class", "these calls alone, later",
              compare_fresh(L"touch", L"later-calls"), kMostTouch);
  report.size("image of the library", "1.5 MB", {image_bytes(), kMostImage}, 1);
}

}  // namespace pv::bench
