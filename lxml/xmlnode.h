// lxml/xmlnode.h - root of the XML tree nodes: a tag name and a set of properties.
#ifndef LXML_XMLNODE_H
#define LXML_XMLNODE_H

#include <lstd/hashcollection.h>
#include <lstd/string.h>
#include <lxml/xmlproperty.h>

namespace lxml {
class XML;

/// A node is its tag name (it derives from the string class) and owns a set of properties,
/// one per name, which it deletes when it is destroyed. Nodes are not copyable.
///
/// Properties are listed in the order of the property set: ascending bucket of the name's
/// hash in a table of 32767 buckets, then creation order. A node keeps up to eight
/// properties in a small sorted array, which lists them in that very order at a fraction of
/// the set's memory; the set is filled from the array, once and for good, when it is asked
/// for (GetPropertySet) or when a ninth property is created. What the node prints or hands
/// out is the same either way.
class XMLNode : public lstd::String {
public:
    /// The name and no property. Throws lstd::NotEnoughMemoryException.
    explicit XMLNode(lstd::String const& name);
    XMLNode(XMLNode const&) = delete;
    XMLNode& operator=(XMLNode const&) = delete;
    /// Deletes every property.
    virtual ~XMLNode();

    /// The node as XML text; newLine non-zero breaks lines between parts, indent non-zero
    /// indents each line by level tabs (level is this node's depth).
    virtual lstd::String ToString(unsigned char const& newLine, unsigned char const& indent,
                                  long const& level) const = 0;
    /// The property named name, created with an empty text value when the node has none;
    /// creating it again returns the same object, value untouched. Owned by the node.
    /// Throws lstd::NotEnoughMemoryException (the node is then unchanged).
    virtual XMLProperty* CreateProperty(lstd::String const& name);
    /// 1 for a data node, 0 for a text node.
    virtual int GetType() const = 0;

    /// The property named name, or null; never creates one.
    XMLProperty* FindProperty(lstd::String const& name) const;
    /// The number of properties.
    unsigned long GetNumberOfProperty() const;
    /// The property set (hashed by XMLProperty::Hash, owned by the node). Throws
    /// lstd::NotEnoughMemoryException when the set cannot be filled.
    lstd::PtrHashSet<XMLProperty> const& GetPropertySet() const;

private:
    static unsigned long const COMPACT_LIMIT = 8;

    // Moves the array's properties into the set, in array order (= set order).
    void FillPropertySet() const;

    mutable lstd::PtrHashSet<XMLProperty> mPropertySet;
    // While mInSet is 0: the properties, sorted in set order (malloc'ed, exactly sized).
    mutable XMLProperty** mCompact;
    mutable unsigned int mCompactCount;
    mutable unsigned char mInSet;

    friend class XML;
};
}  // namespace lxml
#endif  // LXML_XMLNODE_H
