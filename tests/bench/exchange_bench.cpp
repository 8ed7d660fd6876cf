// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Exchanges with a transmitter and their audit entries.
#include <filesystem>
#include <fstream>

#include "tests/bench/host_objects.h"
#include "tests/bench/subject.h"

namespace pv::bench {
namespace {

constexpr short kHistoryDirectory = 8;

Ref<_CTxm> make_transmitter(const Ref<IDispatch>& server) {
  const auto txm = create<CTxm, _CTxm>();
  check(txm->putref_Server(server.get()));
  check(txm->put_ComPort(1));
  check(txm->put_ComSettings(Bstr(L"9600,n,8,1")));
  check(txm->put_Protocol(protNorvak));
  check(txm->put_TxmType(txmFluxor));
  return txm;
}

void measure_read(Report& report, const Ref<_CTxm>& txm, const Ref<IDispatch>& server,
                  const Ref<_CItem>& item) {
  const Bstr settings(L"9600,n,8,1");
  const Task ours = repeated(100, [&] {
    Ref<_CItem> read = item;
    VARIANT_BOOL done = VARIANT_FALSE;
    check(txm->ReadTxm(read.in_out(), VARIANT_FALSE, VARIANT_FALSE, &done));
  });
  const Task bare = repeated(100, [&] {
    IDispatch* argument = item.get();
    late_bound(server.get(), L"ReadTxm", DISPATCH_METHOD,
               {borrowed(settings), number(1), borrowed(&argument), number(1)});
  });
  // The whole of ReadTxm holds one such call itself: the library's own share is one less.
  Medians medians = compare(ours, bare);
  medians.ours -= medians.theirs;
  report.ratio("CTxm.ReadTxm less the server's call, early bound", "that call, late bound", medians,
               3);
}

// A folder with a history file of some size, which names it to the library when it is used.
class History {
 public:
  History(std::wstring_view name, int megabytes) : folder_(scratch_file(name)) {
    CreateDirectoryW(folder_.c_str(), nullptr);
    const std::string block(1 << 20, 'x');
    std::ofstream file(std::filesystem::path(path()), std::ios::binary);
    for (int i = 0; i < megabytes; ++i) file << block;
  }
  std::wstring path() const { return folder_ + L"\\Historian.csv"; }

  Task entries(const Ref<_CUtility>& utility, const Ref<_CTxm>& txm,
               const Ref<_CItem>& item) const {
    constexpr int kEntries = 20;
    return {[=, this] {
              check(utility->put_AppDirectory(static_cast<AppDirectories>(kHistoryDirectory),
                                              Bstr(folder_)));
              for (int i = 0; i < kEntries; ++i) {
                VARIANT_BOOL written = VARIANT_FALSE;
                check(txm->DoHistorianX(item.get(), Bstr(L"M. Keller"), Bstr(L"Check"), &written));
                if (!written) throw std::runtime_error("an audit entry was not written");
              }
            },
            kEntries};
  }

 private:
  std::wstring folder_;
};

void measure_audit(Report& report, const Ref<_CTxm>& txm, const Ref<_CItem>& item) {
  constexpr double kSame = 1.25;  // what two equal measurements may differ by
  const auto utility = create<CUtility, _CUtility>();
  const History large(L"large", 100), empty(L"empty", 0);
  report.ratio("audit entry, history file of 100 MB", "audit entry, empty history file",
               compare(large.entries(utility, txm, item), empty.entries(utility, txm, item)),
               kSame);
}

}  // namespace

void measure_exchanges(Report& report) {
  const auto items = make_items(10, 1);
  const Ref<IDispatch> server(new IdleServer(items, make_dimensions(22, 20)));
  const auto txm = make_transmitter(server);
  Ref<_CItem> item;
  check(items->get_Item(number(1), item.put()));
  measure_read(report, txm, server, item);
  measure_audit(report, txm, item);
}

}  // namespace pv::bench
