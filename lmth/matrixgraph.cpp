// lmth/matrixgraph.cpp - a directed graph kept as one row of bits per vertex.
#include <lmth/matrixgraph.h>

#include <lstd/exception.h>
#include <lstd/string.h>

#include <new>

namespace lmth {

MatrixGraph::MatrixGraph(unsigned long const& vertexNumber)
    : mBitRows(vertexNumber) {}

// The pointer array frees its slots only: the rows are deleted here.
MatrixGraph::~MatrixGraph() {
    for (unsigned long v = 0; v < mBitRows.GetLength(); ++v)
        delete mBitRows[v];
}

int MatrixGraph::GetStructureType() const { return 2; }

bool MatrixGraph::HasEdge(unsigned long const& from, unsigned long const& to) const {
    lstd::BitSet const* row = mBitRows[from];
    if (row == nullptr)
        return false;
    return ((row->GetWords()[to >> 6] >> (to & 63)) & 1UL) != 0;
}

void MatrixGraph::Clear() {
    for (unsigned long v = 0; v < mBitRows.GetLength(); ++v) {
        lstd::BitSet* row = mBitRows[v];
        if (row != nullptr)
            row->Clear();
    }
}

unsigned long const& MatrixGraph::GetVertexNumber() const { return mBitRows.GetLength(); }

void MatrixGraph::AddEdge(unsigned long const& from, unsigned long const& to) {
    lstd::BitSet*& row = mBitRows[from];
    // The row's last word has room beyond the vertex count; a bit there would be an edge to
    // no vertex, so to is checked here rather than left to the word lookup.
    if (to >= mBitRows.GetLength())
        LSTD_THROWF(lstd::InvalidIndexException,
                    "The vertex is invalid. (Input: %d, %d; Vertex number: %d)",
                    static_cast<int>(from), static_cast<int>(to), static_cast<int>(mBitRows.GetLength()));
    if (row == nullptr) {
        try {
            row = new lstd::BitSet(mBitRows.GetLength());
        } catch (std::bad_alloc const& e) {
            LSTD_THROW(lstd::NotEnoughMemoryException, e.what());
        }
    }
    row->GetWords()[to >> 6] |= 1UL << (to & 63);
}
}  // namespace lmth
