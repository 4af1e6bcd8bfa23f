// lstd/valdlabstractlist.h - node, abstract doubly linked value list and its iterator.
#ifndef LSTD_VALDLABSTRACTLIST_H
#define LSTD_VALDLABSTRACTLIST_H

#include <lstd/collection.h>
#include <lstd/dlinkops.h>
#include <lstd/exception.h>
#include <lstd/ivalorderlist.h>
#include <lstd/string.h>

#include <new>
#include <vector>

namespace lstd {

/// One node of a value list; destroying it destroys the stored copy.
template <typename T>
class ValDoubleLink {
public:
    /// A node holding a copy of value, unlinked.
    explicit ValDoubleLink(T const& value) : mValue(value), mNext(nullptr), mPrev(nullptr) {}
    virtual ~ValDoubleLink() {}

    /// The stored value.
    T mValue;
    /// The next node, null at the tail.
    ValDoubleLink* mNext;
    /// The previous node, null at the head.
    ValDoubleLink* mPrev;
};

template <typename T>
class ValDLAbstractListIterator;

/// Doubly linked list of copies of T. Removing operations copy the removed value to an
/// optional out-pointer and report whether something was removed. Positional access walks
/// from the nearer end. Copies are deep; a move hands the nodes over, copying no value, and
/// leaves the source empty. Append, InsertAt and Find come from the concrete lists.
///
/// begin() and end() walk the values head to tail for range-for and `<algorithm>`: a
/// bidirectional iterator over the stored values (T&, T const& when const).
template <typename T>
class ValDLAbstractList : public Collection<T>, public IValOrderList<T> {
public:
    /// An equality test: 1 when the stored value (first) matches the searched one.
    typedef unsigned char (*EqualFunc)(T const&, T const&);
    /// Bidirectional iterator over the stored values (T&); converts to const_iterator. Valid
    /// while its node stays in the list.
    typedef dlink::NodeIterator<ValDLAbstractList, ValDoubleLink<T>, T, T&,
                                &ValDoubleLink<T>::mValue>
        iterator;
    /// Bidirectional iterator over the stored values, read-only (T const&).
    typedef dlink::NodeIterator<ValDLAbstractList, ValDoubleLink<T>, T, T const&,
                                &ValDoubleLink<T>::mValue>
        const_iterator;
    /// The value type, T.
    typedef T value_type;

    ValDLAbstractList() : mCount(0), mHead(nullptr), mTail(nullptr) {}
    /// Deep copies: the values are copied in order (lists of lists are values too). A copy
    /// that fails leaves the target as it was.
    ValDLAbstractList(ValDLAbstractList const& other)
        : Collection<T>(other), IValOrderList<T>(other), mCount(0), mHead(nullptr), mTail(nullptr) {
        CopyNodes(other);
    }
    /// Replaces the values by copies of other's, in order.
    ValDLAbstractList& operator=(ValDLAbstractList const& other) {
        if (this != &other)
            CopyNodes(other);
        return *this;
    }
    /// Takes other's nodes; other is left empty.
    ValDLAbstractList(ValDLAbstractList&& other) noexcept
        : Collection<T>(), IValOrderList<T>(), mCount(other.mCount), mHead(other.mHead),
          mTail(other.mTail) {
        other.Forget();
    }
    /// Destroys this list's values, then takes other's nodes; other is left empty.
    ValDLAbstractList& operator=(ValDLAbstractList&& other) noexcept {
        if (this != &other) {
            DestroyNodes();
            mCount = other.mCount;
            mHead = other.mHead;
            mTail = other.mTail;
            other.Forget();
        }
        return *this;
    }
    virtual ~ValDLAbstractList() { DestroyNodes(); }

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

