// lstd/ptrdlabstractlist.h - node, abstract doubly linked pointer list and its iterator.
#ifndef LSTD_PTRDLABSTRACTLIST_H
#define LSTD_PTRDLABSTRACTLIST_H

#include <lstd/collection.h>
#include <lstd/dlinkops.h>
#include <lstd/exception.h>
#include <lstd/iptrorderlist.h>
#include <lstd/string.h>

#include <new>
#include <vector>

namespace lstd {

/// One node of a pointer list; destroying it never touches the item.
template <typename T>
class PtrDoubleLink {
public:
    /// A node holding item between next and prev (either may be null).
    PtrDoubleLink(T* item, PtrDoubleLink* next, PtrDoubleLink* prev)
        : mItem(item), mNext(next), mPrev(prev) {}
    virtual ~PtrDoubleLink() {}

    /// The item, not owned.
    T* mItem;
    /// The next node, null at the tail.
    PtrDoubleLink* mNext;
    /// The previous node, null at the head.
    PtrDoubleLink* mPrev;
};

template <typename T>
class PtrDLAbstractListIterator;

/// Doubly linked list of T pointers. The list owns its nodes, never implicitly its items:
/// they are deleted only by Clear(1); the destructor clears with 0 and every removing
/// operation hands the pointer back. Positional access walks from the nearer end (the
/// middle of an even list is reached from the tail); there is no cached cursor. Lists are
/// not copyable; they move (see PtrDLinkList). Append and Find are supplied by PtrDLinkList.
///
/// begin() and end() walk the items head to tail for range-for and `<algorithm>`: a
/// bidirectional iterator whose element is the item slot (T*&, T* const& when const).
template <typename T>
class PtrDLAbstractList : public Collection<T>, public IPtrOrderList<T> {
public:
    /// Bidirectional iterator over the item slots (T*&: an item pointer may be replaced
    /// through it); converts to const_iterator. Valid while its node stays in the list.
    typedef dlink::NodeIterator<PtrDLAbstractList, PtrDoubleLink<T>, T*, T*&,
                                &PtrDoubleLink<T>::mItem>
        iterator;
    /// Bidirectional iterator over the item slots, read-only (T* const&).
    typedef dlink::NodeIterator<PtrDLAbstractList, PtrDoubleLink<T>, T*, T* const&,
                                &PtrDoubleLink<T>::mItem>
        const_iterator;
    /// The item type, T*.
    typedef T* value_type;

    PtrDLAbstractList() : mCount(0), mHead(nullptr), mTail(nullptr) {}
    PtrDLAbstractList(PtrDLAbstractList const&) = delete;
    PtrDLAbstractList& operator=(PtrDLAbstractList const&) = delete;
    virtual ~PtrDLAbstractList() { Clear(0); }

    ///@{
    /// Iteration head to tail; end() is past the tail, and -- from it reaches the tail.
    iterator begin() { return iterator(mHead, this); }
    iterator end() { return iterator(nullptr, this); }
    const_iterator begin() const { return const_iterator(mHead, this); }
    const_iterator end() const { return const_iterator(nullptr, this); }
    const_iterator cbegin() const { return begin(); }
    const_iterator cend() const { return end(); }
    ///@}

    using Collection<T>::operator=;
    using Collection<T>::operator==;
    using Collection<T>::operator!=;
    using Collection<T>::operator<;
    using Collection<T>::operator<=;
    using Collection<T>::operator>;
    using Collection<T>::operator>=;

