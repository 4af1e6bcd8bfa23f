// lmth/graphwriter.cpp - prints a graph as a plain-text adjacency listing.
#include <lmth/graphwriter.h>

#include <liop/file.h>
#include <lstd/string.h>

namespace lmth {

GraphWriter::GraphWriter(Graph const& graph) : mGraph(graph) {}

GraphWriter::~GraphWriter() {}

void GraphWriter::Writer(liop::File* file) const {
    unsigned long const& count = mGraph.GetVertexNumber();  // read again at every test
    if (count == 0)
        return;
    lstd::String const head("%d: \t\t");
    lstd::String const successor("%d ");
    lstd::String const lineEnd("");
    // The numbers go to "%d" cut to 32 bits, the text a 64-bit argument would give there.
    for (unsigned long i = 0; i < count; ++i) {
        file->FPrint(head, static_cast<int>(i));
        for (unsigned long j = 0; j < count; ++j)
            if (mGraph.HasEdge(i, j))
                file->FPrint(successor, static_cast<int>(j));
        file->FPrintln(lineEnd);
    }
}
}  // namespace lmth