    /// The number of values.
    virtual unsigned long GetNumberOfEntry() const { return mCount; }
    /// Removes the first value matching v (by T's operator== when equal is null, else
    /// equal(stored, v) == 1), copying it to *out when given.
    virtual bool Remove(T const& v, EqualFunc equal, T* out) {
        return RemoveNode(FindNode(v, equal), out);
    }
    virtual bool Remove(T const& v, T* out) { return Remove(v, nullptr, out); }
    /// Remove(value, ...) for each value of other; removed values are appended to removed.
    virtual void Remove(IValOrderList<T> const& other, IValCollection<T>* removed) {
        ForEachOf(other, removed, [this, removed](T const& value) {
            if (removed == nullptr) {
                Remove(value, nullptr);
            } else {
                T out(value);
                if (Remove(value, &out))
                    removed->Append(out);
            }
        });
    }
    /// As above, matching with equal (see Remove(v, equal, out)).
    virtual void Remove(IValOrderList<T> const& other, EqualFunc equal,
                        IValCollection<T>* removed) {
        ForEachOf(other, removed, [this, equal, removed](T const& value) {
            ValDoubleLink<T>* node = FindNode(value, equal);
            if (node != nullptr && removed != nullptr)
                removed->Append(node->mValue);
            RemoveNode(node, nullptr);
        });
    }
    /// Removes every value equal to v in list order; removed (when given) is emptied first
    /// and receives them.
    virtual void RemoveAll(T const& v, IValCollection<T>* removed) {
        RemoveAll(v, nullptr, removed);
    }
    /// As above, matching with equal when it is not null.
    virtual void RemoveAll(T const& v, EqualFunc equal, IValCollection<T>* removed) {
        if (removed != nullptr)
            removed->Clear();
        ValDoubleLink<T>* node = mHead;
        while (node != nullptr) {
            ValDoubleLink<T>* next = node->mNext;
            if (Matches(node->mValue, v, equal)) {
                if (removed != nullptr)
                    removed->Append(node->mValue);
                RemoveNode(node, nullptr);
            }
            node = next;
        }
    }
    /// RemoveAll(value, removed) for each value of other. Deliberate: removed is emptied
    /// before each value, so it ends up holding the removals for the last value only.
    virtual void RemoveAll(IValOrderList<T> const& other, IValCollection<T>* removed) {
        ForEachOf(other, removed,
                  [this, removed](T const& value) { RemoveAll(value, nullptr, removed); });
    }
    /// As above, matching with equal when it is not null.
    virtual void RemoveAll(IValOrderList<T> const& other, EqualFunc equal,
                           IValCollection<T>* removed) {
        ForEachOf(other, removed,
                  [this, equal, removed](T const& value) { RemoveAll(value, equal, removed); });
    }
    /// Removes the iterator's current node, copying its value to *out; false without a
    /// current node. The iterator moves as for the pointer lists. Throws
    /// InvalidOperationException "Invalid iterator object." for another list's iterator.
    virtual bool Remove(ValDLAbstractListIterator<T>& it, unsigned char const& forward, T* out);
    ///@{
    /// Remove the head (tail), copying its value to *out; false when empty.
    virtual bool RemoveFirst(T* out) { return RemoveNode(mHead, out); }
    virtual bool RemoveLast(T* out) { return RemoveNode(mTail, out); }
    ///@}
    /// Calls fn on every stored value, head to tail.
    virtual void Apply(void (*fn)(T&)) {
        for (ValDoubleLink<T>* node = mHead; node != nullptr; node = node->mNext)
            fn(node->mValue);
    }
    /// Destroys every node and stored value.
    virtual void Clear() { DestroyNodes(); }
    /// Position of the first value equal to v, or all ones.
    virtual unsigned long Index(T const& v) const {
        unsigned long position = 0;
        for (ValDoubleLink<T>* node = mHead; node != nullptr; node = node->mNext, ++position)
            if (node->mValue == v)
                return position;
        return static_cast<unsigned long>(-1);
    }
    /// Removes the value at position, copying it to *out; false when out of range.
    virtual bool RemoveAt(unsigned long const& position, T* out) {
        return RemoveNode(GetNode(position), out);
    }
    /// Throws InvalidIndexException "Invalid position (%d)" when out of range.
    virtual T& operator[](unsigned long const& position) const {
        if (position >= mCount)
            LSTD_THROWF(InvalidIndexException, "Invalid position (%d)", static_cast<int>(position));
        return GetNode(position)->mValue;
    }
    /// Copies the value at position into value; false when out of range.
    virtual bool Get(unsigned long const& position, T& value) const {
        if (position >= mCount)
            return false;
        value = GetNode(position)->mValue;
        return true;
    }
    /// Throws InvalidIndexException "The index '%d' is out of range." when out of range.
    virtual T& Get(unsigned long const& position) const {
        if (position >= mCount)
            LSTD_THROWF(InvalidIndexException, "The index '%d' is out of range.",
                        static_cast<int>(position));
        return GetNode(position)->mValue;
    }
    virtual IValOrderListIterator<T>* CreateIterator(unsigned long const& position = 0,
                                                     long long const& begin = 0,
                                                     long long const& end = -1) const;

