// lstd/comparator.h - ordering of values for the sorted list.
#ifndef LSTD_COMPARATOR_H
#define LSTD_COMPARATOR_H

namespace lstd {

/// An ordering of T values. The static Compare is the natural order by T's operator<; a sorted
/// list given a Comparator orders through Comparator<T>::Compare, so another ordering of T is
/// a full specialisation of this template with its own static Compare (no other member is
/// needed). Results: -1 when a orders before b, 0 when they are equivalent, 1 when after.
template <typename T>
class Comparator {
public:
    Comparator() {}
    virtual ~Comparator() {}

    /// Natural order; the two leading arguments are not used by the lists.
    static signed char Compare(unsigned long const&, unsigned long const&, T const& a, T const& b) {
        if (a < b)
            return -1;
        if (b < a)
            return 1;
        return 0;
    }
};
}  // namespace lstd
#endif  // LSTD_COMPARATOR_H
