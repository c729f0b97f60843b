#include "XmlCheck.h"

#include "Session.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <vector>

namespace {

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

/// First characters of names; further ones may be digits, "-" and "." as well. What is not ASCII passes.
bool startsName(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') || c == '_' || c == ':';
}
bool isInName(char c) { return startsName(c) || (c >= '0' && c <= '9') || c == '-' || c == '.'; }

/// True for the characters that a document may hold.
bool isCharacter(std::uint32_t c)
{
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD) ||
           (c >= 0x10000 && c <= 0x10FFFF);
}

/// Position of the first byte that belongs to no character of a document, in UTF-8; npos without one.
std::size_t firstBadByte(std::string_view text)
{
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    for (std::size_t at = 0; at < text.size();) {
        const auto lead = static_cast<unsigned char>(text[at]);
        const std::size_t length = lead < 0x80       ? 1
                                   : lead >> 5 == 6  ? 2
                                   : lead >> 4 == 14 ? 3
                                   : lead >> 3 == 30 ? 4
                                                     : 0;
        if (length == 0 || at + length > text.size())
            return at;
        std::uint32_t c = length == 1 ? lead : lead & (0x7Fu >> length);
        for (std::size_t i = 1; i < length; ++i) {
            const auto next = static_cast<unsigned char>(text[at + i]);
            if (next >> 6 != 2)
                return at;
            c = c << 6 | (next & 0x3Fu);
        }
        if (c < smallest[length] || !isCharacter(c))
            return at;
        at += length;
    }
    return std::string_view::npos;
}

/// A name for a message, of a length that people read.
std::string shortened(std::string_view name)
{
    std::size_t length = std::min<std::size_t>(name.size(), 60);
    while (length > 0 && length < name.size() && (static_cast<unsigned char>(name[length]) >> 6) == 2)
        --length;
    return std::string(name.substr(0, length)) + (length < name.size() ? "..." : "");
}
std::string named(std::string_view name) { return quote(shortened(name)); }

class Document {
public:
    explicit Document(std::string_view text) : m_text(text) {}

    std::string complaint()
    {
        if (const std::size_t bad = firstBadByte(m_text); bad != std::string_view::npos) {
            m_at = bad;
            return located("this is no UTF-8 text");
        }
        if (m_text.starts_with("\xEF\xBB\xBF"))
            m_at = 3;
        read();
        return m_problem;
    }

private:
    bool problem(const std::string& what)
    {
        if (m_problem.empty())
            m_problem = located(what);
        return false;
    }
    std::string located(const std::string& what) const
    {
        const auto end = m_text.begin() + static_cast<std::ptrdiff_t>(std::min(m_at, m_text.size()));
        return "line " + std::to_string(1 + std::count(m_text.begin(), end, '\n')) + ": " + what;
    }
    bool atEnd() const { return m_at >= m_text.size(); }
    bool sees(std::string_view what) const { return m_text.substr(m_at).starts_with(what); }
    void skipBlanks()
    {
        while (!atEnd() && isBlank(m_text[m_at]))
            ++m_at;
    }
    /// Goes behind the next `end`.
    bool skipPast(std::string_view end, const char* what)
    {
        const std::size_t found = m_text.find(end, m_at);
        if (found == std::string_view::npos)
            return problem(std::string(what) + " does not end");
        m_at = found + end.size();
        return true;
    }
    std::string_view name()
    {
        const std::size_t start = m_at;
        if (!atEnd() && startsName(m_text[m_at]))
            while (!atEnd() && isInName(m_text[m_at]))
                ++m_at;
        return m_text.substr(start, m_at - start);
    }

    bool read()
    {
        skipBlanks();
        if (atEnd())
            return problem("there is no element");
        while (!atEnd())
            if (!(m_text[m_at] == '<' ? markup() : text()))
                return false;
        if (!m_open.empty())
            return problem("the element " + named(m_open.back()) + " is not closed");
        return m_hadRoot || problem("there is no element");
    }

    bool markup()
    {
        if (sees("<!--")) {
            m_at += 4;
            return skipPast("-->", "a comment");
        }
        if (sees("<![CDATA[") && !m_open.empty())
            return skipPast("]]>", "a CDATA section");
        if (sees("<?"))
            return skipPast("?>", "a processing instruction");
        if (sees("<!DOCTYPE") && !m_hadRoot)
            return documentType();
        return sees("</") ? closing() : opening();
    }

