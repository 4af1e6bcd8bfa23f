// lstd/valsortlist.h - value list kept in order.
#ifndef LSTD_VALSORTLIST_H
#define LSTD_VALSORTLIST_H

#include <lstd/comparator.h>
#include <lstd/valdlabstractlist.h>

namespace lstd {

/// A value list kept ascending, by T's operator< or, when a comparator is given, by
/// Comparator<T>::Compare: a orders before b when Compare(0, 0, a, b) is -1. The comparator
/// object (not owned) only selects that route; specialise Comparator<T> for another
/// ordering. Ascending input is appended without any search. Deliberate: a value equivalent to stored
/// ones goes in front of the equivalent value the bisection lands on, so duplicates keep no
/// stable order.
template <typename T>
class ValSortList : public ValDLAbstractList<T> {
public:
    /// comparator null: T's operator<; otherwise Comparator<T>::Compare.
    explicit ValSortList(Comparator<T>* comparator = nullptr) : mComparator(comparator) {}
    virtual ~ValSortList() {}

    using ValDLAbstractList<T>::operator=;
    using ValDLAbstractList<T>::Remove;

    /// Inserts a copy of value at its sorted place.
    unsigned char Append(T const& value) override {
        CompareAndInsert(value);
        return 1;
    }
    /// Removes a value equal to v (found by bisection), copying it to *out.
    bool Remove(T const& v, T* out) override {
        unsigned long const position = Index(v);
        return position != static_cast<unsigned long>(-1) && this->RemoveAt(position, out);
    }
    /// Position of a value equal to v (found by bisection), or all ones.
    unsigned long Index(T const& v) const override {
        return static_cast<unsigned long>(Search(v, nullptr));
    }
    /// Whether a value equal to v is stored (found by bisection); copies it to *found.
    bool Find(T const& v, T* found) const override { return Search(v, found) != -1; }

    Comparator<T>* GetComparator() const { return mComparator; }

protected:
    /// Bisects positions low..high. A range of one or two positions stops without comparing
    /// (the callers compare head and tail themselves): high goes to *position and the
    /// result is -1. A probe equal to v returns its position (copied to *found); one
    /// equivalent but not equal hands over to DoSequentialSearch.
    long long DoBinarySearch(T const& v, unsigned long const& low, unsigned long const& high,
                             T* found, long long* position) const {
        unsigned long lo = low;
        unsigned long hi = high;
        for (;;) {
            unsigned long const mid = lo + (hi - lo) / 2;
            if (mid == lo || mid == hi) {
                if (position != nullptr)
                    *position = static_cast<long long>(hi);
                return -1;
            }
            T const& probe = this->GetNode(mid)->mValue;
            if (Before(v, probe)) {
                hi = mid;
            } else if (Before(probe, v)) {
                lo = mid;
            } else if (v == probe) {
                if (found != nullptr)
                    *found = probe;
                return static_cast<long long>(mid);
            } else {
                return DoSequentialSearch(v, mid, found, position);
            }
        }
    }
    /// From start, looks forward and then backward through the values equivalent to v for
    /// one that is also equal; returns its position (copied to *found) or -1, in which case
    /// start goes to *position: an equivalent newcomer is placed in front of it.
    long long DoSequentialSearch(T const& v, unsigned long const& start, T* found,
                                 long long* position) const {
        ValDoubleLink<T>* first = this->GetNode(start);
        unsigned long p = start;
        for (ValDoubleLink<T>* node = first; node != nullptr && Equivalent(node->mValue, v);
             node = node->mNext, ++p) {
            if (node->mValue == v)
                return Hit(node, p, found);
        }
        p = start;
        for (ValDoubleLink<T>* node = first->mPrev; node != nullptr && Equivalent(node->mValue, v);
             node = node->mPrev) {
            --p;
            if (node->mValue == v)
                return Hit(node, p, found);
        }
        if (position != nullptr)
            *position = static_cast<long long>(start);
        return -1;
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
        long long const r = DoBinarySearch(value, 0, this->mCount - 1, nullptr, &position);
        if (r != -1)
            this->InsertBeforeNode(this->GetNode(static_cast<unsigned long>(r)), value);
        else if (position != -1)
            this->InsertBeforeNode(this->GetNode(static_cast<unsigned long>(position)), value);
        else
            this->InsertBeforeNode(nullptr, value);
    }

    Comparator<T>* mComparator;

private:
    bool Before(T const& a, T const& b) const {
        return mComparator == nullptr ? a < b : Comparator<T>::Compare(0, 0, a, b) == -1;
    }
    bool Equivalent(T const& a, T const& b) const { return !Before(a, b) && !Before(b, a); }
    static long long Hit(ValDoubleLink<T>* node, unsigned long p, T* found) {
        if (found != nullptr)
            *found = node->mValue;
        return static_cast<long long>(p);
    }
    // The bisection never compares the ends of its range, so the head and the tail are
    // checked here first; between them the bisection is complete.
    long long Search(T const& v, T* found) const {
        if (this->mCount == 0 || Before(v, this->mHead->mValue) || Before(this->mTail->mValue, v))
            return -1;
        if (!Before(this->mHead->mValue, v))
            return DoSequentialSearch(v, 0, found, nullptr);
        if (!Before(v, this->mTail->mValue))
            return DoSequentialSearch(v, this->mCount - 1, found, nullptr);
        return DoBinarySearch(v, 0, this->mCount - 1, found, nullptr);
    }
};
}  // namespace lstd
#endif  // LSTD_VALSORTLIST_H
