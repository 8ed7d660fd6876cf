// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

// Events: what the library adds to calling the listeners oneself.
#include "tests/bench/host_objects.h"
#include "tests/bench/subject.h"

namespace pv::bench {
namespace {

constexpr DISPID kSending = 2;

/// An event hub of its own with equal listeners.
template <class Listener>
class Hub {
 public:
  explicit Hub(int listeners) : events_(create<CTxmEvents, _CTxmEvents>()) {
    const auto container = query<IConnectionPointContainer>(events_.get());
    check(container->FindConnectionPoint(__uuidof(__CTxmEvents), point_.put()));
    for (int i = 0; i < listeners; ++i) {
      listeners_.emplace_back(new Listener);
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
  std::vector<Ref<Listener>> listeners_;
  std::vector<DWORD> cookies_;
};

template <class Listener>
void measure_listener(Report& report, const std::string& kind) {
  constexpr double kGoal = 1.5;
  const std::string against = "bare Invoke of a " + kind + " listener";
  const Hub<Listener> one(1), ten(10);
  report.ratio("event to 1 listener", against, compare(one.raise(), one.invoke_one()), kGoal);
  Medians medians = compare(ten.raise(), ten.invoke_one());
  medians.ours /= 10;
  report.ratio("event to 10 listeners, per listener", against, medians, kGoal);
}

}  // namespace

void measure_events(Report& report) {
  measure_listener<TypedListener>(report, "typed");
  measure_listener<CountingListener>(report, "counting");
}

}  // namespace pv::bench
