// lstd/valdlinklist.h - the concrete doubly linked list of values.
#ifndef LSTD_VALDLINKLIST_H
#define LSTD_VALDLINKLIST_H

#include <lstd/valdlabstractlist.h>

#include <initializer_list>
#include <utility>

namespace lstd {

/// Doubly linked list of copies of T, in insertion order. Copies are deep; a move copies no
/// value and leaves the source empty.
template <typename T>
class ValDLinkList : public ValDLAbstractList<T> {
public:
    ValDLinkList() {}
    /// Copies of values, in order.
    ValDLinkList(std::initializer_list<T> values) {
        for (T const& value : values)
            this->InsertBeforeNode(nullptr, value);
    }
    ///@{
    /// Copying copies every value in order (see ValDLAbstractList); moving takes the nodes,
    /// copying no value, and leaves the source empty.
    ValDLinkList(ValDLinkList const&) = default;
    ValDLinkList(ValDLinkList&&) = default;
    ValDLinkList& operator=(ValDLinkList const&) = default;
    ValDLinkList& operator=(ValDLinkList&&) = default;
    ///@}
    virtual ~ValDLinkList() {}

    using ValDLAbstractList<T>::operator=;

    /// Stores a copy of value after the tail.
    virtual unsigned char Append(T const& value) {
        this->InsertBeforeNode(nullptr, value);
        return 1;
    }
    /// Appends copies of other's values at positions from..to inclusive. Deliberate: from
    /// below 1 is 0 and to below 1 means the last position, so (0, 0) appends the whole
    /// list; to is clamped. An empty other appends nothing. Throws InvalidOperationException
    /// when from >= other's count.
    virtual void Append(IValOrderList<T> const& other, long long const& from = 0,
                        long long const& to = 0) {
        unsigned long const count = other.GetNumberOfEntry();
        if (count == 0)
            return;
        dlink::Span const span = dlink::AppendSpan(count, from, to);
        if (span.first > span.last)
            return;
        // The number of values is fixed up front, so appending a list to itself terminates.
        if (auto const* list = dynamic_cast<ValDLAbstractList<T> const*>(&other)) {
            ValDoubleLink<T>* node = list->GetNode(span.first);
            for (unsigned long i = span.first; i <= span.last; ++i, node = node->mNext)
                Append(node->mValue);
            return;
        }
        dlink::ForEach(other, span.first, span.last, [this](T const& value) { Append(value); });
    }
    /// Stores a copy of value so that it takes position; position == count appends.
    /// Throws InvalidIndexException when position > count (the message names the pointer
    /// list: the text is shared with it on purpose).
    virtual void InsertAt(T const& value, unsigned long const& position) {
        if (position > this->mCount)
            LSTD_THROW(InvalidIndexException,
                       "The position passed into PtrDLinkList<T>::InsertAt() method is invalid.");
        if (position == this->mCount)
            Append(value);
        else
            this->InsertBeforeNode(this->GetNode(position), value);
    }
    /// Whether a value equal to value is stored; copies it to *found when given.
    virtual bool Find(T const& value, T* found) const {
        ValDoubleLink<T>* node = this->FindNode(value, nullptr);
        if (node != nullptr && found != nullptr)
            *found = node->mValue;
        return node != nullptr;
    }
    /// Find(value, &found).
    virtual bool Find(T const& value, T& found) const { return Find(value, &found); }
    /// Copies the previous value to *old (when given) and stores value at position. Throws
    /// InvalidIndexException when position >= count (pointer-list wording, on purpose).
    virtual void ReplaceAt(T const& value, unsigned long const& position, T* old) {
        if (position >= this->mCount)
            LSTD_THROW(InvalidIndexException,
                       "The position passed into PtrDLinkList<T>::ReplaceAt() method is invalid.");
        ValDoubleLink<T>* node = this->GetNode(position);
        if (old != nullptr)
            *old = node->mValue;
        node->mValue = value;
    }
    /// Exchanges the values at i and j; nothing when i == j (even when out of range).
    /// Throws InvalidIndexException "Invalid position (%d)" for a bad position, i checked
    /// before j.
    virtual void Swap(unsigned long const& i, unsigned long const& j) {
        if (i == j)
            return;
        T& first = (*this)[i];
        T& second = (*this)[j];
        using std::swap;
        swap(first, second);
    }
};
}  // namespace lstd
#endif  // LSTD_VALDLINKLIST_H
