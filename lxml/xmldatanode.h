// lxml/xmldatanode.h - an XML node that holds child nodes.
#ifndef LXML_XMLDATANODE_H
#define LXML_XMLDATANODE_H

#include <lstd/ptrdlinklist.h>
#include <lstd/string.h>
#include <lxml/xmlnode.h>

namespace lxml {
class XMLTextNode;

/// A node with children, kept in creation order and owned: destroying a data node destroys
/// its whole subtree (without recursion, so any depth is safe).
class XMLDataNode : public XMLNode {
public:
    /// The name, no property and no child. Throws lstd::NotEnoughMemoryException.
    explicit XMLDataNode(lstd::String const& name);
    virtual ~XMLDataNode();

    /// XML::DataNodeToString of this node.
    lstd::String ToString(unsigned char const& newLine, unsigned char const& indent,
                          long const& level) const override;
    /// 1.
    int GetType() const override;
    /// A new data node appended to the children and owned by this node. Throws
    /// lstd::NotEnoughMemoryException (the node is then unchanged).
    virtual XMLDataNode* CreateSubNode(lstd::String const& name);
    /// A new text node with an empty text appended to the children, owned by this node.
    /// Throws lstd::NotEnoughMemoryException (the node is then unchanged).
    virtual XMLTextNode* CreateSubTextNode(lstd::String const& name);

    /// The children in creation order.
    lstd::PtrDLinkList<XMLNode> const& GetSubNodeList() const { return mSubNodeList; }

private:
    lstd::PtrDLinkList<XMLNode> mSubNodeList;
};
}  // namespace lxml
#endif  // LXML_XMLDATANODE_H
