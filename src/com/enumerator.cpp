#include "com/enumerator.h"

#include <algorithm>
#include <memory>

#include "com/boundary.h"
#include "com/simple_object.h"

namespace pv {
namespace {

using Snapshot = std::shared_ptr<const std::vector<Ref<IDispatch>>>;

class Enumerator final : public SimpleObject<Enumerator, IEnumVARIANT> {
 public:
  Enumerator(Snapshot objects, std::size_t next) : objects_(std::move(objects)), next_(next) {}

  STDMETHODIMP Next(ULONG count, VARIANT* values, ULONG* fetched) override {
    if (fetched) *fetched = 0;
    if (!values || (!fetched && count != 1)) return E_POINTER;
    for (ULONG i = 0; i < count; ++i) VariantInit(&values[i]);
    const std::size_t given = std::min<std::size_t>(count, left());
    for (std::size_t i = 0; i < given; ++i) {
      values[i].vt = VT_DISPATCH;
      values[i].pdispVal = Ref<IDispatch>((*objects_)[next_++]).detach();
    }
    if (fetched) *fetched = static_cast<ULONG>(given);
    return given == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Skip(ULONG count) override {
    const std::size_t skipped = std::min<std::size_t>(count, left());
    next_ += skipped;
    return skipped == count ? S_OK : S_FALSE;
  }
  STDMETHODIMP Reset() override {
    next_ = 0;
    return S_OK;
  }
  STDMETHODIMP Clone(IEnumVARIANT** copy) override {
    if (!copy) return E_POINTER;
    *copy = nullptr;
    return guarded(L"Enumerator", "Clone",
                   [&] { *copy = make<Enumerator>(objects_, next_).detach(); });
  }

 private:
  std::size_t left() const { return objects_->size() - next_; }

  Snapshot objects_;
  std::size_t next_;
};

}  // namespace

Ref<IEnumVARIANT> make_enumerator(std::vector<Ref<IDispatch>> objects) {
  return make<Enumerator>(std::make_shared<const std::vector<Ref<IDispatch>>>(std::move(objects)),
                          0);
}

}  // namespace pv
