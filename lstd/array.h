// lstd/array.h - fixed-length array stored as a chain of separately allocated blocks.
#ifndef LSTD_ARRAY_H
#define LSTD_ARRAY_H

#include <lstd/blockchain.h>
#include <lstd/exception.h>
#include <lstd/ptrdlinklist.h>
#include <lstd/string.h>

#include <cstdlib>
#include <new>
#include <utility>

namespace lstd {

/// Index-addressed array of T whose storage is a list of blocks rather than one allocation:
/// a block that cannot be had is split in halves and retried, down to single elements. The
/// array owns its elements (built when a block is made, destroyed with it). Shrinking trims
/// with realloc: kept elements may move bitwise and trimmed ones are never destroyed, so
/// shrink only element types that tolerate both (words, pointers). Not copyable; a move
/// hands the blocks over. begin() and end() give random-access iterators (std::sort works).
template <typename T>
class Array {
public:
    /// A run of mBlockSize elements in one malloc'ed area; destroying it destroys them.
    class Block {
    public:
        Block() : mData(nullptr), mBlockSize(0) {}
        Block(Block const&) = delete;
        Block& operator=(Block const&) = delete;
        virtual ~Block() {
            for (unsigned long i = 0; i < mBlockSize; ++i)
                mData[i].~T();
            std::free(static_cast<void*>(mData));
        }

        /// Element index of the block; throws InvalidIndexException "The index '%d' is
        /// invalid. (mBlockSize=%d)" when index >= mBlockSize.
        T& operator[](unsigned long const& index) {
            if (index >= mBlockSize)
                LSTD_THROWF(InvalidIndexException, "The index '%d' is invalid. (mBlockSize=%d)",
                            static_cast<int>(index), static_cast<int>(mBlockSize));
            return mData[index];
        }
        /// The number of elements in this block.
        unsigned long GetBlockSize() const { return mBlockSize; }
        /// The block's elements.
        T* GetData() const { return mData; }
        /// Blocks are told apart by identity (the block list searches with it).
        bool operator==(Block const& other) const { return this == &other; }
        /// Keeps the first kept elements by realloc; false (nothing changed) when that fails.
        /// Deliberate: the trimmed elements are not destroyed, only released with the
        /// storage; the element types shrunk in the library (words, pointers) hold nothing.
        bool Trim(unsigned long kept) {
            void* storage = std::realloc(static_cast<void*>(mData), kept * sizeof(T));
            if (storage == nullptr)
                return false;
            mData = static_cast<T*>(storage);
            mBlockSize = kept;
            return true;
        }

    private:
        T* mData;
        unsigned long mBlockSize;

        friend class Array;
    };

    /// Random-access iterator over the elements (T&); converts to const_iterator. Resizing or
    /// moving the array invalidates it.
    typedef blockchain::ElementIterator<Block, T, T&> iterator;
    /// Random-access iterator over the elements, read-only (T const&).
    typedef blockchain::ElementIterator<Block, T, T const&> const_iterator;
    /// The element type, T.
    typedef T value_type;

    /// length default-constructed elements (no block for 0). Throws NotEnoughMemoryException
    /// when even a one-element block cannot be had.
    explicit Array(unsigned long const& length);
    Array(Array const&) = delete;
    Array& operator=(Array const&) = delete;
    /// Takes other's blocks; other is left an array of length 0. No element is copied.
    Array(Array&& other) noexcept : mBlocks(std::move(other.mBlocks)), mLength(other.mLength) {
        other.mLength = 0;
    }
    /// Deletes this array's blocks (destroying their elements), then takes other's; other is
    /// left an array of length 0.
    Array& operator=(Array&& other) noexcept {
        if (this != &other) {
            mBlocks.Clear(1);
            mBlocks = std::move(other.mBlocks);
            mLength = other.mLength;
            other.mLength = 0;
        }
        return *this;
    }
    /// Deletes every block, destroying the elements.
    virtual ~Array() { mBlocks.Clear(1); }