    bool documentType()
    {
        m_declares = true;
        int depth = 0;
        for (; !atEnd(); ++m_at) {
            const char c = m_text[m_at];
            if (c == '"' || c == '\'') {
                const std::size_t end = m_text.find(c, m_at + 1);
                if (end == std::string_view::npos)
                    break;
                m_at = end;
            }
            depth += c == '<' || c == '[' ? 1 : c == '>' || c == ']' ? -1 : 0;
            if (depth == 0) {
                ++m_at;
                return true;
            }
        }
        return problem("the document type does not end");
    }

    bool closing()
    {
        m_at += 2;
        const std::string_view closed = name();
        if (m_open.empty() || m_open.back() != closed)
            return problem("\"</" + shortened(closed) + ">\" stands where " +
                           (m_open.empty() ? "no element is open" : named(m_open.back()) + " is to end"));
        m_open.pop_back();
        skipBlanks();
        return sees(">") ? (++m_at, true) : problem("\"</" + shortened(closed) + "\" has no \">\"");
    }

    bool opening()
    {
        ++m_at;
        const std::string_view element = name();
        if (element.empty())
            return problem("there is no name behind \"<\"; write \"&lt;\" for the sign itself");
        if (m_open.empty() && m_hadRoot)
            return problem("the element " + named(element) + " stands behind the end of the document");
        m_hadRoot = true;
        std::set<std::string_view> attributes;
        for (;;) {
            const std::size_t before = m_at;
            skipBlanks();
            if (sees("/>")) {
                m_at += 2;
                return true;
            }
            if (sees(">")) {
                ++m_at;
                m_open.push_back(element);
                return true;
            }
            if (before == m_at || !attribute(attributes))
                return problem("the element " + named(element) + " is not written properly");
        }
    }

    bool attribute(std::set<std::string_view>& known)
    {
        const std::string_view attribute = name();
        if (attribute.empty())
            return false;
        if (!known.insert(attribute).second)
            return problem("the attribute " + named(attribute) + " is given twice");
        skipBlanks();
        if (!sees("="))
            return problem("the attribute " + named(attribute) + " has no value");
        ++m_at;
        skipBlanks();
        if (!sees("\"") && !sees("'"))
            return problem("the value of the attribute " + named(attribute) + " is not in quotes");
        const char mark = m_text[m_at++];
        for (; !atEnd() && m_text[m_at] != mark; ++m_at) {
            if (m_text[m_at] == '<')
                return problem("the value of the attribute " + named(attribute) +
                               " holds a \"<\"; write \"&lt;\"");
            if (m_text[m_at] == '&' && !reference())
                return false;
        }
        return atEnd() ? problem("the value of the attribute " + named(attribute) + " does not end")
                       : (++m_at, true);
    }

    /// A "&...;": leaves the position on the semicolon.
    bool reference()
    {
        const std::size_t end = m_text.find(';', m_at);
        const std::string_view what =
            end == std::string_view::npos ? std::string_view() : m_text.substr(m_at + 1, end - m_at - 1);
        const bool isHex = what.starts_with("#x");
        const std::string_view digits = what.substr(what.starts_with("#") ? (isHex ? 2 : 1) : what.size());
        const char* const allowed = isHex ? "0123456789abcdefABCDEF" : "0123456789";
        const bool isNumber =
            !digits.empty() && digits.size() < 8 && digits.find_first_not_of(allowed) == std::string_view::npos &&
            isCharacter(static_cast<std::uint32_t>(std::stoul(std::string(digits), nullptr, isHex ? 16 : 10)));
        const bool isKnown = what == "lt" || what == "gt" || what == "amp" || what == "apos" || what == "quot" ||
                             (m_declares && !what.empty() && startsName(what.front()) &&
                              std::all_of(what.begin(), what.end(), isInName));
        if (!isNumber && !isKnown)
            return problem("\"&\" begins no known entity; write \"&amp;\" for the sign itself");
        m_at = end;
        return true;
    }

    bool text()
    {
        for (; !atEnd() && m_text[m_at] != '<'; ++m_at) {
            if (m_open.empty() && !isBlank(m_text[m_at]))
                return problem("there is text outside the document's element");
            if (m_text[m_at] == '&' && !reference())
                return false;
            if (sees("]]>"))
                return problem("\"]]>\" stands in a text; write \"]]&gt;\"");
        }
        return true;
    }

    const std::string_view m_text;
    std::size_t m_at = 0;
    std::vector<std::string_view> m_open;
    bool m_hadRoot = false, m_declares = false;
    std::string m_problem;
};

} // namespace

std::string whyNoXml(std::string_view text) { return Document(text).complaint(); }
