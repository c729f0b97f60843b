#pragma once

#include "Session.h"

#include <korodbc/transfer/KorODBCDetailStyleExports.h>

#include <string>
#include <vector>

struct RecordDescription;

/// What a transfer copies and a tree shows.
enum class Detail { Style, Process };

/// What tells one kind from the other.
struct DetailKind {
    KorODBCDetailStyleExports::eType type;
    const RecordDescription& (*root)();
    std::string noun, shortNoun; // "detail style", "style"
    std::string plural;          // "styles": of the short noun, and the command that lists them
};
const DetailKind& kindOf(Detail kind);

/// Key and name of a style or a process.
struct NamedDetail {
    int key;
    std::string name;
};
/// The styles or processes of the requested data source, in their order.
std::vector<std::string> detailNames(Detail kind);
/// The one with that name or key in the source.
NamedDetail detailNamed(Detail kind, const std::string& nameOrKey, const Source& source);
