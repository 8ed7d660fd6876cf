// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/support/memory/allocation_spy.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <sstream>

#include "com/automation.h"

namespace pv::test {
namespace {

/// Memory that no operator new hands out: programs may replace that one and count its calls.
template <class T>
struct OwnAllocator {
  using value_type = T;

  OwnAllocator() = default;
  template <class U>
  OwnAllocator(const OwnAllocator<U>&) {}

  T* allocate(std::size_t count) {
    if (void* const block = std::malloc(count * sizeof(T))) return static_cast<T*>(block);
    throw std::bad_alloc();
  }
  void deallocate(T* block, std::size_t) { std::free(block); }

  bool operator==(const OwnAllocator&) const = default;
};

struct Block {
  std::size_t size;
  std::size_t serial;
};

/// Stands at the end of each block that a stub of the platform allocates for arguments.
struct EndOfArgument {
  static constexpr ULONG kMark = 0x4D454D4C;  // "MEML"

  ULONG mark;
  ULONG size;  // of what is before it
  ULONG reserved;
  void* next;
};

bool is_argument_of_stub(const void* block, std::size_t size) {
  EndOfArgument end;
  if (size < sizeof end) return false;
  std::memcpy(&end, static_cast<const char*>(block) + size - sizeof end, sizeof end);
  return end.mark == EndOfArgument::kMark && end.size == size - sizeof end && end.reserved == 0;
}

class Spy final : public IMallocSpy {
 public:
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    if (!object) return E_POINTER;
    const bool known = iid == IID_IUnknown || iid == IID_IMallocSpy;
    *object = known ? static_cast<IMallocSpy*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }

  STDMETHODIMP_(SIZE_T) PreAlloc(SIZE_T size) override {
    if (refused()) return 0;
    requested_ = size;
    return size;
  }
  STDMETHODIMP_(void*) PostAlloc(void* block) override {
    if (block) enter(block, requested_);
    return block;
  }
  STDMETHODIMP_(void*) PreFree(void* block, BOOL) override {
    forget(block);
    return block;
  }
  STDMETHODIMP_(void) PostFree(BOOL) override {}
  STDMETHODIMP_(SIZE_T)
  PreRealloc(void* block, SIZE_T size, void** passed, BOOL) override {
    *passed = block;
    if (refused()) return 0;
    reallocated_ = block;
    requested_ = size;
    return size;
  }
  STDMETHODIMP_(void*) PostRealloc(void* block, BOOL) override {
    if (block) {
      forget(reallocated_);
      enter(block, requested_);
    }
    return block;
  }
  STDMETHODIMP_(void*) PreGetSize(void* block, BOOL) override { return block; }
  STDMETHODIMP_(SIZE_T) PostGetSize(SIZE_T size, BOOL) override { return size; }
  STDMETHODIMP_(void*) PreDidAlloc(void* block, BOOL) override { return block; }
  STDMETHODIMP_(int) PostDidAlloc(void*, BOOL, int answer) override { return answer; }
  STDMETHODIMP_(void) PreHeapMinimize() override {}
  STDMETHODIMP_(void) PostHeapMinimize() override {}

  void refuse(bool (*refuses)()) { refuses_ = refuses; }

  std::size_t living() {
    const std::lock_guard lock(mutex_);
    return blocks_.size();
  }
  std::size_t next_serial() {
    const std::lock_guard lock(mutex_);
    return next_serial_;
  }
  void forget_since(std::size_t serial) {
    const std::lock_guard lock(mutex_);
    std::erase_if(blocks_, [&](const auto& block) { return block.second.serial >= serial; });
  }
  std::size_t arguments_of_stubs() {
    const std::lock_guard lock(mutex_);
    return static_cast<std::size_t>(std::count_if(
        blocks_.begin(), blocks_.end(),
        [](const auto& block) { return is_argument_of_stub(block.first, block.second.size); }));
  }
  void forget_arguments_of_stubs() {
    const std::lock_guard lock(mutex_);
    std::erase_if(blocks_, [](const auto& block) {
      return is_argument_of_stub(block.first, block.second.size);
    });
  }
  std::string report_since(std::size_t serial) {
    const std::lock_guard lock(mutex_);
    std::ostringstream text;
    for (const auto& [block, entry] : blocks_) {
      if (entry.serial >= serial) text << describe(block, entry);
    }
    return text.str();
  }

 private:
  bool refused() const { return refuses_ && refuses_(); }
  void enter(void* block, std::size_t size) {
    const std::lock_guard lock(mutex_);
    blocks_[block] = {size, next_serial_++};
  }
  void forget(void* block) {
    const std::lock_guard lock(mutex_);
    blocks_.erase(block);
  }

  // Most blocks are texts, behind a length of four bytes.
  static std::string describe(const void* block, const Block& entry) {
    std::ostringstream text;
    text << "  #" << entry.serial << ", " << entry.size << " bytes: \"";
    const auto* bytes = static_cast<const unsigned char*>(block);
    for (std::size_t i = 4; i < entry.size && i < 84; i += 2) {
      if (bytes[i] >= 0x20 && bytes[i] < 0x7F) text << static_cast<char>(bytes[i]);
    }
    text << "\"\n";
    return text.str();
  }

  // The platform holds its own lock from Pre... to Post..., so these need none.
  std::size_t requested_ = 0;
  void* reallocated_ = nullptr;
  bool (*refuses_)() = nullptr;

  std::mutex mutex_;
  std::map<void*, Block, std::less<>, OwnAllocator<std::pair<void* const, Block>>> blocks_;
  std::size_t next_serial_ = 0;
};

Spy& spy() {
  static Spy only;
  return only;
}

}  // namespace

void install_allocation_spy() { CoRegisterMallocSpy(&spy()); }
void remove_allocation_spy() { CoRevokeMallocSpy(); }
void refuse_allocations(bool (*refuses)()) { spy().refuse(refuses); }
std::size_t living_allocations() { return spy().living(); }
std::size_t living_arguments_of_stubs() { return spy().arguments_of_stubs(); }
void forget_arguments_of_stubs() { spy().forget_arguments_of_stubs(); }

AllocationBalance::AllocationBalance() : before_(spy().living()), first_new_(spy().next_serial()) {}

long AllocationBalance::difference() const {
  return static_cast<long>(spy().living()) - static_cast<long>(before_);
}

LostByThePlatform::LostByThePlatform() : first_new_(spy().next_serial()) {}
LostByThePlatform::~LostByThePlatform() { spy().forget_since(first_new_); }

std::string AllocationBalance::report() const { return spy().report_since(first_new_); }

}  // namespace pv::test
