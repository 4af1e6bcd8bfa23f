// lxml/xmlparser.cpp - event-driven XML reader.
#include <lxml/xmlparser.h>

#include <liop/ioexception.h>
#include <liop/stringreadbuffer.h>
#include <lxml/xml.h>

#include <cstring>
#include <new>
#include <string>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace lxml {

InvalidXMLTag::InvalidXMLTag(lstd::String const& tag, char const* file,
                             unsigned long long const& line)
    : lstd::Exception(tag.GetStdChar(), file, line) {}
InvalidXMLTag::~InvalidXMLTag() {}

namespace {
unsigned long const kNone = static_cast<unsigned long>(-1);
unsigned long const kCachedMaps = 8;    // property maps kept, one per property name list
unsigned long const kCachedNames = 16;  // the most properties of a tag whose map is kept
unsigned long const kKeptEntries = 64;  // a bigger uncached map is emptied after its tag

unsigned long (*const kKeyHash)(lstd::String const&) = &lstd::String::Hash;

// Makes s the n bytes at p without building a String: the block is reused when the length is
// the same, and realloc'ed in place mostly when it is not.
void Assign(lstd::String& s, char const* p, unsigned long n) {
    if (n == 0) {
        s.Clear();
        return;
    }
    if (s.GetLength() != n)
        s.Resize(n);
    std::memcpy(&s[0], p, n);
}

// The first "<" or ">" in [p, end), or end.
char const* FindAngle(char const* p, char const* end) {
#if defined(__SSE2__)
    __m128i const lt = _mm_set1_epi8('<');
    __m128i const gt = _mm_set1_epi8('>');
    while (end - p >= 16) {
        __m128i const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(p));
        int const mask =
            _mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(bytes, lt), _mm_cmpeq_epi8(bytes, gt)));
        if (mask != 0)
            return p + __builtin_ctz(static_cast<unsigned int>(mask));
        p += 16;
    }
#endif
    while (p < end && *p != '<' && *p != '>')
        ++p;
    return p;
}
}  // namespace

// One property of the tag being handled, as positions in the pending text.
struct Piece {
    char const* nameBegin;
    char const* nameEnd;
    char const* valueBegin;
    char const* valueEnd;
};

// A property map kept for the tags that have its list of property names, in that order.
// Filling a map again with the same names in the same order gives the same entries in the
// same order, so assigning the values in place gives exactly the map a new one would be.
struct CachedMap {
    XMLParser::PropertyMap* map;
    unsigned long signature;
    std::string names;                   // the names back to back
    std::vector<unsigned long> lengths;  // their lengths
    std::vector<lstd::String*> values;   // the stored values, in name order
    unsigned long long lastUse;
};

struct XMLParser::Scan {
    Scan()
        : begin(0), end(0), cursor(0), tagStart(0), textStart(0), offset(0), errorPosition(0),
          inTag(false), runPending(false), failed(false), parsing(false), generation(0),
          emptyMap(kKeyHash), largeMap(kKeyHash), clock(0) {}
    ~Scan() {
        for (CachedMap& cached : cache)
            delete cached.map;
    }

    void Reset() {
        begin = end = cursor = tagStart = textStart = 0;
        offset = errorPosition = 0;
        inTag = runPending = failed = false;
        ++generation;
    }

    // Positions in mPendingText.
    unsigned long begin;        // the pending text: just after the last complete tag
    unsigned long end;          // end of the bytes received
    unsigned long cursor;       // the next byte to examine
    unsigned long tagStart;     // the "<" of the tag being read (inTag)
    unsigned long textStart;    // where text reported before a close tag begins; kNone after a
                                // self-closing tag
    unsigned long long offset;  // document position of mPendingText[0]
    unsigned long long errorPosition;  // document position of the tag being handled
    bool inTag;                        // between a tag's "<" and its ">"
    bool runPending;  // the marker at cursor waits for the next byte: a copy of it follows?
    bool failed;
    bool parsing;
    unsigned long generation;  // changed by InitParse: a running analysis stops

    // Objects handed to the slots, reused from event to event.
    lstd::String name;
    lstd::String text;
    PropertyMap emptyMap;
    PropertyMap largeMap;
    std::vector<CachedMap> cache;
    unsigned long long clock;
    std::vector<Piece> pieces;
    std::vector<unsigned long> distinct;  // per name in first-appearance order: its last piece
    XML::Sink scratch;

