// lstd/parray.h - fixed-length array of T pointers stored as a chain of blocks.
#ifndef LSTD_PARRAY_H
#define LSTD_PARRAY_H

#include <lstd/blockchain.h>
#include <lstd/exception.h>
#include <lstd/ptrdlinklist.h>
#include <lstd/string.h>

#include <cstdlib>
#include <new>
#include <utility>

namespace lstd {

/// Array<T>'s block structure holding T pointers. It owns the slots only, never the
/// objects pointed to: whoever stores a pointer deletes the object. New slots are null.
/// Not copyable; a move hands the slots over. begin() and end() give random-access iterators.
template <typename T>
class PArray {
public:
    /// A run of mBlockSize pointer slots in one malloc'ed area.
    class PBlock {
    public:
        PBlock() : mData(nullptr), mBlockSize(0) {}
        PBlock(PBlock const&) = delete;
        PBlock& operator=(PBlock const&) = delete;
        /// Frees the slots; deliberately leaves the pointed-to objects alone.
        virtual ~PBlock() { std::free(static_cast<void*>(mData)); }

        /// Slot index of the block; throws InvalidIndexException "The index '%d' is invalid.
        /// (mBlockSize=%d)" when index >= mBlockSize.
        T*& operator[](unsigned long const& index) {
            if (index >= mBlockSize)
                LSTD_THROWF(InvalidIndexException, "The index '%d' is invalid. (mBlockSize=%d)",
                            static_cast<int>(index), static_cast<int>(mBlockSize));
            return mData[index];
        }
        /// The number of slots in this block.
        unsigned long GetBlockSize() const { return mBlockSize; }
        /// The block's elements.
        T** GetData() const { return mData; }
        /// Blocks are told apart by identity (the block list searches with it).
        bool operator==(PBlock const& other) const { return this == &other; }
        /// Keeps the first kept slots by realloc; false (nothing changed) when that fails.
        bool Trim(unsigned long kept) {
            void* storage = std::realloc(static_cast<void*>(mData), kept * sizeof(T*));
            if (storage == nullptr)
                return false;
            mData = static_cast<T**>(storage);
            mBlockSize = kept;
            return true;
        }

    private:
        T** mData;
        unsigned long mBlockSize;

        friend class PArray;
    };

    /// Random-access iterator over the slots (T*&: a slot may be set through it); converts to
    /// const_iterator. Resizing or moving the array invalidates it.
    typedef blockchain::ElementIterator<PBlock, T*, T*&> iterator;
    /// Random-access iterator over the slots, read-only (T* const&).
    typedef blockchain::ElementIterator<PBlock, T*, T* const&> const_iterator;
    /// The slot type, T*.
    typedef T* value_type;

    /// length null slots (no block for 0). Throws NotEnoughMemoryException when even a
    /// one-slot block cannot be had.
    explicit PArray(unsigned long const& length);
    PArray(PArray const&) = delete;
    PArray& operator=(PArray const&) = delete;
    /// Takes other's slots; other is left an array of length 0. No object is deleted.
    PArray(PArray&& other) noexcept : mBlocks(std::move(other.mBlocks)), mLength(other.mLength) {
        other.mLength = 0;
    }
    /// Frees this array's slots (no object is deleted), then takes other's; other is left
    /// an array of length 0.
    PArray& operator=(PArray&& other) noexcept {
        if (this != &other) {
            mBlocks.Clear(1);
            mBlocks = std::move(other.mBlocks);
            mLength = other.mLength;
            other.mLength = 0;
        }
        return *this;
    }
    /// Frees the slots; no stored object is deleted.
    virtual ~PArray() { mBlocks.Clear(1); }

    ///@{
    /// Random-access iteration over slots 0 to GetLength() - 1 (T*&, T* const& when const).
    iterator begin() { return iterator(&mBlocks, 0); }
    iterator end() { return iterator(&mBlocks, mLength); }
    const_iterator begin() const { return const_iterator(&mBlocks, 0); }
    const_iterator end() const { return const_iterator(&mBlocks, mLength); }
    const_iterator cbegin() const { return begin(); }
    const_iterator cend() const { return end(); }
    ///@}

    ///@{
    /// Slot index; throws InvalidIndexException "The index '%d' is invalid. (mLength=%d)"
    /// when index >= the length.
    T*& operator[](unsigned long const& index) { return Slot(index); }
    T* operator[](unsigned long const& index) const { return Slot(index); }
    ///@}
    /// Grows by a new block of null slots (several when memory is short), or shrinks from
    /// the end (the pointers of dropped slots are forgotten, not deleted); the length
    /// changes only when that succeeded. Throws NotEnoughMemoryException.
    void Resize(unsigned long const& length);
    /// The number of slots, changed only by Resize; a reference to the stored count.
    unsigned long const& GetLength() const { return mLength; }

protected:
    /// Adds count null slots after the last block, splitting failed sizes in halves as
    /// Array::AppendBlock does. Throws NotEnoughMemoryException.
    void Allocate(unsigned long const& count);
    /// Drops count slots from the end: whole blocks are deleted, the last remaining one is
    /// trimmed in place. Throws NotEnoughMemoryException "Cannot resize block.".
    void ShrinkBlock(unsigned long const& count);

private:
    T*& Slot(unsigned long const& index) const;

    PtrDLinkList<PBlock> mBlocks;
    unsigned long mLength;
};

template <typename T>
PArray<T>::PArray(unsigned long const& length) : mLength(length) {
    try {
        Allocate(length);
    } catch (...) {
        mBlocks.Clear(1);  // the destructor does not run for a failed construction
        throw;
    }
}

template <typename T>
T*& PArray<T>::Slot(unsigned long const& index) const {
    unsigned long offset = 0;
    PBlock* block = index < mLength ? blockchain::Locate(mBlocks, index, offset) : nullptr;
    if (block == nullptr)
        LSTD_THROWF(InvalidIndexException, "The index '%d' is invalid. (mLength=%d)",
                    static_cast<int>(index), static_cast<int>(mLength));
    return (*block)[offset];
}

template <typename T>
void PArray<T>::Resize(unsigned long const& length) {
    if (length > mLength)
        Allocate(length - mLength);
    else if (length < mLength)
        ShrinkBlock(mLength - length);
    mLength = length;
}

template <typename T>
void PArray<T>::Allocate(unsigned long const& count) {
    // New slots are null: the zeroed storage holds null pointers on this platform.
    bool const made = blockchain::AppendSplitting(count, [this](unsigned long size) {
        PBlock* block;
        try {
            block = new PBlock();
        } catch (std::bad_alloc const& e) {
            LSTD_THROW(NotEnoughMemoryException, e.what());
        }
        block->mData = blockchain::AllocateZeroed<T*>(size);
        if (block->mData == nullptr) {
            delete block;
            return false;
        }
        block->mBlockSize = size;
        try {
            mBlocks.Append(block);
        } catch (...) {
            delete block;
            throw;
        }
        return true;
    });
    if (!made)
        LSTD_THROW(NotEnoughMemoryException, "Out of memory");
}

template <typename T>
void PArray<T>::ShrinkBlock(unsigned long const& count) {
    if (!blockchain::ShrinkTail(mBlocks, count))
        LSTD_THROW(NotEnoughMemoryException, "Cannot resize block.");
}
}  // namespace lstd
#endif  // LSTD_PARRAY_H
