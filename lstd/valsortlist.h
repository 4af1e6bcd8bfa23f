// lstd/valsortlist.h - value list kept in order.
#ifndef LSTD_VALSORTLIST_H
#define LSTD_VALSORTLIST_H

#include <lstd/comparator.h>
#include <lstd/valdlabstractlist.h>

#include <initializer_list>

namespace lstd {

/// A value list kept ascending, by T's operator< or, when a comparator is given, by
/// Comparator<T>::Compare: a orders before b when Compare(0, 0, a, b) is -1. The comparator
/// object (not owned) only selects that route; specialise Comparator<T> for another
/// ordering. Ascending input is appended without any search. Deliberate: a value equivalent to
/// stored ones goes in front of the equivalent value the bisection lands on, so duplicates keep no
/// stable order.
///
/// Copies are deep; a move copies no value, and both lists keep the comparator. begin() and
/// end() walk the values in order; the iterator is a const_iterator even on a non-const
/// list, since a value changed in place could break the order.
template <typename T>
class ValSortList : public ValDLAbstractList<T> {
public:
    ///@{
    /// Bidirectional iterator over the values in order, read-only (T const&) in both forms.
    typedef typename ValDLAbstractList<T>::const_iterator iterator;
    typedef typename ValDLAbstractList<T>::const_iterator const_iterator;
    ///@}

    /// comparator null: T's operator<; otherwise Comparator<T>::Compare.
    explicit ValSortList(Comparator<T>* comparator = nullptr) : mComparator(comparator) {}
    /// Copies of values, each inserted at its sorted place as Append does.
    ValSortList(std::initializer_list<T> values, Comparator<T>* comparator = nullptr)
        : mComparator(comparator) {
        for (T const& value : values)
            CompareAndInsert(value);
    }
    ///@{
    /// Copying copies every value in order and the comparator; moving takes the nodes and the
    /// comparator, copying no value, and leaves the source empty with its comparator.
    ValSortList(ValSortList const&) = default;
    ValSortList(ValSortList&&) = default;
    ValSortList& operator=(ValSortList const&) = default;
    ValSortList& operator=(ValSortList&&) = default;
    ///@}
    virtual ~ValSortList() {}

    using ValDLAbstractList<T>::operator=;
    using ValDLAbstractList<T>::Remove;

    ///@{
    /// Iteration in ascending order, head to tail; read-only even on a non-const list.
    const_iterator begin() const { return ValDLAbstractList<T>::begin(); }
    const_iterator end() const { return ValDLAbstractList<T>::end(); }
    ///@}

    /// Inserts a copy of value at its sorted place.
    unsigned char Append(T const& value) override {
        CompareAndInsert(value);
        return 1;
    }
    /// Removes a value equal to v (found by bisection), copying it to *out.
    bool Remove(T const& v, T* out) override {
        Place at;
        return Search(v, nullptr, at) != -1 && this->RemoveNode(at.node, out);
    }
    /// Position of a value equal to v (found by bisection), or all ones.
    unsigned long Index(T const& v) const override {
        Place at;
        return static_cast<unsigned long>(Search(v, nullptr, at));
    }
    /// Whether a value equal to v is stored (found by bisection); copies it to *found.
    bool Find(T const& v, T* found) const override {
        Place at;
        return Search(v, found, at) != -1;
    }

    /// The comparator given at construction, or null (T's operator<).
    Comparator<T>* GetComparator() const { return mComparator; }

protected:
    /// Bisects positions low..high. A range of one or two positions stops without comparing
    /// (the callers compare head and tail themselves): high goes to *position and the
    /// result is -1. A probe equal to v returns its position (copied to *found); one
    /// equivalent but not equal hands over to DoSequentialSearch.
    long long DoBinarySearch(T const& v, unsigned long const& low, unsigned long const& high,
                             T* found, long long* position) const {
        Place at;
        return Bisect(v, Place{low, this->GetNode(low)}, Place{high, this->GetNode(high)}, found,
                      position, at);
    }
    /// From start, looks forward and then backward through the values equivalent to v for
    /// one that is also equal; returns its position (copied to *found) or -1, in which case
    /// start goes to *position: an equivalent newcomer is placed in front of it.
    long long DoSequentialSearch(T const& v, unsigned long const& start, T* found,
                                 long long* position) const {
        Place at;
        return Sequential(v, Place{start, this->GetNode(start)}, found, position, at);
    }
    /// Sorted insertion: after the tail when the tail is before value (no search), before
    /// the head when value is before it, else at the place the bisection gives.
    void CompareAndInsert(T const& value) {
        if (this->mCount == 0 || Before(this->mTail->mValue, value)) {
            this->InsertBeforeNode(nullptr, value);
            return;
        }
        if (Before(value, this->mHead->mValue)) {
            this->InsertBeforeNode(this->mHead, value);
            return;
        }
        long long position = -1;
        Place at;
        Bisect(value, Place{0, this->mHead}, Place{this->mCount - 1, this->mTail}, nullptr,
               &position, at);
        // The node of the equal value found, else of the returned position, else none.
        this->InsertBeforeNode(at.node, value);
    }

