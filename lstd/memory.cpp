// lstd/memory.cpp - overlap-safe copy.
#include <lstd/memory.h>

#include <cstring>

namespace lstd {

Memory::Memory() {}
Memory::~Memory() {}

void Memory::CopyOverlappedMemory(char* source, char* destination, unsigned long const& count) {
    if (destination == source || count == 0)
        return;
    unsigned long remaining = count;
    if (destination > source) {
        // Moving up: copy the last chunk first so nothing is overwritten before it is read.
        unsigned long const distance = static_cast<unsigned long>(destination - source);
        while (remaining > distance) {
            remaining -= distance;
            std::memcpy(destination + remaining, source + remaining, distance);
        }
        std::memcpy(destination, source, remaining);
        return;
    }
    unsigned long const distance = static_cast<unsigned long>(source - destination);
    while (remaining > distance) {
        std::memcpy(destination, source, distance);
        destination += distance;
        source += distance;
        remaining -= distance;
    }
    std::memcpy(destination, source, remaining);
}
}  // namespace lstd
