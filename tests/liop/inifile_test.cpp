// tests/liop/inifile_test.cpp - IniFile loading, lookups and key iteration.
#include <liop/file.h>
#include <liop/inifile.h>
#include <liop/inifilekeyiterator.h>

#include <expect_throw.h>

#include <map>
#include <string>
#include <vector>

namespace {
using liop::IniFile;
using liop::IniFileKeyIterator;
using lstd::String;

std::string Std(String const& s) { return std::string(s.GetStdChar(), s.GetLength()); }
String Lstd(std::string const& s) { return String(s.data(), s.size()); }

// key -> value of every key the iterator yields for section (the map's order is not the file's).
std::map<std::string, std::string> Keys(IniFile const& ini, char const* section) {
    std::map<std::string, std::string> keys;
    for (IniFileKeyIterator it(ini, section); ++it && keys.size() < 100;)
        keys[Std(it.GetKey())] = Std(it.GetValue());
    return keys;
}

class IniFileTest : public testing::Test {
protected:
    // Loads text through a file in the temporary directory.
    void Load(std::string const& text) {
        std::ofstream(mDir.file("t.ini"), std::ios::binary) << text;
        ASSERT_TRUE(mIni.Load(Lstd(mDir.file("t.ini"))));
    }
    std::string Get(std::string const& section, std::string const& key) const {
        return Std(mIni.GetString(Lstd(section), Lstd(key)));
    }

    TempDir mDir;
    IniFile mIni;
};
}  // namespace

TEST_F(IniFileTest, LinesBecomeSectionsKeysAndValues) {
    Load("a=1\n[s]\nb = 2 \n;c=3\nd\nk = x = y\nk2=1\nk2=2\n[ sec ]\n[sec\n\t#h = v ; not a "
         "comment\nKey=U\nkey=l");
    EXPECT_EQ("1", Get("", "a"));
    EXPECT_EQ("2", Get("s", "b"));
    EXPECT_EQ("", Get("s", "c"));
    EXPECT_EQ(
        (std::map<std::string, std::string>{{"b", "2"}, {"d", ""}, {"k", "x = y"}, {"k2", "2"}}),
        Keys(mIni, "s"));
    EXPECT_EQ((std::map<std::string, std::string>{
                  {"[sec", ""}, {"#h", "v ; not a comment"}, {"Key", "U"}, {"key", "l"}}),
              Keys(mIni, " sec "));
    EXPECT_EQ("", Get("S", "b"));
    EXPECT_EQ("", Get("nowhere", "a"));
}

TEST_F(IniFileTest, FlatKeysJoinSectionAndKeyWithOneSpace) {
    Load("[a b]\nc=first\n[a]\nb c=second\nx=1\n");
    EXPECT_EQ("second", Get("a b", "c"));  // one entry: "a b c"
    EXPECT_EQ("second", Get("a", "b c"));
    // Walking "a" also meets the keys of "a b", which carry "b " in front.
    EXPECT_EQ((std::map<std::string, std::string>{{"b c", "second"}, {"x", "1"}}), Keys(mIni, "a"));
    EXPECT_EQ((std::map<std::string, std::string>{}), Keys(mIni, ""));
    mIni.AppendKeyAndValue("", "top", "t");
    EXPECT_EQ((std::map<std::string, std::string>{{"top", "t"}}), Keys(mIni, ""));
    EXPECT_EQ("t", Get("", "top"));
    mIni.AppendKeyAndValue(Lstd(std::string("n\0l", 3)), Lstd(std::string("k\0y", 3)), "nul");
    EXPECT_EQ("nul", Get(std::string("n\0l", 3), std::string("k\0y", 3)));  // bytes kept
    EXPECT_EQ("", Get("n", "k"));
}

TEST_F(IniFileTest, LoadReplacesValuesAndAMissingFileChangesNothing) {
    Load("[s]\nold=1\n");
    EXPECT_FALSE(mIni.Load(Lstd(mDir.file("missing.ini"))));
    EXPECT_EQ("1", Get("s", "old"));
    Load("[s]\nnew=2\n");
    EXPECT_EQ("", Get("s", "old"));
    EXPECT_EQ("2", Get("s", "new"));
}

