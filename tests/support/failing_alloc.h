// failing_alloc.h - lets a test make malloc and realloc fail on demand.
#ifndef LKIT_TESTS_FAILING_ALLOC_H
#define LKIT_TESTS_FAILING_ALLOC_H

namespace lkit_test {

// While an object lives, the first `allowed` calls of malloc or realloc (in the whole
// program, operator new included) succeed, the next `failures` ones return null (all later
// ones when failures is negative), and the rest succeed. Keep the scope tight: the test
// framework allocates too. Destruction, or Stop(), lets them all succeed again.
class FailingAllocations {
public:
    explicit FailingAllocations(long allowed, long failures = -1);
    ~FailingAllocations();
    FailingAllocations(FailingAllocations const&) = delete;
    FailingAllocations& operator=(FailingAllocations const&) = delete;
    void Stop();
    // False when a tool running the tests (valgrind) replaces malloc itself, so that
    // allocations cannot be made to fail.
    static bool Available();
};
}  // namespace lkit_test

using lkit_test::FailingAllocations;

#endif  // LKIT_TESTS_FAILING_ALLOC_H