    /// Removes the first item equal to *item (null matches the first null entry) and
    /// returns it, or null when none is equal.
    virtual T* Remove(T const* item) {
        PtrDoubleLink<T>* node = FindNode(item);
        return node != nullptr ? RemoveNode(node) : nullptr;
    }
    /// Remove(item) for each item of other, in order; each non-null result is appended to
    /// removed when given.
    virtual void Remove(IPtrOrderList<T> const& other, IPtrCollection<T>* removed) {
        ForEachOf(other, removed, [this, removed](T* item) {
            T* result = Remove(item);
            if (result != nullptr && removed != nullptr)
                removed->Append(result);
        });
    }
    /// Removes every item equal to *item in list order; removed (when given) is emptied
    /// with Clear(0) first and receives them.
    virtual void RemoveAll(T const* item, IPtrCollection<T>* removed) {
        if (removed != nullptr)
            removed->Clear(0);
        PtrDoubleLink<T>* node = mHead;
        while (node != nullptr) {
            PtrDoubleLink<T>* next = node->mNext;
            if (Matches(node->mItem, item)) {
                T* result = RemoveNode(node);
                if (removed != nullptr)
                    removed->Append(result);
            }
            node = next;
        }
    }
    /// RemoveAll(item, removed) for each item of other. Deliberate: removed is emptied
    /// before each item, so it ends up holding the removals for the last item only.
    virtual void RemoveAll(IPtrOrderList<T> const& other, IPtrCollection<T>* removed) {
        ForEachOf(other, removed, [this, removed](T* item) { RemoveAll(item, removed); });
    }
    /// Removes the iterator's current node and returns its item (null without a current
    /// node). forward = 1 moves the iterator to the next node at the same position; any
    /// other value moves it back to the predecessor, or re-initialises it on the new head.
    /// Throws InvalidOperationException "Invalid iterator" for another list's iterator.
    virtual T* Remove(PtrDLAbstractListIterator<T>& it, unsigned char const& forward);
    /// Unlink the head (tail) and return its item; null when empty.
    ///@{
    virtual T* RemoveFirst() { return RemoveNode(mHead); }
    virtual T* RemoveLast() { return RemoveNode(mTail); }
    ///@}
    /// Calls fn on every item, head to tail.
    virtual void Apply(void (*fn)(T*)) {
        for (PtrDoubleLink<T>* node = mHead; node != nullptr; node = node->mNext)
            fn(node->mItem);
    }
    /// Deletes every node; with deleteFlag equal to 1 also every non-null item (an item
    /// stored twice is deleted twice: not guarded).
    virtual void Clear(unsigned char const& deleteFlag) {
        PtrDoubleLink<T>* node = mHead;
        mHead = mTail = nullptr;
        mCount = 0;
        while (node != nullptr) {
            PtrDoubleLink<T>* next = node->mNext;
            if (deleteFlag == 1 && node->mItem != nullptr)
                delete node->mItem;
            delete node;
            node = next;
        }
    }
    /// Unlinks the node at position and returns its item; null when out of range.
    virtual T* RemoveAt(unsigned long const& position) {
        return position < mCount ? RemoveNode(GetNode(position)) : nullptr;
    }
    /// The item slot at position; throws InvalidIndexException "Invalid position (%d)".
    virtual T*& operator[](unsigned long const& position) const {
        if (position >= mCount)
            LSTD_THROWF(InvalidIndexException, "Invalid position (%d)", static_cast<int>(position));
        return GetNode(position)->mItem;
    }
    /// The item at position, or null when out of range.
    virtual T* Get(unsigned long const& position) const {
        return position < mCount ? GetNode(position)->mItem : nullptr;
    }
    virtual IPtrOrderListIterator<T>* CreateIterator(unsigned long const& position = 0,
                                                     long long const& begin = 0,
                                                     long long const& end = -1) const = 0;
    /// The number of items.
    virtual unsigned long GetNumberOfEntry() const { return mCount; }

