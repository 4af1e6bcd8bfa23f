// lmth/graphbsflistener.h - the listener told of each vertex a traversal discovers.
#ifndef LMTH_GRAPHBSFLISTENER_H
#define LMTH_GRAPHBSFLISTENER_H

namespace lmth {

/// Told by GraphBSFExecutor of every vertex it discovers, in discovery order; the start
/// vertex is not reported. The base class ignores the news.
class GraphBSFListener {
public:
    GraphBSFListener();
    virtual ~GraphBSFListener();

    /// Called once for each discovered vertex; does nothing here.
    virtual void OnReachVertex(unsigned long const& vertex);
};
}  // namespace lmth
#endif  // LMTH_GRAPHBSFLISTENER_H
