// XML model: typed property values, properties, data and text nodes, their text form.
#include <expect_throw.h>
#include <lkit.h>
#include "xml_events.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace {
using lstd::String;
using lxml::XMLDataNode;
using lxml::XMLProperty;
using lxml::XMLPropValMissedTypeException;
using lxml::XMLPropValue;
using lxml::XMLTextNode;

std::string S(String const& s) { return std::string(s.GetStdChar(), s.GetLength()); }

// Names of the properties of set, in its iteration order.
std::vector<std::string> SetOrder(lstd::PtrHashSet<XMLProperty> const& set) {
    std::vector<std::string> names;
    lstd::PtrHashSetIterator<XMLProperty> it(set);
    while (++it)
        names.push_back(S(*it.Get()));
    return names;
}

TEST(XMLPropValue, GettersCheckTheKind) {
    XMLPropValue value;
    EXPECT_EQ(XMLPropValue::T_NONE, value.GetType());
    struct Row {
        std::function<void()> get;
        char const* message;
    } const rows[] = {
        {[&] { value.GetInt32Value(); }, "XML property value is not T_INT32 type."},
        {[&] { value.GetUInt32Value(); }, "XML property value is not T_UINT32 type."},
        {[&] { value.GetInt64Value(); }, "XML property value is not T_INT64 type."},
        {[&] { value.GetUInt64Value(); }, "XML property value is not T_UINT64 type."},
        {[&] { value.GetFloat32Value(); }, "XML property value is not T_FLOAT32 type."},
        {[&] { value.GetFloat64Value(); }, "XML property value is not T_FLOAT64 type."},
        {[&] { value.GetStringValue(); }, "XML property value is not String type."},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.message);
        ExpectThrow<XMLPropValMissedTypeException>(row.get, row.message);
    }
}

TEST(XMLPropValue, SettersChooseTheKindWithoutConversion) {
    XMLPropValue value;
    value.SetInt32Value(-5);
    ExpectThrow<XMLPropValMissedTypeException>([&] { value.GetInt64Value(); },
                                               "XML property value is not T_INT64 type.");
    EXPECT_EQ(-5, value.GetInt32Value());  // untouched by the failed read
    value.SetUInt64Value(~0ULL);
    EXPECT_EQ(~0ULL, value.GetUInt64Value());
    value.SetFloat32Value(1.5f);
    EXPECT_EQ(XMLPropValue::T_FLOAT32, value.GetType());
    EXPECT_EQ(1.5f, value.GetFloat32Value());
    value.SetStringValue("text");
    EXPECT_EQ(XMLPropValue::T_STRING, value.GetType());
    EXPECT_EQ("text", S(value.GetStringValue()));
}

TEST(XMLNode, CreatePropertyReturnsTheSameProperty) {
    XMLDataNode node("n");
    XMLProperty* a = node.CreateProperty("a");
    EXPECT_EQ("a", S(a->GetName()));
    EXPECT_EQ(String::Hash(String("a")), XMLProperty::Hash(a));
    EXPECT_EQ("a=\"\"", S(a->ToString()));  // a fresh property holds an empty text
    a->mValue.SetInt32Value(3);
    EXPECT_EQ(a, node.CreateProperty("a"));
    EXPECT_EQ(3, a->mValue.GetInt32Value());
    EXPECT_EQ(a, node.FindProperty("a"));
    EXPECT_EQ(nullptr, node.FindProperty("A"));  // names are case-sensitive
    EXPECT_EQ(1UL, node.GetNumberOfProperty());
}

TEST(XMLNode, PropertiesFollowThePropertySetOrder) {
    // Two names sharing a bucket keep their creation order; the rest go by bucket. The
    // order holds before and after the node hands out its set, and beyond eight properties.
    auto const same = xml_events::SameBucketNames();
    std::vector<std::string> const names = {"zeta", same.second, "alpha", "mid", same.first,
                                            "k1",   "k2",        "k3",    "k4",  "k5"};
    XMLDataNode small("n");
    XMLDataNode large("n");
    lstd::PtrHashSet<XMLProperty> reference(&XMLProperty::Hash);
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i < 6)
            small.CreateProperty(names[i].c_str());
        large.CreateProperty(names[i].c_str());
        reference.Append(new XMLProperty(names[i].c_str(), ""));
    }
    std::vector<std::string> const order = SetOrder(reference);
    std::string expected = "<n ";
    std::string expectedSmall = "<n ";
    for (std::string const& name : order) {
        expected += name + "=\"\"";
        if (std::find(names.begin(), names.begin() + 6, name) != names.begin() + 6)
            expectedSmall += name + "=\"\"";
    }
    EXPECT_EQ(expectedSmall + "/>", S(small.ToString(0, 0, 0)));
    EXPECT_EQ(expected + "/>", S(large.ToString(0, 0, 0)));
    EXPECT_EQ(order, SetOrder(large.GetPropertySet()));
    std::vector<std::string> smallOrder = SetOrder(small.GetPropertySet());
    EXPECT_EQ(expectedSmall + "/>", S(small.ToString(0, 0, 0)));
    small.CreateProperty("zeta")->mValue.SetInt32Value(1);  // found through the set now
    EXPECT_EQ(6UL, small.GetNumberOfProperty());
    small.CreateProperty("new");
    EXPECT_EQ(7UL, small.GetPropertySet().GetNumberOfEntry());
    reference.Clear(1);
}

