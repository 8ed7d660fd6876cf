// SPDX-FileCopyrightText: the pvItems32 authors
// SPDX-License-Identifier: MIT

#include "tests/memory/failing_memory.h"

#include <atomic>
#include <cstdlib>
#include <new>
#include <utility>

#include "tests/support/memory/allocation_spy.h"

namespace pv::test {
namespace {

thread_local bool counting = false;
long made = 0;
long failing_one = 0;
std::atomic<long> blocks{0};

bool fails() { return counting && ++made == failing_one; }

void* allocate(std::size_t size) {
  void* const block = fails() ? nullptr : std::malloc(size ? size : 1);
  if (block) ++blocks;
  return block;
}

void release(void* block) {
  if (block) --blocks;
  std::free(block);
}

}  // namespace

FailingMemory::FailingMemory(long failing) {
  made = 0;
  failing_one = failing;
  refuse_allocations(&fails);
  counting = true;
}

FailingMemory::~FailingMemory() {
  counting = false;
  refuse_allocations(nullptr);
}

bool FailingMemory::reached() const { return made >= failing_one; }

HostCode::HostCode() : was_counting_(std::exchange(counting, false)) {}
HostCode::~HostCode() { counting = was_counting_; }

long living_blocks() { return blocks; }

}  // namespace pv::test

void* operator new(std::size_t size) {
  if (void* const block = pv::test::allocate(size)) return block;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return pv::test::allocate(size);
}
void operator delete(void* block) noexcept { pv::test::release(block); }
void operator delete[](void* block) noexcept { pv::test::release(block); }
void operator delete(void* block, std::size_t) noexcept { pv::test::release(block); }
void operator delete[](void* block, std::size_t) noexcept { pv::test::release(block); }
