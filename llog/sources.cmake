# llog/sources.cmake - public headers and sources of the logger.
# Included by the root CMakeLists.txt; explicit lists, no globbing.
list(APPEND LKIT_PUBLIC_HEADERS
    llog/logconfig.h
    llog/logger.h
)
list(APPEND LKIT_SOURCES
    llog/logconfig.cpp
    llog/logger.cpp
)
