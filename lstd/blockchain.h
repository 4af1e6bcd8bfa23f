// lstd/blockchain.h - the block chain shared by Array and PArray (internal).
#ifndef LSTD_BLOCKCHAIN_H
#define LSTD_BLOCKCHAIN_H

#include <lstd/ptrdlinklist.h>
#include <lstd/valqueue.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

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
