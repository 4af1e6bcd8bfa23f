// lmth/graphbsflistener.cpp - the listener told of each vertex a traversal discovers.
#include <lmth/graphbsflistener.h>

namespace lmth {

GraphBSFListener::GraphBSFListener() {}

GraphBSFListener::~GraphBSFListener() {}

void GraphBSFListener::OnReachVertex(unsigned long const&) {}
}  // namespace lmth