    /// The node at position (walking from the nearer end), or null when out of range.
    PtrDoubleLink<T>* GetNode(unsigned long const& position) const {
        return position < mCount ? dlink::WalkTo(mHead, mTail, mCount, position) : nullptr;
    }
    /// The first node, or null; walk with mNext without copying items.
    PtrDoubleLink<T>* GetHead() const { return mHead; }
    /// The last node, or null.
    PtrDoubleLink<T>* GetTail() const { return mTail; }

protected:
    /// Takes other's nodes, leaving other empty; no item is copied or deleted.
    PtrDLAbstractList(PtrDLAbstractList&& other) noexcept
        : Collection<T>(), IPtrOrderList<T>(), mCount(other.mCount), mHead(other.mHead),
          mTail(other.mTail) {
        other.Forget();
    }
    /// Drops this list's nodes (never its items), then takes other's, leaving other empty.
    void TakeNodes(PtrDLAbstractList& other) noexcept {
        if (this == &other)
            return;
        PtrDLAbstractList<T>::Clear(0);
        mCount = other.mCount;
        mHead = other.mHead;
        mTail = other.mTail;
        other.Forget();
    }
    /// @cond INTERNAL
    /// Links a new node holding item before node (after the tail when node is null) and
    /// returns it. Throws NotEnoughMemoryException with the allocator's text.
    PtrDoubleLink<T>* InsertBeforeNode(PtrDoubleLink<T>* node, T* item) {
        PtrDoubleLink<T>* fresh;
        try {
            fresh = new PtrDoubleLink<T>(item, nullptr, nullptr);
        } catch (std::bad_alloc const& e) {
            LSTD_THROW(NotEnoughMemoryException, e.what());
        }
        dlink::LinkBefore(mHead, mTail, node, fresh);
        ++mCount;
        return fresh;
    }
    /// Unlinks and deletes node, returning its item; null for a null node.
    T* RemoveNode(PtrDoubleLink<T>* node) {
        if (node == nullptr)
            return nullptr;
        dlink::Unlink(mHead, mTail, node);
        --mCount;
        T* item = node->mItem;
        delete node;
        return item;
    }
    /// Equality of a stored pointer with a searched one: contents by T's operator==, null
    /// matching null only.
    static bool Matches(T const* stored, T const* item) {
        if (stored == nullptr || item == nullptr)
            return stored == item;
        return *stored == *item;
    }
    PtrDoubleLink<T>* FindNode(T const* item) const {
        for (PtrDoubleLink<T>* node = mHead; node != nullptr; node = node->mNext)
            if (Matches(node->mItem, item))
                return node;
        return nullptr;
    }
    /// Calls visit with each item of other, in order. other is walked in place, unless it is
    /// this very list or the collection that receives the removed items: the visits change
    /// those, so a copy of the items is taken first.
    template <typename Visit>
    void ForEachOf(IPtrOrderList<T> const& other, IPtrCollection<T> const* removed,
                   Visit visit) const {
        IPtrOrderList<T> const* const self = this;
        bool const changed =
            &other == self || static_cast<IPtrCollection<T> const*>(&other) == removed;
        dlink::ForEachOf<PtrDLAbstractList, T*>(
            other, changed, [](PtrDoubleLink<T>* node) { return node->mItem; }, visit);
    }

    unsigned long mCount;
    PtrDoubleLink<T>* mHead;
    PtrDoubleLink<T>* mTail;
    /// @endcond

private:
    void Forget() {
        mCount = 0;
        mHead = mTail = nullptr;
    }

    friend class PtrDLAbstractListIterator<T>;
};

/// Iterator of the pointer lists: a position range plus the current node.
template <typename T>
class PtrDLAbstractListIterator : public IPtrOrderListIterator<T> {
public:
    PtrDLAbstractListIterator() : mCurNode(nullptr) {}
    /// Copies range, position and current node.
    PtrDLAbstractListIterator(PtrDLAbstractListIterator const& other)
        : IPtrOrderListIterator<T>(other), mCurNode(other.mCurNode) {}
    virtual ~PtrDLAbstractListIterator() {}

    using ListIterator<T>::operator=;
    using ListIterator<T>::GetNextIterator;
    using ListIterator<T>::GetPrevIterator;
    /// Copies collection, position, end, fresh flag and node (begin is kept).
    PtrDLAbstractListIterator& operator=(PtrDLAbstractListIterator const& other) {
        ListIterator<T>::operator=(other);
        mCurNode = other.mCurNode;
        return *this;
    }