    ///@{
    /// First (last) stored value; throws InvalidOperationException "The list is empty.".
    T& GetFirst() const {
        if (mHead == nullptr)
            LSTD_THROW(InvalidOperationException, "The list is empty.");
        return mHead->mValue;
    }
    T& GetLast() const {
        if (mTail == nullptr)
            LSTD_THROW(InvalidOperationException, "The list is empty.");
        return mTail->mValue;
    }
    ///@}
    /// The node at position (walking from the nearer end), or null when out of range.
    ValDoubleLink<T>* GetNode(unsigned long const& position) const {
        return position < mCount ? dlink::WalkTo(mHead, mTail, mCount, position) : nullptr;
    }
    /// The first node, or null; walk with mNext without copying values.
    ValDoubleLink<T>* GetHead() const { return mHead; }
    /// The last node, or null.
    ValDoubleLink<T>* GetTail() const { return mTail; }

protected:
    /// @cond INTERNAL
    /// Links a copy of value before node (after the tail when node is null) and returns the
    /// new node. Throws NotEnoughMemoryException with the allocator's text; exceptions of
    /// T's copy constructor propagate. The list is unchanged on failure.
    ValDoubleLink<T>* InsertBeforeNode(ValDoubleLink<T>* node, T const& value) {
        ValDoubleLink<T>* fresh;
        try {
            fresh = new ValDoubleLink<T>(value);
        } catch (std::bad_alloc const& e) {
            LSTD_THROW(NotEnoughMemoryException, e.what());
        }
        dlink::LinkBefore(mHead, mTail, node, fresh);
        ++mCount;
        return fresh;
    }
    /// Unlinks node, copies its value to *out when given, destroys it; false for null.
    bool RemoveNode(ValDoubleLink<T>* node, T* out) {
        if (node == nullptr)
            return false;
        dlink::Unlink(mHead, mTail, node);
        --mCount;
        if (out != nullptr) {
            try {
                *out = static_cast<T&&>(node->mValue);
            } catch (...) {
                delete node;
                throw;
            }
        }
        delete node;
        return true;
    }
    static bool Matches(T const& stored, T const& v, EqualFunc equal) {
        return equal == nullptr ? stored == v : equal(stored, v) == 1;
    }
    ValDoubleLink<T>* FindNode(T const& v, EqualFunc equal) const {
        for (ValDoubleLink<T>* node = mHead; node != nullptr; node = node->mNext)
            if (Matches(node->mValue, v, equal))
                return node;
        return nullptr;
    }
    void DestroyNodes() {
        ValDoubleLink<T>* node = mHead;
        mHead = mTail = nullptr;
        mCount = 0;
        DestroyChain(node);
    }
    static void DestroyChain(ValDoubleLink<T>* node) {
        while (node != nullptr) {
            ValDoubleLink<T>* next = node->mNext;
            delete node;
            node = next;
        }
    }
    /// Replaces the nodes by copies of other's; on failure the list keeps its own nodes.
    void CopyNodes(ValDLAbstractList const& other) {
        ValDoubleLink<T>* head = nullptr;
        ValDoubleLink<T>* tail = nullptr;
        try {
            for (ValDoubleLink<T>* node = other.mHead; node != nullptr; node = node->mNext) {
                ValDoubleLink<T>* fresh = new ValDoubleLink<T>(node->mValue);
                dlink::LinkBefore(head, tail, static_cast<ValDoubleLink<T>*>(nullptr), fresh);
            }
        } catch (std::bad_alloc const& e) {
            DestroyChain(head);
            LSTD_THROW(NotEnoughMemoryException, e.what());
        } catch (...) {
            DestroyChain(head);
            throw;
        }
        DestroyNodes();
        mHead = head;
        mTail = tail;
        mCount = other.mCount;
    }
    /// Calls visit with each value of other, in order. other is walked in place, unless it
    /// is this very list or the collection that receives the removed values: the visits
    /// change those, so a copy of the values is taken first.
    template <typename Visit>
    void ForEachOf(IValOrderList<T> const& other, IValCollection<T> const* removed,
                   Visit visit) const {
        IValOrderList<T> const* const self = this;
        bool const changed =
            &other == self || static_cast<IValCollection<T> const*>(&other) == removed;
        dlink::ForEachOf<ValDLAbstractList, T>(
            other, changed, [](ValDoubleLink<T>* node) -> T const& { return node->mValue; }, visit);
    }

    unsigned long mCount;
    ValDoubleLink<T>* mHead;
    ValDoubleLink<T>* mTail;
    /// @endcond

private:
    void Forget() {
        mCount = 0;
        mHead = mTail = nullptr;
    }

    friend class ValDLAbstractListIterator<T>;
};

/// Iterator of the value lists: a position range plus the current node.
template <typename T>
class ValDLAbstractListIterator : public IValOrderListIterator<T> {
public:
    ValDLAbstractListIterator() : mCurNode(nullptr) {}
    /// Copies range, position and current node.
    ValDLAbstractListIterator(ValDLAbstractListIterator const& other)
        : IValOrderListIterator<T>(other), mCurNode(other.mCurNode) {}
    virtual ~ValDLAbstractListIterator() {}

