#pragma once

/// Characters that the application joins composed names with.
struct KorStringSeparators {
    /// Between the parts of a section's or grating's internal name.
    static constexpr const wchar_t* kStrSectionNameSeparator = L"@";
};
