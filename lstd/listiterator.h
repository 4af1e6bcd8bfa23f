// lstd/listiterator.h - iterator over a range of integer positions.
#ifndef LSTD_LISTITERATOR_H
#define LSTD_LISTITERATOR_H

#include <lstd/exception.h>
#include <lstd/iptrcollection.h>
#include <lstd/iterator.h>
#include <lstd/ivalcollection.h>

namespace lstd {

/// Keeps an iteration range [begin, end] of positions and a current position; the current
/// position is end + 1 once the iterator is exhausted. A fresh iterator (after Reset) stands
/// on its first item, which the first ++ delivers without moving.
///
/// Range rules of Reset(position, begin, end) over a collection of n items: a negative begin
/// is 0, a non-negative one is kept as given (not clamped to n); a negative end is n - 1, a
/// non-negative one is min(end, n - 1); an empty collection has end 0. The current position
/// is position when begin <= position <= end, else end + 1.
template <typename T>
class ListIterator : public Iterator<T> {
public:
    ListIterator() : mCurPosition(0), mBegin(0), mEnd(0), mFresh(0) {}
    /// Copies collection, range, position and fresh flag.
    ListIterator(ListIterator const& other)
        : Iterator<T>(other), mCurPosition(other.mCurPosition), mBegin(other.mBegin),
          mEnd(other.mEnd), mFresh(other.mFresh) {}
    virtual ~ListIterator() {}

    using Iterator<T>::Init;
    using Iterator<T>::operator=;
    /// Binds collection, then runs the (virtual) Reset.
    virtual void Init(Collection<T> const& collection, unsigned long position, long long begin,
                      long long end) {
        this->mCollection = &collection;
        Reset(position, begin, end);
    }
    /// Applies the range rules and sets the fresh flag; never throws.
    virtual void Reset(unsigned long position, long long begin, long long end) {
        SetRange(position, begin, end, CountOf(this->mCollection));
    }
    /// Moves one position forward; whether it is still within the range. Ignores the fresh
    /// flag. Throws NotInitializedIteratorException when no collection is bound.
    virtual bool operator++() {
        if (this->mCollection == nullptr)
            NotInitialized();
        ++mCurPosition;
        return mCurPosition <= mEnd;
    }
    /// Moves one position back; false, without moving, at begin. Throws
    /// NotInitializedIteratorException when no collection is bound.
    virtual bool operator--() {
        if (this->mCollection == nullptr)
            NotInitialized();
        if (mCurPosition == mBegin)
            return false;
        --mCurPosition;
        return mBegin <= mCurPosition;
    }
    /// The current position; end + 1 once exhausted.
    virtual unsigned long const& GetCurPosition() const { return mCurPosition; }

    ///@{
    /// Deliberate: iterators are not ordered or compared, not even with themselves.
    virtual bool operator<(ListIterator const&) const { return false; }
    virtual bool operator<=(ListIterator const&) const { return false; }
    virtual bool operator==(ListIterator const&) const { return false; }
    virtual bool operator>(ListIterator const&) const { return false; }
    virtual bool operator>=(ListIterator const&) const { return false; }
    ///@}

    /// Copies collection, current position, end and fresh flag. Deliberately keeps the
    /// target's own begin position.
    virtual ListIterator& operator=(ListIterator const& other) {
        this->mCollection = other.mCollection;
        mCurPosition = other.mCurPosition;
        mEnd = other.mEnd;
        mFresh = other.mFresh;
        return *this;
    }
    /// target: same collection and range, position + 1, fresh.
    virtual void GetNextIterator(ListIterator& target) const {
        CopyRangeTo(target, mCurPosition + 1);
    }
    /// target: same collection and range, position - 1 (0 stays 0), fresh.
    virtual void GetPrevIterator(ListIterator& target) const {
        CopyRangeTo(target, mCurPosition == 0 ? 0 : mCurPosition - 1);
    }
    /// Unbinds the iterator and marks it exhausted.
    void Clear() override {
        this->mCollection = nullptr;
        mCurPosition = mEnd + 1;
    }

