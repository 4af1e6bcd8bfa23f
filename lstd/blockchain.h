// lstd/blockchain.h - the block chain shared by Array and PArray (internal).
#ifndef LSTD_BLOCKCHAIN_H
#define LSTD_BLOCKCHAIN_H

#include <lstd/ptrdlinklist.h>
#include <lstd/valqueue.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <type_traits>

namespace lstd {
namespace blockchain {

/// Zeroed malloc'ed storage for count elements of E; null when it cannot be had (a size
/// that overflows counts as such).
template <typename E>
E* AllocateZeroed(unsigned long count) {
    if (count > SIZE_MAX / sizeof(E))
        return nullptr;
    void* storage = std::malloc(count * sizeof(E));
    if (storage != nullptr)
        std::memset(storage, 0, count * sizeof(E));
    return static_cast<E*>(storage);
}

/// The split-on-failure allocation of count elements. tryAppend(size) appends one block of
/// size elements, or returns false when its storage cannot be had; the size is then split in
/// halves queued first in, first out, so halves are tried after the sizes already waiting and
/// blocks follow in the order they succeed. Returns false when even one element fails (the
/// blocks made so far stay); exceptions of tryAppend propagate.
template <typename TryAppend>
bool AppendSplitting(unsigned long count, TryAppend tryAppend) {
    if (count == 0)
        return true;
    ValQueue<unsigned long> pending;
    pending.Push(count);
    unsigned long size = 0;
    while (pending.RemoveFirst(&size)) {
        if (tryAppend(size))
            continue;
        if (size == 1)
            return false;
        pending.Push(size >> 1);
        pending.Push(size - (size >> 1));
    }
    return true;
}

/// The block holding index, walking from the first block (one block, the usual case, needs
/// no walk), with the position inside it stored in offset; null (offset untouched) when the
/// blocks end first.
template <typename Block>
Block* Locate(PtrDLinkList<Block> const& blocks, unsigned long index, unsigned long& offset) {
    PtrDoubleLink<Block>* node = blocks.GetHead();
    if (node != nullptr && node->mNext == nullptr) {
        offset = index;
        return node->mItem;
    }
    for (unsigned long rest = index; node != nullptr; node = node->mNext) {
        if (node->mItem->GetBlockSize() > rest) {
            offset = rest;
            return node->mItem;
        }
        rest -= node->mItem->GetBlockSize();
    }
    return nullptr;
}

/// The standard-library iterator of Array and PArray (range-for, `<algorithm>`, std::sort):
/// random access by index, holding the block of its element, so that a step within a block
/// is a pointer increment and a jump walks the blocks from the current one (one block, the
/// usual case, needs no walk). Elem is the element type (T, or T* for PArray), Ref the
/// reference (const for a const_iterator, to which an iterator converts). Resize and moving
/// the array invalidate it.
template <typename Block, typename Elem, typename Ref>
class ElementIterator {
public:
    typedef std::random_access_iterator_tag iterator_category;
    typedef typename std::remove_cv<Elem>::type value_type;
    typedef std::ptrdiff_t difference_type;
    typedef typename std::remove_reference<Ref>::type* pointer;
    typedef Ref reference;

    ElementIterator() : mBlocks(nullptr), mNode(nullptr), mData(nullptr), mIndex(0), mFirst(0) {}
    /// Standing on index of the array whose blocks are blocks.
    ElementIterator(PtrDLinkList<Block> const* blocks, unsigned long index)
        : mBlocks(blocks), mNode(blocks->GetHead()), mData(nullptr), mIndex(0), mFirst(0) {
        Seek(index);
    }
    /// An iterator converts to a const_iterator.
    template <typename Other,
              typename = typename std::enable_if<std::is_convertible<Other, Ref>::value &&
                                                 !std::is_same<Other, Ref>::value>::type>
    ElementIterator(ElementIterator<Block, Elem, Other> const& other)
        : mBlocks(other.mBlocks), mNode(other.mNode), mData(other.mData), mIndex(other.mIndex),
          mFirst(other.mFirst) {}

