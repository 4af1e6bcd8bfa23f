// lmth/graphislandbsflistener.h - a listener that collects the discovered vertices.
#ifndef LMTH_GRAPHISLANDBSFLISTENER_H
#define LMTH_GRAPHISLANDBSFLISTENER_H

#include <lmth/graphbsflistener.h>
#include <lstd/valsortlist.h>

namespace lmth {

/// Appends every discovered vertex to a sorted list it does not own, which must outlive the
/// listener: Graph::GetConnectingIsland gathers an island with it.
class GraphIslandBSFListener : public GraphBSFListener {
public:
    /// Appends to island (not owned, not cleared).
    explicit GraphIslandBSFListener(lstd::ValSortList<unsigned long>& island);
    virtual ~GraphIslandBSFListener();

    /// Appends vertex to the island (kept ascending).
    void OnReachVertex(unsigned long const& vertex) override;

private:
    lstd::ValSortList<unsigned long>* mIsland;
};
}  // namespace lmth
#endif  // LMTH_GRAPHISLANDBSFLISTENER_H