    void AssignValue(lstd::String& s, char const* b, char const* e) {
        unsigned long const n = static_cast<unsigned long>(e - b);
        if (std::memchr(b, '&', n) == nullptr) {
            Assign(s, b, n);
            return;
        }
        scratch.Clear();
        XML::AppendUnescaped(scratch, b, n);
        Assign(s, scratch.Data(), scratch.Size());
    }
    lstd::String Value(Piece const& piece) {
        lstd::String value;
        AssignValue(value, piece.valueBegin, piece.valueEnd);
        return value;
    }
    // The map of the pieces, as a new map filled in their order would be.
    PropertyMap const& Properties();
};

XMLParser::PropertyMap const& XMLParser::Scan::Properties() {
    unsigned long const count = pieces.size();
    if (count == 0)
        return emptyMap;
    if (count > kCachedNames) {
        largeMap.Clear();
        for (Piece const& piece : pieces)
            largeMap.Append(lstd::String(piece.nameBegin, static_cast<unsigned long>(
                                                              piece.nameEnd - piece.nameBegin)),
                            Value(piece));
        return largeMap;
    }
    // The names in order of first appearance, each with its last value, and their signature.
    distinct.clear();
    unsigned long signature = 0xcbf29ce484222325UL;
    for (unsigned long i = 0; i < count; ++i) {
        Piece const& piece = pieces[i];
        unsigned long const length = static_cast<unsigned long>(piece.nameEnd - piece.nameBegin);
        bool repeated = false;
        for (unsigned long& seen : distinct) {
            Piece const& first = pieces[seen];
            if (static_cast<unsigned long>(first.nameEnd - first.nameBegin) == length &&
                std::memcmp(first.nameBegin, piece.nameBegin, length) == 0) {
                seen = i;
                repeated = true;
                break;
            }
        }
        if (repeated)
            continue;
        distinct.push_back(i);
        signature = (signature ^ length) * 0x100000001b3UL;
        for (char const* p = piece.nameBegin; p < piece.nameEnd; ++p)
            signature = (signature ^ static_cast<unsigned char>(*p)) * 0x100000001b3UL;
    }
    // distinct[k] is now the last piece of the k-th name; its name is the same bytes.
    CachedMap* victim = nullptr;
    for (CachedMap& cached : cache) {
        if (cached.signature == signature && cached.lengths.size() == distinct.size()) {
            char const* names = cached.names.data();
            bool same = true;
            for (unsigned long k = 0; same && k < distinct.size(); ++k) {
                Piece const& piece = pieces[distinct[k]];
                unsigned long const length =
                    static_cast<unsigned long>(piece.nameEnd - piece.nameBegin);
                same =
                    length == cached.lengths[k] && std::memcmp(names, piece.nameBegin, length) == 0;
                names += length;
            }
            if (same) {
                for (unsigned long k = 0; k < distinct.size(); ++k) {
                    Piece const& piece = pieces[distinct[k]];
                    AssignValue(*cached.values[k], piece.valueBegin, piece.valueEnd);
                }
                cached.lastUse = ++clock;
                return *cached.map;
            }
        }
        if (victim == nullptr || cached.lastUse < victim->lastUse)
            victim = &cached;
    }
    if (cache.size() < kCachedMaps) {
        PropertyMap* map = new PropertyMap(kKeyHash);
        try {
            cache.push_back(CachedMap{map, 0, std::string(), {}, {}, 0});
        } catch (...) {
            delete map;
            throw;
        }
        victim = &cache.back();
    }
    // Refill the least recently used map. Until it is complete it lists no name, and so
    // matches no tag (a tag without properties never gets this far).
    victim->map->Clear();
    victim->names.clear();
    victim->lengths.clear();
    victim->values.clear();
    try {
        for (unsigned long const last : distinct) {
            Piece const& piece = pieces[last];
            unsigned long const length =
                static_cast<unsigned long>(piece.nameEnd - piece.nameBegin);
            lstd::String const key(piece.nameBegin, length);
            victim->map->Append(key, Value(piece));
            victim->names.append(piece.nameBegin, length);
            victim->values.push_back(victim->map->Find(key));
        }
        for (unsigned long const last : distinct)
            victim->lengths.push_back(
                static_cast<unsigned long>(pieces[last].nameEnd - pieces[last].nameBegin));
    } catch (...) {
        victim->lengths.clear();
        throw;
    }
    victim->signature = signature;
    victim->lastUse = ++clock;
    return *victim->map;
}

// ---- parser ---------------------------------------------------------------------------------

XMLParser::XMLParser()
    : mSourceBuffer(nullptr), mPendingText(), mTerminated(false), mScan(nullptr) {
    try {
        mScan = new Scan();
    } catch (std::bad_alloc const& e) {
        LSTD_THROW(lstd::NotEnoughMemoryException, e.what());
    }
}

