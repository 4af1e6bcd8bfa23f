// lxml/xmlproperty.h - a named, typed property (attribute) of an XML node.
#ifndef LXML_XMLPROPERTY_H
#define LXML_XMLPROPERTY_H

#include <lstd/string.h>
#include <lxml/xmlpropvalue.h>

namespace lxml {

/// A property is its name: it derives from the string class, so comparison, hashing and
/// printing apply to the name directly. The value is reached and changed through mValue.
/// Nodes create and own their properties (XMLNode::CreateProperty).
class XMLProperty : public lstd::String {
public:
    /// The name, and a text value (kind T_STRING). Throws lstd::NotEnoughMemoryException.
    XMLProperty(lstd::String const& name, lstd::String const& value);
    virtual ~XMLProperty();

    /// The property itself, as its name.
    lstd::String const& GetName() const { return *this; }
    /// The property as it stands in a tag (XML::PropertyToString).
    lstd::String ToString() const;
    /// The string hash of the name: the hash of every node's property set.
    static unsigned long Hash(XMLProperty const* property);

    /// The value, read and changed directly.
    XMLPropValue mValue;
};
}  // namespace lxml
#endif  // LXML_XMLPROPERTY_H
