// tests/liop/inifile_test.cpp - IniFile loading, lookups and key iteration.
#include "liop_test.h"

#include <liop/inifile.h>
#include <liop/inifilekeyiterator.h>

#include <map>

namespace {
using liop::IniFile;
using liop::IniFileKeyIterator;
using lstd::String;
using Entries = std::map<std::string, std::string>;

// key -> value of every key the iterator yields for section (the map's order is not the file's).
Entries Keys(IniFile const& ini, std::string const& section) {
    Entries keys;
    for (IniFileKeyIterator it(ini, Lstd(section)); ++it && keys.size() < 100;)
        keys[Std(it.GetKey())] = Std(it.GetValue());
    return keys;
}

class IniFileTest : public testing::Test {
protected:
    void Load(std::string const& text) {
        WriteFile(mDir.file("t.ini"), text);
        ASSERT_TRUE(mIni.Load(Lstd(mDir.file("t.ini"))));
    }
    void LoadData(char const* name) {
        ASSERT_TRUE(mIni.Load(Lstd(std::string(LKIT_TEST_DATA_DIR) + "/" + name)));
    }
    std::string Get(std::string const& section, std::string const& key) const {
        return Std(mIni.GetString(Lstd(section), Lstd(key)));
    }

    TempDir mDir;
    IniFile mIni;
};
}  // namespace

TEST_F(IniFileTest, LinesBecomeSectionsKeysAndValues) {
    Load("a=1\n[s]\nb = 2 \n;c=3\nd\nk = x = y\nk2=1\nk2=2\n[ sec ]\n[sec\n\t#h = v ; no comment\n"
         "Key=U\nkey=l");
    EXPECT_EQ("1", Get("", "a"));
    EXPECT_EQ("", Get("s", "c") + Get("S", "b") + Get("nowhere", "a"));
    EXPECT_EQ((Entries{{"b", "2"}, {"d", ""}, {"k", "x = y"}, {"k2", "2"}}), Keys(mIni, "s"));
    EXPECT_EQ((Entries{{"[sec", ""}, {"#h", "v ; no comment"}, {"Key", "U"}, {"key", "l"}}),
              Keys(mIni, " sec "));
}

TEST_F(IniFileTest, FlatKeysJoinSectionAndKeyWithOneSpace) {
    Load("[a b]\nc=first\n[a]\nb c=second\nx=1\n");
    EXPECT_EQ("second", Get("a b", "c"));  // one entry: "a b c"
    EXPECT_EQ("second", Get("a", "b c"));
    // Walking "a" also meets the keys of "a b", which carry "b " in front.
    EXPECT_EQ((Entries{{"b c", "second"}, {"x", "1"}}), Keys(mIni, "a"));
    EXPECT_EQ(Entries{}, Keys(mIni, ""));
    mIni.AppendKeyAndValue("", "top", "t");
    EXPECT_EQ((Entries{{"top", "t"}}), Keys(mIni, ""));
    mIni.AppendKeyAndValue(Lstd(std::string("n\0l", 3)), Lstd(std::string("k\0y", 3)), "nul");
    EXPECT_EQ("nul", Get(std::string("n\0l", 3), std::string("k\0y", 3)));  // bytes kept
    EXPECT_EQ("", Get("n", "k"));
    // Load replaces the values; a file that cannot be opened changes nothing.
    EXPECT_FALSE(mIni.Load(Lstd(mDir.file("missing.ini"))));
    EXPECT_EQ("t", Get("", "top"));
    Load("[s]\nnew=2\n");
    EXPECT_EQ("|2", Get("", "top") + "|" + Get("s", "new"));
}

TEST_F(IniFileTest, LoadsRealWorldFiles) {
    LoadData("desktop-entry.ini");
    EXPECT_EQ("Texteditor", Get("Desktop Entry", "Name[de]"));
    EXPECT_EQ("Edit text files; plain or rich", Get("Desktop Entry", "Comment"));
    EXPECT_EQ(13u, Keys(mIni, "Desktop Entry").size());  // the "#" line is a key
    EXPECT_EQ("editor --new-window", Get("Desktop Action new-window", "Exec"));
    LoadData("vcs-config.ini");
    EXPECT_EQ("https://example.invalid/project.git", Get("remote \"origin\"", "url"));
    EXPECT_EQ("refs/heads/main", Get("branch \"main\"", "merge"));
    EXPECT_EQ("log --graph --oneline ; short form", Get("alias", "lg"));
    LoadData("crlf.ini");
    EXPECT_EQ((Entries{{"host", "localhost"}, {"port", "8080"}}), Keys(mIni, "server"));
    EXPECT_EQ((Entries{{"root", "C:\\srv\\data"}, {"logs", ""}}), Keys(mIni, "paths"));
    LoadData("top-level-keys.ini");
    EXPECT_EQ((Entries{{"# a hash line is a key, not a comment", ""},
                       {"name", "top"},
                       {"debug", ""},
                       {"path", "/usr/local = prefix"},
                       {"spaced  key", "value ; not a comment"}}),  // " spaced  key" too
              Keys(mIni, ""));
    EXPECT_EQ("inner", Get("main", "name"));
    EXPECT_EQ("value ; not a comment", Get(" spaced ", "key"));
}

// The line rules themselves are also checked against a model by fuzz/inifile_fuzz.cpp.
TEST(IniFile, SectionAndKeyValueRecognition) {
    String name("unset");
    EXPECT_TRUE(IniFile::IsSectionName(" [a]b] ", &name));
    EXPECT_EQ("a]b", Std(name));
    EXPECT_FALSE(IniFile::IsSectionName("[", &name));
    EXPECT_EQ("", Std(name));
    ExpectThrow<lstd::InvalidIndexException>([] { IniFile::IsSectionName(" \r\n", nullptr); },
                                             "String");
    String key("unset");
    EXPECT_FALSE(IniFile::SplitKeyAndValue(" \t ", &key, nullptr));
    EXPECT_TRUE(IniFile::SplitKeyAndValue("  k = x = y\r\n", &key, &name));
    EXPECT_EQ("k|x = y", Std(key) + "|" + Std(name));
}

TEST(IniFileKeyIterator, NeedsAFileAndAStep) {
    IniFileKeyIterator unbound;
    try {
        unbound.Reset();
        ADD_FAILURE() << "Reset without a file did not throw";
    } catch (lstd::InvalidOperationException const& e) {
        EXPECT_STREQ("The iterator is not initialized", e.what());
        EXPECT_STREQ("liop/inifile.cpp", e.GetFile());
    }
    IniFile ini;
    ini.AppendKeyAndValue("s", "k", "v");
    IniFileKeyIterator it(ini, "s");
    char const* message = "The iterator is not initialized or it reached last item.";
    ExpectThrow<lstd::NotInitializedIteratorException>([&] { it.GetValue(); }, message);
    ASSERT_TRUE(++it);
    EXPECT_EQ("k=v", Std(it.GetKey()) + "=" + Std(it.GetValue()));
    EXPECT_FALSE(++it);
    ExpectThrow<lstd::NotInitializedIteratorException>([&] { it.GetValue(); }, message);
    it.Reset();
    EXPECT_TRUE(++it);
    it.Init(ini, "other");
    EXPECT_FALSE(++it);
}
