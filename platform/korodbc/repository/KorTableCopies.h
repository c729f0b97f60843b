#pragma once

namespace KorTableCopies {

/// What follows the name of a table in the names of its copies, by depth.
inline constexpr const wchar_t* suffixes[] = {L"_VELCopy", L"_VELSecondCopy", L"_VELThirdCopy", L"_VELFourthCopy"};

} // namespace KorTableCopies