XMLParser::~XMLParser() { delete mScan; }

void XMLParser::InitParse(liop::StringReadBuffer& buffer) {
    mSourceBuffer = &buffer;
    mPendingText.Clear();
    mTerminated = false;
    mScan->Reset();
}

void XMLParser::Terminate() { mTerminated = true; }

lstd::String XMLParser::GetPendingText() const {
    if (mScan->end == mScan->begin)
        return lstd::String();
    return lstd::String(mPendingText.GetStdChar() + mScan->begin, mScan->end - mScan->begin);
}

namespace {
// Marks a parser busy for the life of a scope, so that a slot cannot start a nested analysis.
class Busy {
public:
    explicit Busy(bool& flag) : mFlag(flag) { mFlag = true; }
    ~Busy() { mFlag = false; }

private:
    bool& mFlag;
};
}  // namespace

bool XMLParser::Parse() {
    if (mSourceBuffer == nullptr)
        LSTD_THROW(liop::IOException, "Invalid buffer");
    if (mScan->parsing)
        return false;
    Busy const busy(mScan->parsing);
    unsigned long const generation = mScan->generation;
    if (!mSourceBuffer->Load())
        return false;
    for (;;) {
        bool const result = Feed();
        if (mScan->generation != generation)
            return false;  // a slot started another parse
        if (!result || mTerminated)
            return result;
        if (!mSourceBuffer->ContinueReading()) {
            // The end of the input settles a marker that waited for the next byte.
            if (mScan->failed || !Run(true))
                return false;
            return mTerminated && mScan->generation == generation;
        }
    }
}

bool XMLParser::ReadFromBuffer() {
    if (mSourceBuffer == nullptr)
        LSTD_THROW(liop::IOException, "Invalid buffer");
    if (mScan->parsing)
        return false;
    Busy const busy(mScan->parsing);
    return Feed();
}

bool XMLParser::AnalyzeRudeText() {
    if (mScan->parsing || mScan->failed)
        return false;
    Busy const busy(mScan->parsing);
    return Run(false);
}

bool XMLParser::Feed() {
    if (mScan->failed)
        return false;
    lstd::String const& chunk = mSourceBuffer->GetBuffer();
    Append(chunk.GetStdChar(), chunk.GetLength());
    return Run(false);
}

void XMLParser::Append(char const* data, unsigned long const& length) {
    Scan& s = *mScan;
    if (length == 0)
        return;
    unsigned long const room = mPendingText.GetLength();
    if (s.end + length > room) {
        // Drop what is consumed, then make the room at least twice what it must hold, so that
        // a byte is moved a bounded number of times on average.
        unsigned long const drop = s.begin;
        if (drop > 0) {
            char* block = &mPendingText[0];
            std::memmove(block, block + drop, s.end - drop);
            s.begin = 0;
            s.end -= drop;
            s.cursor -= drop;
            if (s.inTag)
                s.tagStart -= drop;
            if (s.textStart != kNone)
                s.textStart -= drop;
            s.offset += drop;
        }
        // Grow to twice what is needed; give back a room grown for text long consumed.
        unsigned long const need = s.end + length;
        if (need * 2 > room || (room > 65536 && need * 8 < room))
            mPendingText.Resize(need * 2 > 256 ? need * 2 : 256);
    }
    std::memcpy(&mPendingText[0] + s.end, data, length);
    s.end += length;
}

void XMLParser::Fail(unsigned long long const& position) {
    mScan->failed = true;
    mErrorSignal(position);
}

bool XMLParser::Run(bool const& atEnd) {
    Scan& s = *mScan;
    unsigned long const generation = s.generation;
    unsigned long long errorPosition = 0;
    try {
        for (;;) {
            if (mTerminated || s.generation != generation)
                return true;
            char const* const data = mPendingText.GetStdChar();
            unsigned long const end = s.end;
            if (!s.runPending) {
                if (!s.inTag) {
                    void const* lt = std::memchr(data + s.cursor, '<', end - s.cursor);
                    if (lt == nullptr) {
                        s.cursor = end;
                        return true;
                    }
                    s.cursor = static_cast<unsigned long>(static_cast<char const*>(lt) - data);
                } else {
                    char const* angle = FindAngle(data + s.cursor, data + end);
                    if (angle == data + end) {
                        s.cursor = end;
                        return true;
                    }
                    if (*angle == '<') {
                        // Another tag opens inside this one: the tag cannot be read.
                        errorPosition = s.offset + s.tagStart;
                        break;
                    }
                    s.cursor = static_cast<unsigned long>(angle - data);
                }
                s.runPending = true;
            }
            // A doubled marker is text: only the last of a run counts, and the end of the
            // document ends a run.
            char const marker = data[s.cursor];
            unsigned long last = s.cursor;
            while (last + 1 < end && data[last + 1] == marker)
                ++last;
            s.cursor = last;
            if (last + 1 == end && !atEnd)
                return true;
            s.runPending = false;
            s.cursor = last + 1;
            if (!s.inTag) {
                s.inTag = true;
                s.tagStart = last;
            } else {
                s.inTag = false;
                HandleTag(s.tagStart, last);
            }
        }
    } catch (InvalidXMLTag const&) {
        errorPosition = s.errorPosition;
    } catch (lstd::InvalidEnclosureToken const&) {
        errorPosition = s.errorPosition;
    } catch (std::bad_alloc const& e) {
        s.failed = true;
        LSTD_THROW(lstd::NotEnoughMemoryException, e.what());
    } catch (...) {
        s.failed = true;
        throw;
    }
    Fail(errorPosition);
    return false;
}

