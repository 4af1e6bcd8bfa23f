// lmth/graphislandbsflistener.cpp - a listener that collects the discovered vertices.
#include <lmth/graphislandbsflistener.h>

namespace lmth {

GraphIslandBSFListener::GraphIslandBSFListener(lstd::ValSortList<unsigned long>& island)
    : mIsland(&island) {}

GraphIslandBSFListener::~GraphIslandBSFListener() {}

void GraphIslandBSFListener::OnReachVertex(unsigned long const& vertex) { mIsland->Append(vertex); }
}  // namespace lmth
