// lxml/xmltextnode.cpp - an XML node that holds one text.
#include <lxml/xmltextnode.h>

#include <lxml/xml.h>

namespace lxml {

XMLTextNode::XMLTextNode(lstd::String const& name, lstd::String const& text)
    : XMLNode(name), mText(text) {}
XMLTextNode::~XMLTextNode() {}

lstd::String XMLTextNode::ToString(unsigned char const& newLine, unsigned char const& indent,
                                   long const& level) const {
    return XML::TextNodeToString(*this, newLine, indent, level);
}

int XMLTextNode::GetType() const { return 0; }

void XMLTextNode::SetText(lstd::String const& text) { mText = text; }
}  // namespace lxml