    using ListIterator<T>::Init;
    using ListIterator<T>::operator=;
    using ListIterator<T>::GetNextIterator;
    using ListIterator<T>::GetPrevIterator;
    /// Copies collection, position, end, fresh flag and node (begin is kept).
    ValDLAbstractListIterator& operator=(ValDLAbstractListIterator const& other) {
        ListIterator<T>::operator=(other);
        mCurNode = other.mCurNode;
        return *this;
    }

    /// Stands on the node at position with the range rules of ListIterator. An empty list
    /// with position 0 gives no node. Throws NotInitializedIteratorException when unbound,
    /// InvalidOperationException when position is out of a non-empty list's range.
    void Reset(unsigned long position, long long begin, long long end) override {
        if (this->mCollection == nullptr)
            LSTD_THROW(NotInitializedIteratorException,
                       "This iterator is not initialized. Please call Init() method before.");
        auto const* list = dynamic_cast<ValDLAbstractList<T> const*>(this->mCollection);
        if (list == nullptr)
            LSTD_THROW(InvalidOperationException, "Invalid iterator object.");
        unsigned long const count = list->mCount;
        if (count == 0 && position == 0)
            mCurNode = nullptr;
        else if (position >= count)
            LSTD_THROWF(InvalidOperationException,
                        "Initial position '%d' is out of range (0 -> %d - 1).",
                        static_cast<int>(position), static_cast<int>(count));
        else
            mCurNode = list->GetNode(position);
        this->SetRange(position, begin, end, count);
    }
    bool operator++() override { return this->StepForward(mCurNode); }
    bool operator--() override { return this->StepBack(mCurNode); }
    /// Copies the current value; throws NotInitializedIteratorException without one.
    bool Get(T& value) const override {
        value = Node()->mValue;
        return true;
    }
    /// The stored current value; throws NotInitializedIteratorException without one.
    T& Get() const override { return Node()->mValue; }
    /// Replaces the current value; throws NotInitializedIteratorException without one.
    void Set(T const& value) const override { Node()->mValue = value; }
    // Clear is deliberately the base one: it unbinds and exhausts the iterator but keeps the
    // node, so Get still returns its value (the pointer iterator's Clear drops the node).

    /// target: position + 1 on this node's successor (or null), same range, fresh.
    virtual void GetNextIterator(ValDLAbstractListIterator& target) const {
        ListIterator<T>::GetNextIterator(target);
        target.mCurNode = mCurNode != nullptr ? mCurNode->mNext : nullptr;
    }
    /// target: position - 1 (0 stays 0) on this node's predecessor (or null), fresh.
    virtual void GetPrevIterator(ValDLAbstractListIterator& target) const {
        ListIterator<T>::GetPrevIterator(target);
        target.mCurNode = mCurNode != nullptr ? mCurNode->mPrev : nullptr;
    }
    /// Binds list and stands on position over [begin, end].
    void Init(ValDLAbstractList<T> const& list, unsigned long position, long long begin,
              long long end) {
        ListIterator<T>::Init(list, position, begin, end);
    }

protected:
    /// @cond INTERNAL
    ValDoubleLink<T>* mCurNode;
    /// @endcond

private:
    ValDoubleLink<T>* Node() const {
        if (mCurNode == nullptr)
            LSTD_THROW(NotInitializedIteratorException,
                       "ValDLAbstractListIterator is not initialized");
        return mCurNode;
    }

    friend class ValDLAbstractList<T>;
};

template <typename T>
IValOrderListIterator<T>* ValDLAbstractList<T>::CreateIterator(unsigned long const& position,
                                                               long long const& begin,
                                                               long long const& end) const {
    return dlink::NewIterator<ValDLAbstractListIterator<T>>(*this, position, begin, end);
}

template <typename T>
bool ValDLAbstractList<T>::Remove(ValDLAbstractListIterator<T>& it, unsigned char const& forward,
                                  T* out) {
    if (it.mCollection != static_cast<Collection<T> const*>(this))
        LSTD_THROW(InvalidOperationException, "Invalid iterator object.");
    ValDoubleLink<T>* node = it.mCurNode;
    if (node == nullptr)
        return false;
    bool const wasHead = it.LeaveNode(it.mCurNode, forward);
    RemoveNode(node, out);
    if (wasHead) {
        if (mCount > 0)
            it.Reset(0, static_cast<long long>(it.mBegin), static_cast<long long>(it.mEnd));
        else
            it.mCurNode = nullptr;
    }
    return true;
}
}  // namespace lstd
#endif  // LSTD_VALDLABSTRACTLIST_H
