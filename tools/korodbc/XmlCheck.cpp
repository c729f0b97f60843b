#include "XmlCheck.h"

#include "Session.h"

#include <expat.h>
#include <memory>
#include <vector>

namespace {

/// A name for a message, of a length that people read.
std::string named(std::string_view name)
{
    std::size_t length = std::min<std::size_t>(name.size(), 60);
    while (length > 0 && length < name.size() && (static_cast<unsigned char>(name[length]) >> 6) == 2)
        --length; // not within a character
    return quote(std::string(name.substr(0, length)) + (length < name.size() ? "..." : ""));
}

class Check {
public:
    Check() : m_parser(XML_ParserCreate(nullptr), XML_ParserFree)
    {
        XML_SetUserData(parser(), this);
        XML_SetXmlDeclHandler(parser(), &Check::declaration);
        XML_SetElementHandler(parser(), &Check::opened, &Check::closed);
    }

    std::string whyNot(std::string_view text)
    {
        constexpr std::size_t step = 1 << 20; // lengths are given as int
        for (std::size_t at = 0; m_reason.empty(); at += step) {
            const std::string_view part = text.substr(std::min(at, text.size()), step);
            const bool isLast = at + part.size() >= text.size();
            if (XML_Parse(parser(), part.data(), static_cast<int>(part.size()), isLast) == XML_STATUS_ERROR)
                break;
            if (isLast)
                return {};
        }
        return "line " + std::to_string(XML_GetCurrentLineNumber(parser())) + ": " +
               (m_reason.empty() ? reason() : m_reason);
    }

private:
    XML_Parser parser() const { return m_parser.get(); }

    std::string reason() const
    {
        switch (XML_GetErrorCode(parser())) {
        case XML_ERROR_NO_ELEMENTS:
        case XML_ERROR_TAG_MISMATCH:
        case XML_ERROR_UNCLOSED_TOKEN:
            return m_open.empty() ? "there is no element"
                                  : "the element " + named(m_open.back()) + " is not closed";
        case XML_ERROR_INVALID_TOKEN:
            return "this is no UTF-8 text, or a character stands where XML allows none; write \"&lt;\" for \"<\" "
                   "and \"&amp;\" for \"&\"";
        case XML_ERROR_UNDEFINED_ENTITY:
        case XML_ERROR_BAD_CHAR_REF:
            return "\"&\" begins no known entity; write \"&amp;\" for the sign itself";
        case XML_ERROR_DUPLICATE_ATTRIBUTE:
            return "an attribute is given twice";
        case XML_ERROR_SYNTAX:
            return "this is no XML";
        case XML_ERROR_JUNK_AFTER_DOC_ELEMENT:
            return "something stands behind the end of the document";
        case XML_ERROR_INCORRECT_ENCODING:
        case XML_ERROR_UNKNOWN_ENCODING:
            return otherEncoding;
        default:
            return XML_ErrorString(XML_GetErrorCode(parser()));
        }
    }

    static void declaration(void* self, const char*, const char* encoding, int)
    {
        const std::string name = encoding == nullptr ? "UTF-8" : encoding;
        auto& check = *static_cast<Check*>(self);
        if (sameName(name, "UTF-8") || sameName(name, "US-ASCII"))
            return;
        check.m_reason = otherEncoding;
        XML_StopParser(check.parser(), XML_FALSE);
    }
    static void opened(void* self, const char* name, const char**)
    {
        static_cast<Check*>(self)->m_open.emplace_back(name);
    }
    static void closed(void* self, const char*) { static_cast<Check*>(self)->m_open.pop_back(); }

    static constexpr const char* otherEncoding =
        "the document says that it is written in another encoding; save it as UTF-8";
    std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> m_parser;
    std::vector<std::string> m_open;
    std::string m_reason; // of our own
};

} // namespace

std::string whyNoXml(std::string_view text)
{
    if (text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF"))
        return "line 1: this is no UTF-8 text; save it as UTF-8";
    return Check().whyNot(text);
}
