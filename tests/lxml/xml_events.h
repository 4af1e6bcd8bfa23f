// xml_events.h - records parser events as text, and the reference reading of a whole text.
// Shared by the lxml tests and the parser's fuzz target.
#ifndef LKIT_TESTS_XML_EVENTS_H
#define LKIT_TESTS_XML_EVENTS_H

#include <lstd/enclosuretokenizer.h>
#include <lstd/string.h>
#include <lstd/valhashmap.h>
#include <lxml/xml.h>
#include <lxml/xmlparser.h>

#include <string>
#include <utility>
#include <vector>

namespace xml_events {
using Map = lxml::XMLParser::PropertyMap;

inline std::string Text(lstd::String const& s) {
    return std::string(s.GetStdChar(), s.GetLength());
}

// The events received so far: O(name k=v ...) with the map in its iteration order, C(name),
// T(text) and E(position).
inline std::string& Log() {
    static std::string log;
    return log;
}
inline void OnOpen(lstd::String const& name, Map const& properties) {
    Log() += "O(" + Text(name);
    lstd::ValHashMapIterator<lstd::String, lstd::String> it(properties);
    while (++it)
        Log() += " " + Text(it.GetKey()) + "=" + Text(it.GetValue());
    Log() += ")";
}
inline void OnClose(lstd::String const& name) { Log() += "C(" + Text(name) + ")"; }
inline void OnText(lstd::String const& text) { Log() += "T(" + Text(text) + ")"; }
inline void OnError(unsigned long long const& position) {
    Log() += "E(" + std::to_string(position) + ")";
}
inline void Connect(lxml::XMLParser& parser) {
    parser.mOpenTagSignal.Connect(&OnOpen);
    parser.mCloseTagSignal.Connect(&OnClose);
    parser.mTextSignal.Connect(&OnText);
    parser.mErrorSignal.Connect(&OnError);
}

// Two names whose hashes fall into the same bucket of a 32767-bucket table.
inline std::pair<std::string, std::string> SameBucketNames() {
    std::vector<std::string> byBucket(32767);
    for (int i = 0;; ++i) {
        std::string name = "p" + std::to_string(i);
        std::string& seen = byBucket[lstd::String::Hash(lstd::String(name.c_str())) % 32767];
        if (!seen.empty())
            return {seen, name};
        seen = name;
    }
}

// The events of document read as one text, step by step as the parser describes them: the
// enclosure tokenizer without nesting cuts the tags, the XML helpers analyse each one, and
// an error reports the start of the enclosure where it happened.
inline std::string Reference(std::string const& document) {
    std::string const before = Log();
    Log().clear();
    lstd::String const text(document.data(), document.size());
    lstd::EnclosureTokenizer tokenizer;
    tokenizer.Init(text, 0);
    long long lastTagEnd = 0;
    lstd::String tag, name, inner;
    try {
        while (tokenizer.Next("<", ">", tag)) {
            tag.Trim();
            if (lxml::XML::IsCloseTagName(tag, &name)) {
                long long const tagStart = static_cast<long long>(tokenizer.GetStartPosition());
                lstd::String between = text.GetSubString(static_cast<unsigned long>(lastTagEnd),
                                                         tagStart - lastTagEnd);
                between.Trim();
                between = lxml::XML::UnescapeText(between);
                if (!between.IsNull())
                    OnText(between);
                OnClose(name);
                lastTagEnd = static_cast<long long>(tokenizer.GetEndPosition());
            } else if (lxml::XML::IsSingleTagName(tag, &inner)) {
                Map properties(&lstd::String::Hash);
                lxml::XML::SplitTagNameAndProperty(inner, name, properties);
                OnOpen(name, properties);
                OnClose(name);
                lastTagEnd = -1;
            } else {
                Map properties(&lstd::String::Hash);
                if (!lxml::XML::SplitTagNameAndProperty(tag, name, properties))
                    throw lxml::InvalidXMLTag(tag, __FILE__, __LINE__);
                OnOpen(name, properties);
                lastTagEnd = static_cast<long long>(tokenizer.GetEndPosition());
            }
        }
    } catch (lxml::InvalidXMLTag const&) {
        OnError(tokenizer.GetStartPosition());
    } catch (lstd::InvalidEnclosureToken const&) {
        OnError(tokenizer.GetStartPosition());
    }
    std::string events = Log();
    Log() = before;
    return events;
}
}  // namespace xml_events
#endif  // LKIT_TESTS_XML_EVENTS_H
