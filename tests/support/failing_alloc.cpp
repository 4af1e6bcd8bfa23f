// failing_alloc.cpp - malloc and realloc of the test program, failing on demand.
//
// Both forward to the C library's allocator (to the sanitizer's under AddressSanitizer, which
// replaces it), so memory from them may be freed by the unreplaced free as usual.
#include <failing_alloc.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__)
#define LKIT_TEST_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LKIT_TEST_ASAN 1
#endif
#endif

extern "C" {
#if defined(LKIT_TEST_ASAN)
void* __interceptor_malloc(std::size_t size) noexcept;
void* __interceptor_realloc(void* block, std::size_t size) noexcept;
#define LKIT_REAL_MALLOC __interceptor_malloc
#define LKIT_REAL_REALLOC __interceptor_realloc
#else
void* __libc_malloc(std::size_t size) noexcept;
void* __libc_realloc(void* block, std::size_t size) noexcept;
#define LKIT_REAL_MALLOC __libc_malloc
#define LKIT_REAL_REALLOC __libc_realloc
#endif
}

namespace {
// Allocations still allowed to succeed before the failing ones; negative: no limit.
long gAllowed = -1;
// Allocations still to fail once gAllowed is used up; negative: all of them.
long gFailures = -1;

bool Refuse() {
    if (gAllowed < 0)
        return false;
    if (gAllowed > 0) {
        --gAllowed;
        return false;
    }
    if (gFailures == 0) {
        gAllowed = -1;
        return false;
    }
    if (gFailures > 0)
        --gFailures;
    errno = ENOMEM;
    return true;
}
}  // namespace

// The forwarding calls are tail calls, so that the allocator sees the real caller as its
// caller: LeakSanitizer recognises the dynamic loader's lasting allocations by it. GCC is
// told to make them even in the unoptimised sanitizer build; clang makes them when it
// optimises.
#if defined(__clang__)
#define LKIT_TAIL_CALLS
#else
#define LKIT_TAIL_CALLS __attribute__((optimize("O2")))
#endif

extern "C" LKIT_TAIL_CALLS void* malloc(std::size_t size) noexcept {
    if (Refuse())
        return nullptr;
    return LKIT_REAL_MALLOC(size);
}

extern "C" LKIT_TAIL_CALLS void* realloc(void* block, std::size_t size) noexcept {
    if (Refuse())
        return nullptr;
    return LKIT_REAL_REALLOC(block, size);
}

namespace lkit_test {
FailingAllocations::FailingAllocations(long allowed, long failures) {
    gFailures = failures;
    gAllowed = allowed < 0 ? 0 : allowed;
}
FailingAllocations::~FailingAllocations() { Stop(); }
void FailingAllocations::Stop() { gAllowed = -1; }

bool FailingAllocations::Available() {
    void* (*volatile allocate)(std::size_t) = &malloc;  // a call the compiler cannot drop
    gAllowed = 0;
    gFailures = 1;
    void* block = allocate(1);
    gAllowed = -1;
    std::free(block);
    return block == nullptr;
}
}  // namespace lkit_test