    /// First position of the range.
    unsigned long GetBegin() const { return mBegin; }
    /// Last position of the range.
    unsigned long GetEnd() const { return mEnd; }
    /// True until the first step has delivered the current item.
    bool IsFresh() const { return mFresh == 1; }

protected:
    /// The range rules, for a collection of count items.
    void SetRange(unsigned long position, long long begin, long long end, unsigned long count) {
        mBegin = begin < 0 ? 0 : static_cast<unsigned long>(begin);
        if (count == 0)
            mEnd = 0;
        else if (end < 0 || static_cast<unsigned long>(end) > count - 1)
            mEnd = count - 1;
        else
            mEnd = static_cast<unsigned long>(end);
        mCurPosition = (mBegin <= position && position <= mEnd) ? position : mEnd + 1;
        mFresh = 1;
    }

    /// operator++ of the linked-list iterators: delivers a fresh item without moving, then
    /// moves forward; false once the range end is passed (the node then stays put). The
    /// range is fixed when the iterator is set up: a step inside it returns true even when
    /// the list has since lost its far end and no node follows (the next step is false).
    template <typename Node>
    bool StepForward(Node*& node) {
        // The common step first: a delivered item with more of the range after it.
        if (mFresh == 0 && node != nullptr && mCurPosition < mEnd && this->mCollection != nullptr) {
            ++mCurPosition;
            node = node->mNext;
            return true;
        }
        if (node == nullptr || mCurPosition > mEnd)
            return false;
        if (mFresh == 1) {
            mFresh = 0;
            return true;
        }
        if (this->mCollection == nullptr)
            NotInitialized();
        ++mCurPosition;  // now past the end: the node stays
        return false;
    }
    /// operator-- of the linked-list iterators: the mirror image, stopping at begin.
    template <typename Node>
    bool StepBack(Node*& node) {
        if (node == nullptr || mCurPosition > mEnd)
            return false;
        if (mFresh == 1) {
            mFresh = 0;
            return true;
        }
        if (mCurPosition == mBegin)
            return false;
        if (--mCurPosition < mBegin)
            return false;
        node = node->mPrev;
        return true;
    }
    /// Moves a linked-list iterator off node, which its list is about to remove. forward = 1:
    /// onto the successor at the same position; otherwise onto the predecessor, one position
    /// back. Returns true when node was the head and forward is not 1: the list then
    /// re-initialises the iterator on its new head after the removal.
    template <typename Node>
    bool LeaveNode(Node*& node, unsigned char const& forward) {
        Node* removed = node;
        if (forward == 1) {
            node = removed->mNext;
            if (mEnd >= mCurPosition && mEnd > mBegin)
                --mEnd;
            return false;
        }
        if (removed->mPrev == nullptr)
            return true;
        node = removed->mPrev;
        if (mCurPosition <= mEnd && mEnd > mBegin)
            --mEnd;
        if (mCurPosition > mBegin)
            --mCurPosition;
        return false;
    }

    /// @cond INTERNAL
    unsigned long mCurPosition;
    unsigned long mBegin;
    unsigned long mEnd;
    unsigned char mFresh;
    /// @endcond

private:
    // Out of line, so that the steps stay small enough to be inlined where the compiler can
    // tell the iterator's class.
    [[noreturn]] __attribute__((noinline, cold)) static void NotInitialized() {
        LSTD_THROW(NotInitializedIteratorException, "Iterator not initialized");
    }
    // The generic Reset knows its collection only as the identity root; the concrete
    // iterators pass their list's count to SetRange directly.
    static unsigned long CountOf(Collection<T> const* collection) {
        if (auto const* p = dynamic_cast<IPtrCollection<T> const*>(collection))
            return p->GetNumberOfEntry();
        if (auto const* v = dynamic_cast<IValCollection<T> const*>(collection))
            return v->GetNumberOfEntry();
        return 0;
    }
    void CopyRangeTo(ListIterator& target, unsigned long position) const {
        target.mCollection = this->mCollection;
        target.mCurPosition = position;
        target.mBegin = mBegin;
        target.mEnd = mEnd;
        target.mFresh = 1;
    }
};
}  // namespace lstd
#endif  // LSTD_LISTITERATOR_H
