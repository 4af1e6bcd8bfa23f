// tools/xmltree.h - builds an XML node tree from the parser's events; used by lkit-xmlfmt and
// the tour.
#ifndef LKIT_TOOLS_XMLTREE_H
#define LKIT_TOOLS_XMLTREE_H

#include <lstd/string.h>
#include <lstd/valhashmap.h>
#include <lxml/xmlcreator.h>
#include <lxml/xmldatanode.h>
#include <lxml/xmlparser.h>
#include <lxml/xmltextnode.h>

#include <utility>
#include <vector>

namespace lkit_tools {

/// Turns the events of one parse into nodes of an XMLCreator: an element whose only content
/// is text becomes an XMLTextNode, every other element an XMLDataNode with its properties as
/// text values. Declarations and comments (names beginning with "?" or "!") have no close
/// tag and are skipped; text that stands beside child elements has no place in the model
/// and is dropped (counted). A close tag that does not match the open element stops the
/// parse and is reported by GetError(), as is an element left open at the end.
///
/// The parser's slots are plain functions, so one builder is connected at a time: Connect
/// makes this one current.
class TreeBuilder {
public:
    explicit TreeBuilder(lxml::XMLCreator& creator) : mCreator(creator), mParser(nullptr) {}

    void Connect(lxml::XMLParser& parser) {
        Current() = this;
        mParser = &parser;
        parser.mOpenTagSignal.Connect(&OnOpen);
        parser.mCloseTagSignal.Connect(&OnClose);
        parser.mTextSignal.Connect(&OnText);
    }

    /// "" while the document is well nested; else what went wrong. Call after the parse.
    lstd::String GetError() const {
        if (mError.IsNull() && !mOpen.empty())
            return lstd::String::SSprintf("element <%s> is not closed",
                                          mOpen.back().mName.GetStdChar());
        return mError;
    }
    unsigned long GetElementCount() const { return mElements; }
    unsigned long GetDroppedTextCount() const { return mDroppedTexts; }

private:
    struct Element {
        lstd::String mName;
        std::vector<std::pair<lstd::String, lstd::String>> mProperties;
        lstd::String mText;
        lxml::XMLDataNode* mNode;  // null until a child makes it a data node
    };

    static TreeBuilder*& Current() {
        static TreeBuilder* current = nullptr;
        return current;
    }

    static void OnOpen(lstd::String const& name, lxml::XMLParser::PropertyMap const& props) {
        TreeBuilder& self = *Current();
        if (name.GetLength() > 0 && (name[0] == '?' || name[0] == '!'))
            return;
        if (!self.mOpen.empty())
            self.MakeDataNode(self.mOpen.size() - 1);
        Element element{name, {}, lstd::String(), nullptr};
        lstd::ValHashMapIterator<lstd::String, lstd::String> it(props);
        while (++it)
            element.mProperties.emplace_back(it.GetKey(), it.GetValue());
        self.mOpen.push_back(std::move(element));
        ++self.mElements;
    }

    static void OnText(lstd::String const& text) {
        TreeBuilder& self = *Current();
        if (!self.mOpen.empty() && self.mOpen.back().mNode == nullptr)
            self.mOpen.back().mText = text;
        else
            ++self.mDroppedTexts;
    }

    static void OnClose(lstd::String const& name) {
        TreeBuilder& self = *Current();
        if (self.mOpen.empty() || self.mOpen.back().mName != name) {
            if (self.mError.IsNull())
                self.mError = self.mOpen.empty()
                                  ? lstd::String::SSprintf("close tag </%s> without an open "
                                                           "element", name.GetStdChar())
                                  : lstd::String::SSprintf(
                                        "close tag </%s> does not match <%s>", name.GetStdChar(),
                                        self.mOpen.back().mName.GetStdChar());
            self.mParser->Terminate();
            return;
        }
        Element& top = self.mOpen.back();
        if (top.mNode == nullptr) {
            if (top.mText.IsNull()) {
                self.MakeDataNode(self.mOpen.size() - 1);
            } else {
                lxml::XMLTextNode* node =
                    self.mOpen.size() == 1
                        ? self.mCreator.CreateTextNode(top.mName)
                        : self.mOpen[self.mOpen.size() - 2].mNode->CreateSubTextNode(top.mName);
                node->SetText(top.mText);
                SetProperties(*node, top);
            }
        }
        self.mOpen.pop_back();
    }

    // Every element below the one at index is already a data node: a child's open made it so.
    void MakeDataNode(std::size_t index) {
        Element& element = mOpen[index];
        if (element.mNode != nullptr)
            return;
        element.mNode = index == 0 ? mCreator.CreateDataNode(element.mName)
                                   : mOpen[index - 1].mNode->CreateSubNode(element.mName);
        SetProperties(*element.mNode, element);
    }

    static void SetProperties(lxml::XMLNode& node, Element const& element) {
        for (auto const& property : element.mProperties)
            node.CreateProperty(property.first)->mValue.SetStringValue(property.second);
    }

    lxml::XMLCreator& mCreator;
    lxml::XMLParser* mParser;
    std::vector<Element> mOpen;
    lstd::String mError;
    unsigned long mElements = 0;
    unsigned long mDroppedTexts = 0;
};
}  // namespace lkit_tools
#endif  // LKIT_TOOLS_XMLTREE_H
