// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// What the benchmarks work on: objects of the library made without the registry, early bound, and
// the platform's own objects beside them.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "com/boundary.h"
#include "com/ref.h"
#include "com/variant.h"
#include "pvItems32.h"
#include "tests/bench/report.h"

namespace pv::bench {

/// A new object of the library beside this program, by its class.
Ref<IDispatch> create(REFCLSID clsid);
template <class Coclass, class Interface>
Ref<Interface> create() {
  return query<Interface>(create(__uuidof(Coclass)).get());
}

/// Items "1", "2", ... with `variables` variables each.
Ref<_CItems> make_items(int count, int variables);
/// Dimensions of `units` units each.
Ref<_CDimensions> make_dimensions(int count, int units);

/// In the folder that the environment variable PV_BENCH_FOLDER names, one of a memory file system
/// for the best, else in a temporary one.
std::wstring scratch_file(std::wstring_view name);
std::string read_bytes(const std::wstring& file);

/// A late-bound call as a script host makes it: the name is looked up, then the member invoked.
/// Arguments stand in reverse order.
Variant late_bound(IDispatch* object, const wchar_t* member, WORD flags,
                   std::initializer_list<VARIANT> reversed_arguments = {});

Ref<ITypeInfo> type_info_of(IDispatch* object);

VARIANT borrowed(BSTR text);
VARIANT borrowed(IDispatch** object);
VARIANT number(short value);

// The groups of measurements.
void measure_lookups(Report& report);
void measure_files(Report& report);
void measure_values(Report& report);
void measure_exchanges(Report& report);
void measure_events(Report& report);
void measure_statistics(Report& report);
void measure_memory(Report& report);
void measure_cold(Report& report);
/// One measurement that needs a process of its own, in nanoseconds; measure_cold starts it.
unsigned measure_in_this_process(const std::wstring& what);
/// Of sixteen simulated transmitters that answer at every baud rate, as tests/support/line_host.h
/// has them.
void measure_lines(Report& report, const std::wstring& counts_folder);

}  // namespace pv::bench