    reference operator*() const { return mData[mIndex - mFirst]; }
    pointer operator->() const { return &mData[mIndex - mFirst]; }
    reference operator[](difference_type n) const { return *(*this + n); }

    ElementIterator& operator++() {
        if (++mIndex - mFirst == mNode->mItem->GetBlockSize())
            Seek(mIndex);
        return *this;
    }
    ElementIterator operator++(int) {
        ElementIterator const before = *this;
        ++*this;
        return before;
    }
    ElementIterator& operator--() {
        if (mNode == nullptr || mIndex == mFirst)
            Seek(mIndex - 1);
        else
            --mIndex;
        return *this;
    }
    ElementIterator operator--(int) {
        ElementIterator const before = *this;
        --*this;
        return before;
    }
    ElementIterator& operator+=(difference_type n) {
        Seek(mIndex + static_cast<unsigned long>(n));
        return *this;
    }
    ElementIterator& operator-=(difference_type n) {
        Seek(mIndex - static_cast<unsigned long>(n));
        return *this;
    }
    friend ElementIterator operator+(ElementIterator it, difference_type n) { return it += n; }
    friend ElementIterator operator+(difference_type n, ElementIterator it) { return it += n; }
    friend ElementIterator operator-(ElementIterator it, difference_type n) { return it -= n; }
    friend difference_type operator-(ElementIterator const& a, ElementIterator const& b) {
        return static_cast<difference_type>(a.mIndex - b.mIndex);
    }
    friend bool operator==(ElementIterator const& a, ElementIterator const& b) {
        return a.mIndex == b.mIndex;
    }
    friend bool operator!=(ElementIterator const& a, ElementIterator const& b) {
        return a.mIndex != b.mIndex;
    }
    friend bool operator<(ElementIterator const& a, ElementIterator const& b) {
        return a.mIndex < b.mIndex;
    }
    friend bool operator>(ElementIterator const& a, ElementIterator const& b) {
        return a.mIndex > b.mIndex;
    }
    friend bool operator<=(ElementIterator const& a, ElementIterator const& b) {
        return a.mIndex <= b.mIndex;
    }
    friend bool operator>=(ElementIterator const& a, ElementIterator const& b) {
        return a.mIndex >= b.mIndex;
    }

private:
    // Stands on index: walks back while the index lies before the current block (from the
    // end, starting at the last block), forward while it lies after it. Past the last block
    // no node is held; the index is then the array's length (end()).
    void Seek(unsigned long index) {
        while (index < mFirst) {
            mNode = mNode != nullptr ? mNode->mPrev : mBlocks->GetTail();
            mFirst -= mNode->mItem->GetBlockSize();
        }
        while (mNode != nullptr && index - mFirst >= mNode->mItem->GetBlockSize()) {
            mFirst += mNode->mItem->GetBlockSize();
            mNode = mNode->mNext;
        }
        mData = mNode != nullptr ? mNode->mItem->GetData() : nullptr;
        mIndex = index;
    }

    PtrDLinkList<Block> const* mBlocks;
    PtrDoubleLink<Block>* mNode;  // the block holding mIndex; null past the last block
    Elem* mData;                  // its elements
    unsigned long mIndex;
    unsigned long mFirst;  // the index of the block's first element

    template <typename, typename, typename>
    friend class ElementIterator;
};

/// Drops count elements from the end: whole blocks are deleted, the last remaining one is
/// trimmed in place by its Trim(kept). Returns false when that trim fails.
template <typename Block>
bool ShrinkTail(PtrDLinkList<Block>& blocks, unsigned long count) {
    unsigned long rest = count;
    while (rest > 0 && blocks.GetTail() != nullptr) {
        Block* last = blocks.GetTail()->mItem;
        if (last->GetBlockSize() > rest)
            return last->Trim(last->GetBlockSize() - rest);
        rest -= last->GetBlockSize();
        delete blocks.RemoveLast();
    }
    return true;
}
}  // namespace blockchain
}  // namespace lstd
#endif  // LSTD_BLOCKCHAIN_H