void XMLParser::HandleTag(unsigned long const& tagStart, unsigned long const& tagClose) {
    Scan& s = *mScan;
    unsigned long const generation = s.generation;
    char const* const data = mPendingText.GetStdChar();
    char const* begin = data + tagStart + 1;
    char const* end = data + tagClose;
    XML::Trim(begin, end);
    unsigned long const tagEnd = tagClose + 1;
    s.errorPosition = s.offset + tagStart;
    if (begin == end)
        LSTD_THROW(InvalidXMLTag, lstd::String(" is invalid XML tag definition"));
    if (*begin == '/') {
        bool hasText = false;
        if (s.textStart != kNone) {
            char const* textBegin = data + s.textStart;
            char const* textEnd = data + tagStart;
            XML::Trim(textBegin, textEnd);
            if (textBegin < textEnd) {
                s.AssignValue(s.text, textBegin, textEnd);
                hasText = true;
            }
        }
        Assign(s.name, begin + 1, static_cast<unsigned long>(end - begin - 1));
        s.begin = s.textStart = tagEnd;
        if (hasText) {
            mTextSignal(s.text);
            if (s.generation != generation)
                return;
        }
        mCloseTagSignal(s.name);
        return;
    }
    bool const single = end[-1] == '/';
    if (single)
        --end;
    char const* nameEnd;
    char const* rest;
    XML::CutTagName(begin, end, nameEnd, rest);  // the tag is trimmed: it has a name
    Assign(s.name, begin, static_cast<unsigned long>(nameEnd - begin));
    s.pieces.clear();
    Piece piece;
    while (XML::CutProperty(rest, end, piece.nameBegin, piece.nameEnd, piece.valueBegin,
                            piece.valueEnd))
        if (piece.nameBegin != piece.nameEnd)
            s.pieces.push_back(piece);
    PropertyMap const& properties = s.Properties();
    s.begin = tagEnd;
    s.textStart = single ? kNone : tagEnd;
    mOpenTagSignal(s.name, properties);
    if (&properties == &s.largeMap && s.largeMap.Length() > kKeptEntries)
        s.largeMap.Clear();
    if (single && s.generation == generation)
        mCloseTagSignal(s.name);
}

void XMLParser::AnalyzeTag(lstd::String const& tag, lstd::EnclosureTokenizer const& tokenizer,
                           long long& lastTagEnd, long long& tagStart) {
    lstd::String name;
    if (XML::IsCloseTagName(tag, &name)) {
        tagStart = static_cast<long long>(tokenizer.GetStartPosition());
        lstd::String text = GetPendingText().GetSubString(static_cast<unsigned long>(lastTagEnd),
                                                          tagStart - lastTagEnd);
        text.Trim();
        text = XML::UnescapeText(text);
        if (!text.IsNull())
            mTextSignal(text);
        mCloseTagSignal(name);
        lastTagEnd = static_cast<long long>(tokenizer.GetEndPosition());
        return;
    }
    PropertyMap properties(kKeyHash);
    lstd::String inner;
    if (XML::IsSingleTagName(tag, &inner)) {
        XML::SplitTagNameAndProperty(inner, name, properties);
        mOpenTagSignal(name, properties);
        mCloseTagSignal(name);
        lastTagEnd = -1;
        return;
    }
    if (!XML::SplitTagNameAndProperty(tag, name, properties))
        LSTD_THROW(InvalidXMLTag, tag + " is invalid XML tag definition");
    mOpenTagSignal(name, properties);
    lastTagEnd = static_cast<long long>(tokenizer.GetEndPosition());
}
}  // namespace lxml
