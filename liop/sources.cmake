# liop/sources.cmake - public headers and sources of files, directories and ini files.
# Included by the root CMakeLists.txt; explicit lists, no globbing.
list(APPEND LKIT_PUBLIC_HEADERS
    liop/iodevice.h
    liop/inputstream.h
    liop/outputstream.h
    liop/iserializable.h
    liop/serializable.h
    liop/ipersistence.h
    liop/ioexception.h
    liop/file.h
    liop/stringbuffer.h
    liop/stringreadbuffer.h
    liop/stringwritebuffer.h
    liop/directory.h
    liop/fileiterator.h
    liop/inifile.h
    liop/inifilekeyiterator.h
)
list(APPEND LKIT_SOURCES
    liop/serializable.cpp
    liop/ioexception.cpp
    liop/file.cpp
    liop/stringreadbuffer.cpp
    liop/directory.cpp
    liop/inifile.cpp
)
