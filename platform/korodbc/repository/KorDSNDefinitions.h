#pragma once

#include <cstdint>

class KorString;

/// Names of the data sources and of the slots inside them. A data source and a slot name a database.
class KorDSNDefinitions {
public:
    /// Data source of a table. Values of `kNumberOfDataSources` and above name no data source.
    enum eDSN : std::uint32_t {
        kDefinitions = 0,    // base definitions
        kDetails = 1,        // base details
        kConfiguration = 2,  // main configuration
        kUserSections = 3,   // user-defined sections, compound sections
        kToolbars = 4,       // toolbars and menus
        kDetailsCurrent = 5, // details of the current country
        kUnits = 6,          // units and formats
        kProjectAdvance = 7, // advanced project data
        kProject = 8,        // project data of the current drawing
        kAddin = 9,          // add-in details and user overrides
        kTexts = 10,         // language-dependent texts
        kNumbering = 11,     // numbering methods
        kReports = 12,       // report templates
        kWizards = 13,       // wizards
        kRules = 14,         // rules and joints
        kCountryAddin = 15,  // country add-ins, one slot each
        kProfiles = 16,      // sections
        kNumberOfDataSources = 17,
        kUnresolved = 0xFFFFFFFFu, // all bits set: resolve the returned name once more
    };

    /// Slot inside a data source: 0 the base slot, 1 the first add-in slot, and so on.
    enum eIndex : std::int32_t { kBase = 0, kFirstAddin = 1 };

    /// Name of each data source, indexed by eDSN.
    static const KorString m_DataSourceNames[kNumberOfDataSources];
};

using eDSN = KorDSNDefinitions::eDSN;
using eIndex = KorDSNDefinitions::eIndex;

/// A set of data sources.
class DataSources {
public:
    constexpr DataSources() = default;
    template <class... D>
    explicit constexpr DataSources(D... dsn) : m_bits(((1u << static_cast<unsigned>(dsn)) | ... | 0u))
    {
    }
    constexpr bool contains(eDSN dsn) const
    {
        return dsn < KorDSNDefinitions::kNumberOfDataSources && (m_bits >> static_cast<unsigned>(dsn) & 1u) != 0;
    }

private:
    std::uint32_t m_bits = 0;
};
