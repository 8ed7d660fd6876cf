// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Events: what the library adds to calling the listeners oneself.
#include "tests/bench/host_objects.h"
#include "tests/bench/subject.h"

namespace pv::bench {
namespace {

constexpr DISPID kSending = 2;

/// An event hub of its own with listeners that do nothing.
class Hub {
 public:
  explicit Hub(int listeners) : events_(create<CTxmEvents, _CTxmEvents>()) {
    const auto container = query<IConnectionPointContainer>(events_.get());
    check(container->FindConnectionPoint(__uuidof(__CTxmEvents), point_.put()));
    for (int i = 0; i < listeners; ++i) {
      listeners_.emplace_back(new IdleListener);
      cookies_.push_back(0);
      check(point_->Advise(listeners_.back().get(), &cookies_.back()));
    }
  }
  Hub(const Hub&) = delete;
  Hub& operator=(const Hub&) = delete;
  ~Hub() {
    for (DWORD cookie : cookies_) point_->Unadvise(cookie);
  }

  Task raise() const {
    return repeated(100, [this] {
      Variant result;
      check(events_->RaiseSending(&result));
    });
  }
  Task invoke_one() const {
    return repeated(100, [listener = static_cast<IDispatch*>(listeners_.front().get())] {
      DISPPARAMS none{};
      Variant result;
      EXCEPINFO exception{};
      check(listener->Invoke(kSending, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &none,
                             &result, &exception, nullptr));
    });
  }

 private:
  Ref<_CTxmEvents> events_;
  Ref<IConnectionPoint> point_;
  std::vector<Ref<IdleListener>> listeners_;
  std::vector<DWORD> cookies_;
};

}  // namespace

void measure_events(Report& report) {
  constexpr double kMostAdded = 20;  // nanoseconds
  constexpr double kPerListener = 1.5;
  const std::string against = "bare Invoke of that listener";
  const Hub one(1), ten(10);
  report.difference("event to 1 listener that does nothing", against,
                    compare(one.raise(), one.invoke_one()), kMostAdded);
  Medians medians = compare(ten.raise(), ten.invoke_one());
  medians.ours /= 10;
  report.ratio("event to 10 such listeners, per listener", against, medians, kPerListener);
}

}  // namespace pv::bench
