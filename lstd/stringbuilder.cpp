// lstd/stringbuilder.cpp - piecewise text building.
#include <lstd/stringbuilder.h>

#include <lstd/exception.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace lstd {

struct StringBuilder::Chunk {
    Chunk* mNext;
    unsigned long mSize;
    unsigned long mCapacity;
    char* Bytes() { return reinterpret_cast<char*>(this + 1); }
};

namespace {
// Chunks double from 256 bytes up to 64 KiB: small texts stay small, and no allocation is
// large enough to be mapped and unmapped for each builder.
unsigned long const kFirstChunk = 256;
unsigned long const kLargestChunk = 64 * 1024;
// A piece length of this byte or more is stored as this byte and eight bytes of length.
unsigned char const kLongPiece = 255;
}  // namespace

void StringBuilder::FreeChain(Chunk* chunk) {
    while (chunk != nullptr) {
        Chunk* next = chunk->mNext;
        std::free(chunk);
        chunk = next;
    }
}

// Appends n bytes of s to packed. The chunks it needs are allocated first, so when memory
// runs out packed is unchanged and NotEnoughMemoryException "Out of memory" is thrown.
void StringBuilder::Put(Packed& packed, char const* s, unsigned long n) {
    Chunk* last = packed.mLast;
    unsigned long const room = last != nullptr ? last->mCapacity - last->mSize : 0;
    if (n > room) {
        Chunk* first = nullptr;
        Chunk** link = &first;
        unsigned long capacity = last != nullptr ? last->mCapacity : kFirstChunk / 2;
        for (unsigned long missing = n - room; missing > 0;) {
            capacity = capacity < kLargestChunk ? 2 * capacity : kLargestChunk;
            Chunk* fresh = static_cast<Chunk*>(std::malloc(sizeof(Chunk) + capacity));
            if (fresh == nullptr) {
                FreeChain(first);
                LSTD_THROW(NotEnoughMemoryException, "Out of memory");
            }
            *fresh = Chunk{nullptr, 0, capacity};
            *link = fresh;
            link = &fresh->mNext;
            missing = missing > capacity ? missing - capacity : 0;
        }
        (last != nullptr ? last->mNext : packed.mFirst) = first;
    }
    for (Chunk* chunk = last != nullptr ? last : packed.mFirst; n > 0; chunk = chunk->mNext) {
        unsigned long const free = chunk->mCapacity - chunk->mSize;
        unsigned long const part = n < free ? n : free;
        std::memcpy(chunk->Bytes() + chunk->mSize, s, part);
        chunk->mSize += part;
        s += part;
        n -= part;
        packed.mLast = chunk;
    }
}

// A deep copy of source's chain (empty when source is).
StringBuilder::Packed StringBuilder::Copy(Packed const& source) {
    Packed copy;
    try {
        for (Chunk* chunk = source.mFirst; chunk != nullptr; chunk = chunk->mNext)
            Put(copy, chunk->Bytes(), chunk->mSize);
    } catch (...) {
        FreeChain(copy.mFirst);
        throw;
    }
    return copy;
}

class StringBuilder::Reader {
public:
    explicit Reader(Packed const& packed) : mChunk(packed.mFirst), mAt(0) {}
    void Read(char* out, unsigned long n) {
        while (n > 0) {
            while (mAt == mChunk->mSize) {
                mChunk = mChunk->mNext;
                mAt = 0;
            }
            unsigned long const part = n < mChunk->mSize - mAt ? n : mChunk->mSize - mAt;
            std::memcpy(out, mChunk->Bytes() + mAt, part);
            mAt += part;
            out += part;
            n -= part;
        }
    }

private:
    Chunk* mChunk;
    unsigned long mAt;
};

StringBuilder::StringBuilder() : mTotalLength(0) {}

StringBuilder::StringBuilder(StringBuilder const& other)
    : mPieces(other.mPieces), mTotalLength(other.mTotalLength), mPacked(Copy(other.mPacked)) {
    try {
        mLengths = Copy(other.mLengths);
    } catch (...) {
        FreeChain(mPacked.mFirst);
        throw;
    }
}

StringBuilder& StringBuilder::operator=(StringBuilder const& other) {
    if (this != &other) {
        StringBuilder copy(other);
        mPieces = copy.mPieces;  // the only step left that may fail
        mTotalLength = copy.mTotalLength;
        Packed const packed = mPacked, lengths = mLengths;
        mPacked = copy.mPacked;
        mLengths = copy.mLengths;
        copy.mPacked = packed;  // released with the copy
        copy.mLengths = lengths;
    }
    return *this;
}

StringBuilder::StringBuilder(StringBuilder&& other) noexcept
    : mPieces(std::move(other.mPieces)), mTotalLength(other.mTotalLength), mPacked(other.mPacked),
      mLengths(other.mLengths) {
    other.mTotalLength = 0;
    other.mPacked = Packed();
    other.mLengths = Packed();
}

