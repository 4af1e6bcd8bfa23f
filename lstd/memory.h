// lstd/memory.h - copying between overlapping byte ranges.
#ifndef LSTD_MEMORY_H
#define LSTD_MEMORY_H

namespace lstd {

/// Byte copies where source and destination may overlap.
class Memory {
public:
    Memory();
    virtual ~Memory();
    /// Copies count bytes from source to destination (note the order: source first). The
    /// ranges may overlap: the copy runs in chunks no longer than the distance between
    /// them, from the end when moving up and from the start when moving down.
    static void CopyOverlappedMemory(char* source, char* destination, unsigned long const& count);
};
}  // namespace lstd
#endif  // LSTD_MEMORY_H