    ///@{
    /// Random-access iteration over elements 0 to GetLength() - 1.
    iterator begin() { return iterator(&mBlocks, 0); }
    iterator end() { return iterator(&mBlocks, mLength); }
    const_iterator begin() const { return const_iterator(&mBlocks, 0); }
    const_iterator end() const { return const_iterator(&mBlocks, mLength); }
    const_iterator cbegin() const { return begin(); }
    const_iterator cend() const { return end(); }
    ///@}

    ///@{
    /// Element index; throws InvalidIndexException "The index '%d' is invalid. (mLength=%d)"
    /// when index >= the length.
    T& operator[](unsigned long const& index) { return Element(index); }
    T const& operator[](unsigned long const& index) const { return Element(index); }
    ///@}
    /// The block holding index, with the position inside it stored in offset. Unlike the
    /// element access this never throws: out of range it returns null, offset untouched.
    Block* GetBlock(unsigned long const& index, unsigned long& offset) const;
    /// Grows by a new block of default-constructed elements (several when memory is short),
    /// or shrinks from the end; the length changes only when that succeeded. Throws
    /// NotEnoughMemoryException.
    void Resize(unsigned long const& length);
    /// Assigns value to every element.
    void Fill(T const& value);
    /// The number of elements, changed only by Resize; a reference to the stored count,
    /// so that holders can hand it out by reference too.
    unsigned long const& GetLength() const { return mLength; }

protected:
    /// Adds storage for count more elements after the last block (see the class comment).
    /// Blocks made before a failure stay. Throws NotEnoughMemoryException.
    void AppendBlock(unsigned long const& count);
    /// Drops storage for count elements from the end: whole blocks are deleted, the last
    /// remaining one is trimmed in place. Throws NotEnoughMemoryException "Cannot resize
    /// block." when trimming fails.
    void ShrinkBlock(unsigned long const& count);

private:
    T& Element(unsigned long const& index) const;

    PtrDLinkList<Block> mBlocks;
    unsigned long mLength;
};

template <typename T>
Array<T>::Array(unsigned long const& length) : mLength(length) {
    try {
        AppendBlock(length);
    } catch (...) {
        mBlocks.Clear(1);  // the destructor does not run for a failed construction
        throw;
    }
}

template <typename T>
typename Array<T>::Block* Array<T>::GetBlock(unsigned long const& index,
                                             unsigned long& offset) const {
    return index < mLength ? blockchain::Locate(mBlocks, index, offset) : nullptr;
}

template <typename T>
T& Array<T>::Element(unsigned long const& index) const {
    unsigned long offset = 0;
    Block* block = GetBlock(index, offset);
    if (block == nullptr)
        LSTD_THROWF(InvalidIndexException, "The index '%d' is invalid. (mLength=%d)",
                    static_cast<int>(index), static_cast<int>(mLength));
    return (*block)[offset];
}

template <typename T>
void Array<T>::Resize(unsigned long const& length) {
    if (length > mLength)
        AppendBlock(length - mLength);
    else if (length < mLength)
        ShrinkBlock(mLength - length);
    mLength = length;
}

template <typename T>
void Array<T>::Fill(T const& value) {
    for (unsigned long i = 0; i < mLength; ++i)
        (*this)[i] = value;
}

template <typename T>
void Array<T>::AppendBlock(unsigned long const& count) {
    bool const made = blockchain::AppendSplitting(count, [this](unsigned long size) {
        Block* block;
        try {
            block = new Block();
        } catch (std::bad_alloc const& e) {
            LSTD_THROW(NotEnoughMemoryException, e.what());
        }
        block->mData = blockchain::AllocateZeroed<T>(size);
        if (block->mData == nullptr) {
            delete block;
            return false;
        }
        try {
            for (; block->mBlockSize < size; ++block->mBlockSize)
                new (static_cast<void*>(block->mData + block->mBlockSize)) T();
            mBlocks.Append(block);
        } catch (...) {
            delete block;  // destroys the elements built so far
            throw;
        }
        return true;
    });
    if (!made)
        LSTD_THROW(NotEnoughMemoryException, "Out of memory");
}

template <typename T>
void Array<T>::ShrinkBlock(unsigned long const& count) {
    if (!blockchain::ShrinkTail(mBlocks, count))
        LSTD_THROW(NotEnoughMemoryException, "Cannot resize block.");
}
}  // namespace lstd
#endif  // LSTD_ARRAY_H
