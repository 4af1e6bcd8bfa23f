# lmth/sources.cmake - public headers and sources of the graphs.
# Included by the root CMakeLists.txt; explicit lists, no globbing.
list(APPEND LKIT_PUBLIC_HEADERS
    lmth/graph.h
    lmth/adjacentlistgraph.h
    lmth/matrixgraph.h
    lmth/graphbsflistener.h
    lmth/graphislandbsflistener.h
    lmth/graphbsfexecutor.h
    lmth/graphwriter.h
)
list(APPEND LKIT_SOURCES
    lmth/graph.cpp
    lmth/adjacentlistgraph.cpp
    lmth/matrixgraph.cpp
    lmth/graphbsflistener.cpp
    lmth/graphislandbsflistener.cpp
    lmth/graphbsfexecutor.cpp
    lmth/graphwriter.cpp
)
