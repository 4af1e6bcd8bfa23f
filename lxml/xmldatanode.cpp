// lxml/xmldatanode.cpp - an XML node that holds child nodes.
#include <lxml/xmldatanode.h>

#include <lstd/exception.h>
#include <lxml/xml.h>
#include <lxml/xmltextnode.h>

#include <new>
#include <vector>

namespace lxml {

XMLDataNode::XMLDataNode(lstd::String const& name) : XMLNode(name) {}

namespace {
// Moves the children of list into pending, front first, as far as memory allows; those that
// cannot be moved stay in list.
void TakeChildren(lstd::PtrDLinkList<XMLNode>& list, std::vector<XMLNode*>& pending) {
    try {
        while (list.GetHead() != nullptr) {
            pending.push_back(list.GetHead()->mItem);
            list.RemoveFirst();
        }
    } catch (std::bad_alloc const&) {
    }
}
}  // namespace

XMLDataNode::~XMLDataNode() {
    // Deleting children recursively would take a stack frame per level, and a generated or
    // parsed tree may be deeper than the stack. Instead each data node is emptied of its
    // children before it is deleted. Without memory for the walk, the children left in a
    // list are deleted by their parent's destructor, recursively.
    // Breadth first: the pending nodes are those of at most two levels.
    std::vector<XMLNode*> pending;
    TakeChildren(mSubNodeList, pending);
    for (std::size_t next = 0; next < pending.size(); ++next) {
        XMLNode* node = pending[next];
        XMLDataNode* data = dynamic_cast<XMLDataNode*>(node);
        if (data != nullptr)
            TakeChildren(data->mSubNodeList, pending);
        delete node;
    }
    mSubNodeList.Clear(1);
}

lstd::String XMLDataNode::ToString(unsigned char const& newLine, unsigned char const& indent,
                                   long const& level) const {
    return XML::DataNodeToString(*this, newLine, indent, level);
}

int XMLDataNode::GetType() const { return 1; }

XMLDataNode* XMLDataNode::CreateSubNode(lstd::String const& name) {
    return XML::AppendDataNode(mSubNodeList, name);
}

XMLTextNode* XMLDataNode::CreateSubTextNode(lstd::String const& name) {
    return XML::AppendTextNode(mSubNodeList, name);
}
}  // namespace lxml
