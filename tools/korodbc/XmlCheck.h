#pragma once

#include <string>
#include <string_view>

/// Why a text is no XML document in UTF-8, with the number of the line: "line 3: the element "column" is not
/// closed".
std::string whyNoXml(std::string_view text);
