// lxml/xmlcreator.cpp - builds the top-level nodes of a document and writes them.
#include <lxml/xmlcreator.h>

#include <liop/stringwritebuffer.h>
#include <lstd/exception.h>
#include <lxml/xml.h>
#include <lxml/xmldatanode.h>
#include <lxml/xmltextnode.h>

#include <new>

namespace lxml {

XMLCreator::XMLCreator(unsigned char const& newLine, unsigned char const& indent)
    : mWriteBuffer(nullptr), mNodeList(), mNewLine(newLine), mIndent(indent) {}

XMLCreator::~XMLCreator() {
    if (mWriteBuffer != nullptr) {
        try {
            AppendToBuffer();
        } catch (...) {
        }
    }
    mNodeList.Clear(1);
}

void XMLCreator::InitCreate(liop::StringWriteBuffer& buffer) { mWriteBuffer = &buffer; }

XMLDataNode* XMLCreator::CreateDataNode(lstd::String const& name) {
    return XML::AppendDataNode(mNodeList, name);
}

XMLTextNode* XMLCreator::CreateTextNode(lstd::String const& name) {
    return XML::AppendTextNode(mNodeList, name);
}

void XMLCreator::AppendToBuffer() {
    if (mWriteBuffer == nullptr)
        LSTD_THROW(lstd::InvalidOperationException,
                   "Write buffer is not initialized. Please call InitCreate() method before "
                   "performing this action.");
    // Each node leaves the list once written, so that a failure keeps exactly the nodes
    // that were not written.
    while (mNodeList.GetHead() != nullptr) {
        XMLNode* node = mNodeList.GetHead()->mItem;
        if (node != nullptr)
            mWriteBuffer->Write(node->ToString(mNewLine, mIndent, 0));
        mNodeList.RemoveFirst();
        delete node;
    }
}
}  // namespace lxml
