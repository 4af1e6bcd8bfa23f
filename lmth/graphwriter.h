// lmth/graphwriter.h - prints a graph as a plain-text adjacency listing.
#ifndef LMTH_GRAPHWRITER_H
#define LMTH_GRAPHWRITER_H

#include <lmth/graph.h>

namespace liop {
class File;
}

namespace lmth {

/// Writes the edges of any graph into a file, one line per vertex: the vertex number, ": "
/// and two tabs, then each successor in ascending order followed by a blank, then a line
/// feed. A graph of no vertex writes nothing. The graph is neither owned nor changed and
/// must outlive the writer.
class GraphWriter {
public:
    /// Keeps a reference to graph, which must outlive the writer.
    explicit GraphWriter(Graph const& graph);
    GraphWriter(GraphWriter const&) = delete;
    GraphWriter& operator=(GraphWriter const&) = delete;
    virtual ~GraphWriter();

    /// Writes the listing into file, which must be open for writing. Only the graph's
    /// GetVertexNumber and HasEdge (every ordered pair is asked) and the file's FPrint and
    /// FPrintln are used, so every kind of graph and file works. Numbers are printed with
    /// "%d": beyond the 32-bit range they are deliberately not printed faithfully. Nothing
    /// is caught: lstd::InvalidOperationException "The file it not opened", liop::IOException
    /// and the graph's exceptions reach the caller, the lines written so far staying written.
    void Writer(liop::File* file) const;

private:
    Graph const& mGraph;
};
}  // namespace lmth
#endif  // LMTH_GRAPHWRITER_H
