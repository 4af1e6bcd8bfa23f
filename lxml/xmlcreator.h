// lxml/xmlcreator.h - builds the top-level nodes of a document and writes them as XML text.
#ifndef LXML_XMLCREATOR_H
#define LXML_XMLCREATOR_H

#include <lstd/ptrdlinklist.h>
#include <lstd/string.h>
#include <lxml/xmlnode.h>

namespace liop {
class StringWriteBuffer;
}

namespace lxml {
class XMLDataNode;
class XMLTextNode;

/// Holds the top-level nodes of a document in creation order, owns them, and writes them
/// into a write buffer. The text is exactly the nodes' ToString with the creator's two flags
/// at level 0, one node after the other: no declaration, nothing between two top-level
/// nodes and no line feed at the end.
class XMLCreator {
public:
    /// No buffer, no node; newLine and indent are handed to every node's ToString.
    XMLCreator(unsigned char const& newLine, unsigned char const& indent);
    XMLCreator(XMLCreator const&) = delete;
    XMLCreator& operator=(XMLCreator const&) = delete;
    /// With a buffer, writes the nodes left (AppendToBuffer); then deletes them. A failure
    /// while writing cannot leave a destructor: it is dropped, so call AppendToBuffer() first
    /// where it matters.
    virtual ~XMLCreator();

    /// Writes into buffer (not owned) from now on.
    void InitCreate(liop::StringWriteBuffer& buffer);
    /// A new top-level data node, owned by the creator. Throws
    /// lstd::NotEnoughMemoryException.
    XMLDataNode* CreateDataNode(lstd::String const& name);
    /// A new top-level text node with an empty text, owned by the creator. Throws
    /// lstd::NotEnoughMemoryException.
    XMLTextNode* CreateTextNode(lstd::String const& name);
    /// Writes every top-level node in order with the buffer's Write and deletes it, so a
    /// second call writes nothing. Throws lstd::InvalidOperationException "Write buffer is not
    /// initialized. Please call InitCreate() method before performing this action." without
    /// InitCreate, and passes on what the buffer raises (the node that failed and those
    /// after it are kept).
    void AppendToBuffer();

    /// The top-level nodes not yet written, in creation order.
    lstd::PtrDLinkList<XMLNode> const& GetNodeList() const { return mNodeList; }

private:
    liop::StringWriteBuffer* mWriteBuffer;
    lstd::PtrDLinkList<XMLNode> mNodeList;
    unsigned char mNewLine;
    unsigned char mIndent;
};
}  // namespace lxml
#endif  // LXML_XMLCREATOR_H
