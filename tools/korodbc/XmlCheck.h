#pragma once

#include <string>
#include <string_view>

/// Why a text is no XML document, with the number of the line: "line 3: the element "column" is not closed". Empty
/// when it is one: UTF-8, one element around everything, elements closed in their order, attributes named once and
/// in quotes, no entity that neither XML nor a document type declares.
std::string whyNoXml(std::string_view text);
