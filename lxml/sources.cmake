# lxml/sources.cmake - public headers and sources of the XML model, parser and writer.
# Included by the root CMakeLists.txt; explicit lists, no globbing.
list(APPEND LKIT_PUBLIC_HEADERS
    lxml/xml.h
    lxml/xmlpropvalue.h
    lxml/xmlproperty.h
    lxml/xmlnode.h
    lxml/xmldatanode.h
    lxml/xmltextnode.h
    lxml/xmlparser.h
    lxml/xmlcreator.h
    lxml/xmlfile.h
)
list(APPEND LKIT_SOURCES
    lxml/xml.cpp
    lxml/xmlpropvalue.cpp
    lxml/xmlproperty.cpp
    lxml/xmlnode.cpp
    lxml/xmldatanode.cpp
    lxml/xmltextnode.cpp
    lxml/xmlparser.cpp
    lxml/xmlcreator.cpp
    lxml/xmlfile.cpp
)