TEST_F(IniFileTest, LoadsRealWorldFiles) {
    std::string const data = LKIT_TEST_DATA_DIR;
    ASSERT_TRUE(mIni.Load(Lstd(data + "/desktop-entry.ini")));
    EXPECT_EQ("Text Editor", Get("Desktop Entry", "Name"));
    EXPECT_EQ("Texteditor", Get("Desktop Entry", "Name[de]"));
    EXPECT_EQ("Edit text files; plain or rich", Get("Desktop Entry", "Comment"));
    EXPECT_EQ("", Get("Desktop Entry", "# Translators: keep the semicolons"));
    EXPECT_EQ(13u, Keys(mIni, "Desktop Entry").size());  // the hash line is a key
    EXPECT_EQ("editor --new-window", Get("Desktop Action new-window", "Exec"));

    ASSERT_TRUE(mIni.Load(Lstd(data + "/vcs-config.ini")));
    EXPECT_EQ("https://example.invalid/project.git", Get("remote \"origin\"", "url"));
    EXPECT_EQ("refs/heads/main", Get("branch \"main\"", "merge"));
    EXPECT_EQ("log --graph --oneline ; short form", Get("alias", "lg"));
    EXPECT_EQ("", Get("Desktop Entry", "Name"));  // the values of the first file are gone

    ASSERT_TRUE(mIni.Load(Lstd(data + "/crlf.ini")));
    EXPECT_EQ((std::map<std::string, std::string>{{"host", "localhost"}, {"port", "8080"}}),
              Keys(mIni, "server"));
    EXPECT_EQ((std::map<std::string, std::string>{{"root", "C:\\srv\\data"}, {"logs", ""}}),
              Keys(mIni, "paths"));

    ASSERT_TRUE(mIni.Load(Lstd(data + "/top-level-keys.ini")));
    EXPECT_EQ((std::map<std::string, std::string>{{"# a hash line is a key, not a comment", ""},
                                                  {"name", "top"},
                                                  {"debug", ""},
                                                  {"path", "/usr/local = prefix"},
                                                  // " spaced  key" also starts with a space
                                                  {"spaced  key", "value ; not a comment"}}),
              Keys(mIni, ""));
    EXPECT_EQ("inner", Get("main", "name"));
    EXPECT_EQ("value ; not a comment", Get(" spaced ", "key"));
}

TEST(IniFile, SectionAndKeyValueRecognition) {
    struct Row {
        char const* line;
        bool isSection;
        char const* name;
    } const sections[] = {
        {" [ a ] ", true, " a "}, {"[]", true, ""}, {"[sec", false, ""},
        {"x]", false, ""},        {"[", false, ""}, {"[a]b]", true, "a]b"},
    };
    for (Row const& row : sections) {
        SCOPED_TRACE(row.line);
        String name("unset");
        EXPECT_EQ(row.isSection, IniFile::IsSectionName(row.line, &name));
        EXPECT_EQ(row.name, Std(name));
        EXPECT_EQ(row.isSection, IniFile::IsSectionName(row.line, nullptr));
    }
    ExpectThrow<lstd::InvalidIndexException>([] { IniFile::IsSectionName(" \r\n", nullptr); },
                                             "String");
    String key("unset");
    String value("unset");
    EXPECT_FALSE(IniFile::SplitKeyAndValue(" \t ", &key, &value));
    EXPECT_EQ("unset", Std(key));
    EXPECT_TRUE(IniFile::SplitKeyAndValue("  k = x = y\r\n", &key, &value));
    EXPECT_EQ("k", Std(key));
    EXPECT_EQ("x = y", Std(value));
    EXPECT_TRUE(IniFile::SplitKeyAndValue("bare word", &key, nullptr));
    EXPECT_EQ("bare word", Std(key));
    EXPECT_TRUE(IniFile::SplitKeyAndValue("=v", nullptr, &value));
    EXPECT_EQ("v", Std(value));
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
    EXPECT_EQ("", Std(it.GetKey()));
    ASSERT_TRUE(++it);
    EXPECT_EQ("k", Std(it.GetKey()));
    EXPECT_EQ("v", Std(it.GetValue()));
    EXPECT_FALSE(++it);
    ExpectThrow<lstd::NotInitializedIteratorException>([&] { it.GetValue(); }, message);
    it.Reset();
    EXPECT_TRUE(++it);
    it.Init(ini, "other");
    EXPECT_FALSE(++it);
}
