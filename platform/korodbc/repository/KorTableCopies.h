#pragma once

/// Names of the copies under which tables are edited.
namespace KorTableCopies {

/// Behind the name of a table: its copies, by depth.
inline constexpr const wchar_t* suffixes[] = {L"_VELCopy", L"_VELSecondCopy", L"_VELThirdCopy", L"_VELFourthCopy"};

} // namespace KorTableCopies
