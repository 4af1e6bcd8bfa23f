// lxml/xmltextnode.h - an XML node that holds one text.
#ifndef LXML_XMLTEXTNODE_H
#define LXML_XMLTEXTNODE_H

#include <lstd/string.h>
#include <lxml/xmlnode.h>

namespace lxml {

/// A node holding one text, kept unescaped and escaped when printed.
class XMLTextNode : public XMLNode {
public:
    /// Throws lstd::NotEnoughMemoryException.
    XMLTextNode(lstd::String const& name, lstd::String const& text);
    virtual ~XMLTextNode();

    /// XML::TextNodeToString of this node.
    lstd::String ToString(unsigned char const& newLine, unsigned char const& indent,
                          long const& level) const override;
    /// 0.
    int GetType() const override;

    /// The text, unescaped.
    lstd::String const& GetText() const { return mText; }
    /// Replaces the text. Throws lstd::NotEnoughMemoryException (the text is then unchanged).
    void SetText(lstd::String const& text);

private:
    lstd::String mText;
};
}  // namespace lxml
#endif  // LXML_XMLTEXTNODE_H