StringBuilder& StringBuilder::operator=(StringBuilder&& other) noexcept {
    if (this != &other) {
        FreeChain(mPacked.mFirst);
        FreeChain(mLengths.mFirst);
        mPieces = std::move(other.mPieces);
        mTotalLength = other.mTotalLength;
        mPacked = other.mPacked;
        mLengths = other.mLengths;
        other.mTotalLength = 0;
        other.mPacked = Packed();
        other.mLengths = Packed();
    }
    return *this;
}

StringBuilder::~StringBuilder() {
    FreeChain(mPacked.mFirst);
    FreeChain(mLengths.mFirst);
}

void StringBuilder::AppendBytes(char const* s, unsigned long n) {
    unsigned char length[1 + sizeof n] = {static_cast<unsigned char>(n)};
    unsigned long lengthSize = 1;
    if (n >= kLongPiece) {
        length[0] = kLongPiece;
        std::memcpy(length + 1, &n, sizeof n);
        lengthSize += sizeof n;
    }
    // The length goes first: if the bytes then find no memory, it is taken back.
    Chunk* const lastLength = mLengths.mLast;
    unsigned long const lastLengthSize = lastLength != nullptr ? lastLength->mSize : 0;
    Put(mLengths, reinterpret_cast<char const*>(length), lengthSize);
    try {
        Put(mPacked, s, n);
    } catch (...) {
        Chunk* added = lastLength != nullptr ? lastLength->mNext : mLengths.mFirst;
        FreeChain(added);
        if (lastLength != nullptr) {
            lastLength->mNext = nullptr;
            lastLength->mSize = lastLengthSize;
        } else {
            mLengths.mFirst = nullptr;
        }
        mLengths.mLast = lastLength;
        throw;
    }
    mTotalLength += n;
}

void StringBuilder::Append(String const& s) { AppendBytes(s.GetStdChar(), s.GetLength()); }

void StringBuilder::Append(char const* s) { AppendBytes(s, s != nullptr ? std::strlen(s) : 0); }

void StringBuilder::Append(long long const& n) {
    char text[24];  // "%ld" of any 64-bit value fits
    int const length = std::snprintf(text, sizeof text, "%ld", static_cast<long>(n));
    AppendBytes(text, static_cast<unsigned long>(length));
}

void StringBuilder::Unpack() {
    if (mLengths.mFirst == nullptr)
        return;
    unsigned long const before = mPieces.GetNumberOfEntry();
    try {
        Reader lengths(mLengths);
        Reader bytes(mPacked);
        unsigned long lengthBytes = 0;
        for (Chunk* c = mLengths.mFirst; c != nullptr; c = c->mNext)
            lengthBytes += c->mSize;
        String piece;
        for (unsigned long read = 0; read < lengthBytes;) {
            unsigned char head;
            lengths.Read(reinterpret_cast<char*>(&head), 1);
            unsigned long n = head;
            ++read;
            if (head == kLongPiece) {
                lengths.Read(reinterpret_cast<char*>(&n), sizeof n);
                read += sizeof n;
            }
            piece.Resize(n);
            if (n != 0)
                bytes.Read(&piece[0], n);
            mPieces.Append(piece);
        }
    } catch (...) {
        // All or nothing: the pieces stay packed.
        while (mPieces.GetNumberOfEntry() > before)
            mPieces.RemoveLast(nullptr);
        throw;
    }
    FreeChain(mPacked.mFirst);
    FreeChain(mLengths.mFirst);
    mPacked = Packed();
    mLengths = Packed();
}

void StringBuilder::Insert(String const& s, unsigned long const& index) {
    if (index > mPieces.GetNumberOfEntry())
        Unpack();  // the index lies among the packed pieces, or past them all
    mPieces.InsertAt(s, index);
    mTotalLength += s.GetLength();
}

unsigned long StringBuilder::CopyTo(char* destination) const {
    char* end = destination;
    for (ValDoubleLink<String>* node = mPieces.GetHead(); node != nullptr; node = node->mNext) {
        std::memcpy(end, node->mValue.GetStdChar(), node->mValue.GetLength());
        end += node->mValue.GetLength();
    }
    for (Chunk* chunk = mPacked.mFirst; chunk != nullptr; chunk = chunk->mNext) {
        std::memcpy(end, chunk->Bytes(), chunk->mSize);
        end += chunk->mSize;
    }
    return mTotalLength;
}

String StringBuilder::ToString() const {
    String result;
    if (mTotalLength == 0)
        return result;
    // A total whose block size (total + 1) does not fit could never be allocated.
    char* block = mTotalLength == static_cast<unsigned long>(-1)
                      ? nullptr
                      : static_cast<char*>(std::malloc(mTotalLength + 1));
    if (block == nullptr)
        LSTD_THROW(NotEnoughMemoryException, "StringBuilder::ToString() Out of memory");
    CopyTo(block);
    block[mTotalLength] = '\0';
    result.Adopt(block, mTotalLength);
    return result;
}
}  // namespace lstd
