// lstd/valqueue.h - first-in first-out queue of values.
#ifndef LSTD_VALQUEUE_H
#define LSTD_VALQUEUE_H

#include <lstd/valdlinklist.h>

namespace lstd {

/// A value list used as a queue: Push appends at the back, the front is the head
/// (GetFirst, RemoveFirst).
template <typename T>
class ValQueue : public ValDLinkList<T> {
public:
    ValQueue() {}
    /// Copies of values, queued in order.
    ValQueue(std::initializer_list<T> values) : ValDLinkList<T>(values) {}
    ///@{
    /// Copying copies every queued value in order; moving takes the nodes, copying no value,
    /// and leaves the source an empty queue.
    ValQueue(ValQueue const&) = default;
    ValQueue(ValQueue&&) = default;
    ValQueue& operator=(ValQueue const&) = default;
    ValQueue& operator=(ValQueue&&) = default;
    ///@}
    virtual ~ValQueue() {}

    using ValDLinkList<T>::operator=;

    /// Same as Append.
    void Push(T const& value) { this->Append(value); }
    /// Destroys every queued value.
    void Clear() override { ValDLinkList<T>::Clear(); }
};
}  // namespace lstd
#endif  // LSTD_VALQUEUE_H