    /// Unbinds the iterator, marks it exhausted and drops the node.
    void Clear() override {
        ListIterator<T>::Clear();
        mCurNode = nullptr;
    }
    /// Stands on the node at position with the range rules of ListIterator. An empty list
    /// with position 0 gives no node. Throws NotInitializedIteratorException when unbound,
    /// InvalidOperationException when position is out of a non-empty list's range.
    void Reset(unsigned long position, long long begin, long long end) override {
        PtrDLAbstractList<T> const* list = List();
        unsigned long const count = list->mCount;
        if (count == 0 && position == 0) {
            mCurNode = nullptr;
        } else if (position >= count) {
            LSTD_THROWF(InvalidOperationException,
                        "Initial position '%d' is out of range (0 -> %d - 1).",
                        static_cast<int>(position), static_cast<int>(count));
        } else {
            mCurNode = list->GetNode(position);
        }
        this->SetRange(position, begin, end, count);
    }
    /// Delivers the current item on the first call after Reset, then moves forward; false
    /// once the range end is passed (the node then stays where it was).
    bool operator++() override { return this->StepForward(mCurNode); }
    /// The mirror image of operator++, stopping at begin.
    bool operator--() override { return this->StepBack(mCurNode); }
    /// The current item; throws NotInitializedIteratorException without a current node.
    T* Get() const override { return Node()->mItem; }
    /// Stores item in the current node and returns the previous item (not deleted).
    T* Set(T* item) const override {
        PtrDoubleLink<T>* node = Node();
        T* previous = node->mItem;
        node->mItem = item;
        return previous;
    }
    /// target: position + 1 on this node's successor (or null), same range, fresh.
    virtual void GetNextIterator(PtrDLAbstractListIterator& target) const {
        ListIterator<T>::GetNextIterator(target);
        target.mCurNode = mCurNode != nullptr ? mCurNode->mNext : nullptr;
    }
    /// target: position - 1 (0 stays 0) on this node's predecessor (or null), fresh.
    virtual void GetPrevIterator(PtrDLAbstractListIterator& target) const {
        ListIterator<T>::GetPrevIterator(target);
        target.mCurNode = mCurNode != nullptr ? mCurNode->mPrev : nullptr;
    }

protected:
    /// @cond INTERNAL
    PtrDoubleLink<T>* mCurNode;
    /// @endcond

private:
    PtrDLAbstractList<T> const* List() const {
        if (this->mCollection == nullptr)
            LSTD_THROW(NotInitializedIteratorException,
                       "This iterator is not initialized. Please call Init() method before.");
        auto const* list = dynamic_cast<PtrDLAbstractList<T> const*>(this->mCollection);
        if (list == nullptr)
            LSTD_THROW(InvalidOperationException, "Invalid iterator");
        return list;
    }
    PtrDoubleLink<T>* Node() const {
        if (mCurNode == nullptr)
            LSTD_THROW(NotInitializedIteratorException, "Iterator not set validity.");
        return mCurNode;
    }

    friend class PtrDLAbstractList<T>;
};

template <typename T>
T* PtrDLAbstractList<T>::Remove(PtrDLAbstractListIterator<T>& it, unsigned char const& forward) {
    if (it.mCollection != static_cast<Collection<T> const*>(this))
        LSTD_THROW(InvalidOperationException, "Invalid iterator");
    PtrDoubleLink<T>* node = it.mCurNode;
    if (node == nullptr)
        return nullptr;
    bool const wasHead = it.LeaveNode(it.mCurNode, forward);
    T* item = RemoveNode(node);
    if (wasHead) {
        if (mCount > 0)
            it.Reset(0, static_cast<long long>(it.mBegin), static_cast<long long>(it.mEnd));
        else
            it.mCurNode = nullptr;
    }
    return item;
}
}  // namespace lstd
#endif  // LSTD_PTRDLABSTRACTLIST_H
