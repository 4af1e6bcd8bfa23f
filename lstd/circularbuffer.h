// lstd/circularbuffer.h - fixed-capacity byte ring with a mirrored second half.
#ifndef LSTD_CIRCULARBUFFER_H
#define LSTD_CIRCULARBUFFER_H

#include <lstd/string.h>

namespace lstd {

/// A byte ring of fixed capacity whose block is twice that size: bytes written are also kept
/// in the second (mirror) half, so the stored bytes from the read position on can be handed
/// out as one contiguous block (GetStart). Counts the bytes written. Not copy-constructible.
class CircularBuffer {
public:
    /// Allocates 2 x capacity bytes, zeroed; capacity 0 gives a buffer without a block that
    /// accepts no bytes. Throws InvalidOperationException for a negative capacity,
    /// NotEnoughMemoryException with the allocator's text when the block cannot be had.
    CircularBuffer(long long const& capacity);
    CircularBuffer(CircularBuffer const&) = delete;
    /// Takes other's block, bytes, positions and counter; other is left a buffer of capacity
    /// 0 without a block. There is no move assignment on purpose: assigning a temporary keeps
    /// going through the copy assignment below, whose behaviour callers rely on.
    CircularBuffer(CircularBuffer&& other) noexcept;
    virtual ~CircularBuffer();

    /// Stores all n bytes, or nothing and returns false when they do not fit.
    bool Write(char const* data, unsigned long n);
    /// Takes n bytes into out (null drops them); false, nothing changed, when fewer are
    /// stored. Reading the last byte puts both positions back at the start of the ring.
    bool Read(char* out, unsigned long const& n);
    /// Read(null, n).
    bool Remove(unsigned long n);
    /// The next n bytes as a String; "" and nothing read when fewer are stored. Throws
    /// NotEnoughMemoryException when the bytes cannot be held.
    String ReadString(unsigned long const& n);

    /// Number of bytes stored.
    unsigned long const& GetLength() const { return mLength; }
    /// The first stored byte; GetLength() bytes follow it contiguously (mirror included).
    char* GetStart() const { return mBuffer + mReadPosition; }
    /// How many stored bytes lie between the read position and the end of the ring.
    unsigned long GetL() const {
        return mLength + mReadPosition > mCapacity ? mCapacity - mReadPosition : mLength;
    }
    /// Free bytes: capacity - length.
    unsigned long Space() const { return mCapacity - mLength; }
    /// Bytes accepted by Write since construction or the last reset; reset sets it to 0
    /// after returning it.
    unsigned long ByteCounter(bool reset);

    /// Copies other's ring (capacity bytes, without the mirror half) into a new block, then
    /// capacity, length, positions and counter. Kept on purpose: the previous block is not
    /// released (it leaks), and as the new block has no mirror, the buffer may afterwards
    /// only be read (Read, Remove, ReadString, GetL bytes from GetStart): a Write would run
    /// past the block. Throws NotEnoughMemoryException with the allocator's text.
    CircularBuffer& operator=(CircularBuffer const& other);

private:
    char* mBuffer;
    unsigned long mCapacity;
    unsigned long mLength;
    unsigned long mReadPosition;
    unsigned long mWritePosition;
    unsigned long mByteCounter;
};
}  // namespace lstd
#endif  // LSTD_CIRCULARBUFFER_H
