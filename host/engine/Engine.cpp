#include "engine/Engine.h"

#include "engine/Names.h"

#include <cerrno>

namespace korodbc::host {

KorItemType::BaseTypes typeOfDeclaration(std::string_view declaration)
{
    const std::string type = lowerCase(declaration);
    const auto has = [&](std::string_view part) { return type.find(part) != std::string::npos; };
    if (has("bool"))
        return KorItemType::kBool;
    if (has("int"))
        return KorItemType::kInt;
    if (has("real") || has("floa") || has("doub"))
        return KorItemType::kDouble;
    if (has("date") || has("time"))
        return KorItemType::kTime;
    return KorItemType::kString;
}

FailureKind failureOfSystem(int code)
{
    switch (code) {
    case 0:
        return FailureKind::None;
    case ENOSPC:
    case EDQUOT:
        return FailureKind::Full;
    case EIO:
        return FailureKind::Disk;
    case EROFS:
    case EACCES:
    case EPERM:
        return FailureKind::ReadOnly;
    case ENOENT:
        return FailureKind::Missing;
    default:
        return FailureKind::Refused;
    }
}

} // namespace korodbc::host
