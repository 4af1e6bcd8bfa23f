// XML writer and XML file: output text, ownership of nodes, wiring of parser and creator.
#include <expect_throw.h>
#include <lkit.h>
#include "xml_events.h"

#include <string>

namespace {
using lstd::String;
using lxml::XMLCreator;
using lxml::XMLDataNode;
using lxml::XMLFile;
using xml_events::Log;

class XMLFileTest : public testing::Test {
protected:
    void SetUp() override { Log().clear(); }
    TempDir mDir;
};

// Two top-level nodes with children, properties and text.
void Build(XMLCreator& creator) {
    XMLDataNode* root = creator.CreateDataNode("root");
    root->CreateProperty("v")->mValue.SetStringValue("1 < 2");
    XMLDataNode* item = root->CreateSubNode("item");
    item->CreateSubTextNode("name")->SetText("Fish & Chips");
    item->CreateSubNode("empty");
    creator.CreateTextNode("note")->SetText("last");
}

TEST_F(XMLFileTest, WritesAtDestruction) {
    std::string const path = mDir.file("out.xml");
    {
        XMLFile file(0, 1);
        EXPECT_EQ(liop::File::OPEN_WRITE, file.Open(path.c_str(), liop::File::OPEN_WRITE));
        EXPECT_TRUE(file.IsOpened(liop::File::OPEN_WRITE));
        Build(file.GetCreator());
        file.GetCreator().AppendToBuffer();
        file.GetCreator().AppendToBuffer();  // the nodes are gone: nothing more is written
        EXPECT_EQ(0UL, file.GetCreator().GetNodeList().GetNumberOfEntry());
        Build(file.GetCreator());  // written when the file is destroyed
    }
    // No declaration, nothing between top-level nodes, no line feed at the end.
    std::string const once = "<root v=\"1 &lt; 2\">\t<item >\t\t<name >Fish &amp; Chips</name>"
                             "\t\t<empty /></item></root><note >last</note>";
    EXPECT_EQ(once + once, ReadFile(path));
}

TEST_F(XMLFileTest, WrittenDocumentReadsBack) {
    std::string const path = mDir.file("round.xml");
    {
        XMLFile file(1, 1);
        file.Open(path.c_str(), liop::File::OPEN_WRITE);
        XMLDataNode* list = file.GetCreator().CreateDataNode("list");
        for (int i = 0; i < 300; ++i) {  // more than one write buffer's worth
            XMLDataNode* entry = list->CreateSubNode("entry");
            entry->CreateProperty("n")->mValue.SetStringValue(std::to_string(i).c_str());
            entry->CreateSubTextNode("t")->SetText("'<&>'");
        }
    }
    XMLFile file(0, 0);
    file.Open(path.c_str(), liop::File::OPEN_READ);
    xml_events::Connect(file.GetParser());
    EXPECT_FALSE(file.GetParser().Parse());
    std::string expected = "O(list)";
    for (int i = 0; i < 300; ++i)
        expected += "O(entry n=" + std::to_string(i) + ")O(t)T('<&>')C(t)C(entry)";
    EXPECT_EQ(expected + "C(list)", Log());
}

TEST_F(XMLFileTest, OpenWiresByMode) {
    std::string const path = mDir.file("both.xml");
    {
        XMLFile file(0, 0);
        file.Open(path.c_str(), liop::File::OPEN_WRITE);
        file.GetCreator().CreateTextNode("a")->SetText("x");
        ExpectThrow<liop::IOException>([&] { file.GetParser().Parse(); }, "Invalid buffer");
    }
    XMLFile both(0, 0);
    both.Open(path.c_str(), liop::File::OPEN_READ_WRITE);
    xml_events::Connect(both.GetParser());
    EXPECT_FALSE(both.GetParser().Parse());
    EXPECT_EQ("O(a)T(x)C(a)", Log());
    both.GetCreator().AppendToBuffer();  // wired: no exception
    std::string const missing = mDir.file("missing/x.xml");
    XMLFile failed(0, 0);
    ExpectThrow<liop::IOException>([&] { failed.Open(missing.c_str(), liop::File::OPEN_READ); },
                                   ("Cannot open file '" + missing + "'.").c_str());
    EXPECT_FALSE(failed.IsOpened());
    ExpectThrow<liop::IOException>([&] { failed.GetParser().Parse(); }, "Invalid buffer");
}

TEST(XMLCreator, WritesEachNodeThroughTheBuffer) {
    XMLCreator unwired(1, 1);
    Build(unwired);
    ExpectThrow<lstd::InvalidOperationException>(
        [&] { unwired.AppendToBuffer(); },
        "Write buffer is not initialized. Please call InitCreate() method before performing "
        "this action.");
    EXPECT_EQ(2UL, unwired.GetNodeList().GetNumberOfEntry());  // deleted unwritten at the end
    TempDir dir;
    std::string const path = dir.file("pieces.xml");
    {
        liop::File file;
        file.Open(path.c_str(), liop::File::OPEN_WRITE, liop::File::FILE_TEXT);
        {
            liop::StringWriteBuffer buffer(file, 1);  // hands every Write straight on
            XMLCreator creator(0, 0);
            creator.InitCreate(buffer);
            creator.CreateDataNode("a");
            creator.CreateDataNode("b")->CreateSubNode("c");
        }  // the creator writes its nodes as it goes
        file.Close();
    }
    EXPECT_EQ("<a /><b ><c /></b>", ReadFile(path));
}
}  // namespace
