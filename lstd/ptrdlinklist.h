// lstd/ptrdlinklist.h - the concrete doubly linked list of T pointers and its iterator.
#ifndef LSTD_PTRDLINKLIST_H
#define LSTD_PTRDLINKLIST_H

#include <lstd/ptrdlabstractlist.h>

#include <utility>

namespace lstd {

/// The iterator that PtrDLinkList::CreateIterator returns.
template <typename T>
class PtrDLinkListIterator : public PtrDLAbstractListIterator<T> {
public:
    PtrDLinkListIterator() {}
    /// Copies range, position and current node.
    PtrDLinkListIterator(PtrDLinkListIterator const& other) : PtrDLAbstractListIterator<T>(other) {}
    /// Copies collection, position, end, fresh flag and node (begin is kept).
    PtrDLinkListIterator& operator=(PtrDLinkListIterator const& other) {
        PtrDLAbstractListIterator<T>::operator=(other);
        return *this;
    }
    using ListIterator<T>::operator=;
    virtual ~PtrDLinkListIterator() {}
};

/// Doubly linked list of T pointers (see PtrDLAbstractList for ownership). Items may be null.
/// Not copyable. A move hands the nodes over and leaves the source an empty list; no item is
/// deleted (a move assignment drops the target's nodes as Clear(0) does).
template <typename T>
class PtrDLinkList : public PtrDLAbstractList<T> {
public:
    PtrDLinkList() {}
    ///@{
    /// Takes other's nodes, leaving other empty; no item is copied or deleted. The assignment
    /// first drops this list's nodes as Clear(0) does (its items are not deleted).
    PtrDLinkList(PtrDLinkList&& other) noexcept : PtrDLAbstractList<T>(std::move(other)) {}
    PtrDLinkList& operator=(PtrDLinkList&& other) noexcept {
        this->TakeNodes(other);
        return *this;
    }
    ///@}
    virtual ~PtrDLinkList() {}

    using PtrDLAbstractList<T>::operator=;

    IPtrOrderListIterator<T>* CreateIterator(unsigned long const& position = 0,
                                             long long const& begin = 0,
                                             long long const& end = -1) const override {
        return dlink::NewIterator<PtrDLinkListIterator<T>>(*this, position, begin, end);
    }

    /// Links item (null allowed) after the tail.
    void Append(T* item) override { this->InsertBeforeNode(nullptr, item); }
    /// Appends the items of other at positions from..to inclusive. Deliberate: from below 1
    /// is 0 and to below 1 means the last position, so (0, 0) appends the whole list; to is
    /// clamped to the last position. An empty other appends nothing. Throws
    /// InvalidOperationException when from >= other's count.
    virtual void Append(PtrDLAbstractList<T> const& other, long long const& from = 0,
                        long long const& to = 0) {
        unsigned long const count = other.GetNumberOfEntry();
        if (count == 0)
            return;
        dlink::Span const span = dlink::AppendSpan(count, from, to);
        // The number of items is fixed up front, so appending a list to itself terminates.
        PtrDoubleLink<T>* node = other.GetNode(span.first);
        for (unsigned long i = span.first; i <= span.last; ++i, node = node->mNext)
            Append(node->mItem);
    }
    /// Inserts item so that it takes position; position == count appends. Throws
    /// InvalidIndexException when position > count.
    virtual void InsertAt(T* item, unsigned long const& position) {
        if (position > this->mCount)
            LSTD_THROW(InvalidIndexException,
                       "The position passed into PtrDLinkList<T>::InsertAt() method is invalid.");
        if (position == this->mCount)
            Append(item);
        else
            this->InsertBeforeNode(this->GetNode(position), item);
    }
    /// The first stored pointer whose object equals *item; null when none (or item is null).
    T* Find(T const* item) const override {
        PtrDoubleLink<T>* node = this->FindNode(item);
        return node != nullptr ? node->mItem : nullptr;
    }
    /// As Find, testing equal(stored, item) == 1.
    virtual T* Find(T const* item, unsigned char (*equal)(T const*, T const*)) const {
        for (PtrDoubleLink<T>* node = this->mHead; node != nullptr; node = node->mNext)
            if (equal(node->mItem, item) == 1)
                return node->mItem;
        return nullptr;
    }
    /// Stores item at position and returns the previous item (not deleted). Throws
    /// InvalidIndexException when position >= count.
    virtual T* ReplaceAt(T* item, unsigned long const& position) {
        if (position >= this->mCount)
            LSTD_THROW(InvalidIndexException,
                       "The position passed into PtrDLinkList<T>::ReplaceAt() method is invalid.");
        PtrDoubleLink<T>* node = this->GetNode(position);
        T* previous = node->mItem;
        node->mItem = item;
        return previous;
    }
    /// Position of the first entry equal to item (null matches null only), or all ones.
    virtual unsigned long Index(T const* item) const {
        unsigned long position = 0;
        for (PtrDoubleLink<T>* node = this->mHead; node != nullptr; node = node->mNext, ++position)
            if (this->Matches(node->mItem, item))
                return position;
        return static_cast<unsigned long>(-1);
    }
};
}  // namespace lstd
#endif  // LSTD_PTRDLINKLIST_H