    /// The ordering, not owned; null for T's operator<.
    Comparator<T>* mComparator;

private:
    /// A position of the list with its node.
    struct Place {
        unsigned long position = 0;
        ValDoubleLink<T>* node = nullptr;
    };

    bool Before(T const& a, T const& b) const {
        return mComparator == nullptr ? a < b : Comparator<T>::Compare(0, 0, a, b) == -1;
    }
    bool Equivalent(T const& a, T const& b) const { return !Before(a, b) && !Before(b, a); }
    static long long Hit(Place const& place, T* found, Place& at) {
        if (found != nullptr)
            *found = place.node->mValue;
        at = place;
        return static_cast<long long>(place.position);
    }
    static unsigned long Distance(unsigned long a, unsigned long b) {
        return a < b ? b - a : a - b;
    }

    // The bisection of DoBinarySearch, with the nodes of its range known. Its probes are
    // reached from the nearest known node (an end of the range, or the node a walk passed
    // at a position the next probe may take) instead of from an end of the list: the same
    // probes and comparisons in about n node steps instead of n log n. at receives the node
    // of the returned position, or of *position when -1 is returned.
    long long Bisect(T const& v, Place lo, Place hi, T* found, long long* position,
                     Place& at) const {
        Place spare;  // passed by an earlier walk; node null when none
        for (;;) {
            unsigned long const mid = lo.position + (hi.position - lo.position) / 2;
            if (mid == lo.position || mid == hi.position) {
                if (position != nullptr)
                    *position = static_cast<long long>(hi.position);
                at = hi;
                return -1;
            }
            Place from = Distance(lo.position, mid) <= Distance(hi.position, mid) ? lo : hi;
            if (spare.node != nullptr &&
                Distance(spare.position, mid) < Distance(from.position, mid))
                from = spare;
            // The next probe lies halfway to mid on the side the comparison picks.
            unsigned long const left = lo.position + (mid - lo.position) / 2;
            unsigned long const right = mid + (hi.position - mid) / 2;
            Place const probe = Walk(from, mid, left, right, spare);
            T const& value = probe.node->mValue;
            if (Before(v, value)) {
                hi = probe;
            } else if (Before(value, v)) {
                lo = probe;
            } else if (v == value) {
                return Hit(probe, found, at);
            } else {
                return Sequential(v, probe, found, position, at);
            }
        }
    }
    // Steps from `from` to position `to`, keeping in spare the node met at `left` (walking
    // forward) or `right` (walking back) when the walk passes it.
    static Place Walk(Place from, unsigned long to, unsigned long left, unsigned long right,
                      Place& spare) {
        if (from.position < to) {
            if (from.position <= left && left < to) {
                spare = Place{left, Forward(from.node, left - from.position)};
                return Place{to, Forward(spare.node, to - left)};
            }
            return Place{to, Forward(from.node, to - from.position)};
        }
        if (to < right && right <= from.position) {
            spare = Place{right, Back(from.node, from.position - right)};
            return Place{to, Back(spare.node, right - to)};
        }
        return Place{to, Back(from.node, from.position - to)};
    }
    static ValDoubleLink<T>* Forward(ValDoubleLink<T>* node, unsigned long steps) {
        for (; steps > 0; --steps)
            node = node->mNext;
        return node;
    }
    static ValDoubleLink<T>* Back(ValDoubleLink<T>* node, unsigned long steps) {
        for (; steps > 0; --steps)
            node = node->mPrev;
        return node;
    }
    // DoSequentialSearch from a known node.
    long long Sequential(T const& v, Place const& start, T* found, long long* position,
                         Place& at) const {
        Place p = start;
        for (; p.node != nullptr && Equivalent(p.node->mValue, v);
             p.node = p.node->mNext, ++p.position)
            if (p.node->mValue == v)
                return Hit(p, found, at);
        p = start;
        for (p.node = start.node->mPrev; p.node != nullptr && Equivalent(p.node->mValue, v);
             p.node = p.node->mPrev) {
            --p.position;
            if (p.node->mValue == v)
                return Hit(p, found, at);
        }
        if (position != nullptr)
            *position = static_cast<long long>(start.position);
        at = start;
        return -1;
    }
    // The bisection never compares the ends of its range, so the head and the tail are
    // checked here first; between them the bisection is complete.
    long long Search(T const& v, T* found, Place& at) const {
        if (this->mCount == 0 || Before(v, this->mHead->mValue) || Before(this->mTail->mValue, v))
            return -1;
        Place const head{0, this->mHead};
        Place const tail{this->mCount - 1, this->mTail};
        if (!Before(this->mHead->mValue, v))
            return Sequential(v, head, found, nullptr, at);
        if (!Before(v, this->mTail->mValue))
            return Sequential(v, tail, found, nullptr, at);
        return Bisect(v, head, tail, found, nullptr, at);
    }
};
}  // namespace lstd
#endif  // LSTD_VALSORTLIST_H
