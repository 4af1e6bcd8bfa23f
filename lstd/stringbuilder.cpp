// lstd/stringbuilder.cpp - piecewise text building.
#include <lstd/stringbuilder.h>

#include <lstd/exception.h>

#include <cstdlib>
#include <cstring>

namespace lstd {

StringBuilder::StringBuilder() : mTotalLength(0) {}
StringBuilder::~StringBuilder() {}

void StringBuilder::Append(String const& s) {
    mPieces.Append(s);
    mTotalLength += s.GetLength();
}

void StringBuilder::Append(char const* s) { Append(String(s)); }

void StringBuilder::Append(long long const& n) {
    Append(String::SSprintf("%ld", static_cast<long>(n)));
}

void StringBuilder::Insert(String const& s, unsigned long const& index) {
    mPieces.InsertAt(s, index);
    mTotalLength += s.GetLength();
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
    char* end = block;
    for (ValDoubleLink<String>* node = mPieces.GetHead(); node != nullptr; node = node->mNext) {
        std::memcpy(end, node->mValue.GetStdChar(), node->mValue.GetLength());
        end += node->mValue.GetLength();
    }
    *end = '\0';
    result.Adopt(block, mTotalLength);
    return result;
}
}  // namespace lstd