TEST(XMLNode, DataNodeLayout) {
    XMLDataNode root("root");
    EXPECT_EQ("<root />", S(root.ToString(1, 1, 0)));  // no children: the single tag only
    root.CreateProperty("id")->mValue.SetStringValue("1");
    XMLDataNode* a = root.CreateSubNode("a");
    a->CreateSubNode("b")->CreateSubNode("c");
    a->CreateSubTextNode("t")->SetText("x<y");
    XMLDataNode* d = root.CreateSubNode("d");
    EXPECT_EQ(1, root.GetType());
    EXPECT_EQ(2UL, root.GetSubNodeList().GetNumberOfEntry());
    // Deliberate growth: a node at level L >= 2 starts its line with (L - 1) + L tabs; its
    // close tag has its own L.
    EXPECT_EQ("<root id=\"1\">\n"
              "\t<a >\n"
              "\t\t\t<b >\n"
              "\t\t\t\t\t<c />\n"
              "\t\t</b>\n"
              "\t\t\t<t >\n"
              "\t\t\tx&lt;y\n"
              "\t\t</t>\n"
              "\t</a>\n"
              "\t<d />\n"
              "</root>",
              S(root.ToString(1, 1, 0)));
    EXPECT_EQ("<root id=\"1\"><a ><b ><c /></b><t >x&lt;y</t></a><d /></root>",
              S(root.ToString(0, 0, 0)));
    // Without line breaks a child still carries its own indentation.
    EXPECT_EQ("<root id=\"1\">\t<a >\t\t<b >\t\t\t<c /></b>\t\t<t >x&lt;y</t></a>\t<d /></root>",
              S(root.ToString(0, 1, 0)));
    // The tab under a text node is there without indent too.
    EXPECT_EQ(
        "<root id=\"1\">\n<a >\n<b >\n<c />\n</b>\n<t >\n\tx&lt;y\n</t>\n</a>\n<d />\n</root>",
        S(root.ToString(1, 0, 0)));
    EXPECT_EQ("\t\t<d />", S(lxml::XML::DataNodeToString(*d, 1, 1, 2)));
}

TEST(XMLNode, TextNode) {
    XMLTextNode text("t", "a&b");
    EXPECT_EQ(0, text.GetType());
    EXPECT_EQ("a&b", S(text.GetText()));
    text.SetText("<'x'>");
    text.CreateProperty("k")->mValue.SetFloat64Value(0.5);
    EXPECT_EQ("<t k=0.500000>&lt;&apos;x&apos;&gt;</t>", S(text.ToString(0, 0, 0)));
    EXPECT_EQ("\t\t<t k=0.500000>\n\t\t\t&lt;&apos;x&apos;&gt;\n\t\t</t>",
              S(text.ToString(1, 1, 2)));
    EXPECT_EQ("<t k=0.500000>\n\t&lt;&apos;x&apos;&gt;\n</t>", S(text.ToString(1, 0, 2)));
}

// A node class of an application, printed by its own ToString.
class Comment : public XMLDataNode {
public:
    Comment() : XMLDataNode("c") {}
    String ToString(unsigned char const&, unsigned char const&, long const& level) const override {
        return String::SSprintf("<!-- level %d -->", static_cast<int>(level));
    }
};

TEST(XMLNode, ChildrenOfOtherClassesPrintThemselves) {
    // The list is reached the way an application that adds its own nodes would.
    XMLDataNode root("r");
    root.CreateSubNode("a");
    const_cast<lstd::PtrDLinkList<lxml::XMLNode>&>(root.GetSubNodeList()).Append(new Comment());
    EXPECT_EQ("<r >\n\t<a />\n<!-- level 1 -->\n</r>", S(root.ToString(1, 1, 0)));
}

TEST(XMLNode, DeepTreesPrintAndDieWithoutRecursion) {
    XMLDataNode root("d");
    XMLDataNode* node = &root;
    int const depth = 200000;  // far deeper than a recursive walk could go
    for (int i = 0; i < depth; ++i) {
        node = node->CreateSubNode("d");
        node->CreateProperty("i");
    }
    String const text = root.ToString(0, 0, 0);
    // "<d >" and "</d>", then per level <d i=""> and </d>, and the leaf <d i=""/>.
    EXPECT_EQ(8 + 12UL * (depth - 1) + 9, text.GetLength());
    EXPECT_EQ("<d ><d i=\"\">", S(text.GetSubString(0, 12)));
}
}  // namespace
